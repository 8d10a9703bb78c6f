# Sourced by the scripts at the root: installs what is missing from Debian's packages.
# shellcheck shell=bash disable=SC2034

BUILD_PACKAGES="g++ cmake ninja-build libnetcdf-dev libx11-dev libpng-dev zlib1g-dev pkg-config libopenjp2-7-dev libeccodes-dev"
DEMO_PACKAGES="$BUILD_PACKAGES ghostscript"
TEST_PACKAGES="$DEMO_PACKAGES python3 libgtest-dev libbenchmark-dev netcdf-bin libxml2-utils libeccodes-tools xvfb imagemagick"
CHECK_PACKAGES="clang-format clang-tidy cppcheck shellcheck"

# need_packages PACKAGE...: does nothing where all are there.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    echo "installing: ${missing[*]}"
    "${sudo[@]}" apt-get update -qq &&
        DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq \
            --no-install-recommends "${missing[@]}" >/dev/null
}
