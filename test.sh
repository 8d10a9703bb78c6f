#!/usr/bin/env bash
# Installs what is missing, builds and runs all tests.
# usage: ./test.sh [--no-install] [--preset release|asan] [--build FOLDER] [ctest arguments...]
#   --build FOLDER  builds there (default: build, build-asan in the sources); the sources are only read
set -euo pipefail
source=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=scripts/packages.sh
. "$source/scripts/packages.sh"
install=yes preset=release build=
while [ $# -gt 0 ]; do
    case "$1" in
        --no-install) install=no; shift ;;
        --preset) preset=${2:?--preset needs a name}; shift 2 ;;
        --build) build=${2:?--build needs a folder}; shift 2 ;;
        *) break ;;
    esac
done
# shellcheck disable=SC2086
[ "$install" = no ] || need_packages $TEST_PACKAGES
if [ -z "$build" ]; then
    build=$source/build
    [ "$preset" = release ] || build=$source/build-$preset
fi
mkdir -p "$build"
build=$(cd "$build" && pwd)
(cd "$source" && cmake --preset "$preset" -B "$build" >/dev/null)
log=$build/build.log
cmake --build "$build" -- -k 0 >"$log" || {
    # the compiler's words, which stand anywhere among the lines of a long build
    grep -v '^\[' "$log" | head -n 100
    exit 1
}
tail -n 1 "$log"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" "$@"
