# Sourced by the scripts at the root: installs what is missing from Debian's packages.
# shellcheck shell=bash disable=SC2034

BUILD_PACKAGES="g++ cmake ninja-build libnetcdf-dev libx11-dev libpng-dev zlib1g-dev pkg-config libopenjp2-7-dev libcairo2-dev"
DEMO_PACKAGES="$BUILD_PACKAGES ghostscript"
TEST_PACKAGES="$DEMO_PACKAGES librsvg2-bin poppler-utils libeccodes-dev python3 libgtest-dev libbenchmark-dev netcdf-bin libxml2-utils libeccodes-tools xvfb imagemagick"
# what only CI asks for: the checks, and programs that tests skip without
CHECK_PACKAGES="clang-format clang-tidy cppcheck shellcheck parallel pandoc slurm-wlm zsh fish python3-contourpy"
DEB_PACKAGES="$BUILD_PACKAGES libeccodes-dev dpkg-dev file mmdebstrap"

# need_packages PACKAGE...: does nothing where all are there.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq \
            --no-install-recommends "${missing[@]}" >/dev/null
}
