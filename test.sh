#!/usr/bin/env bash
# Installs what is missing, builds and runs all tests.
# usage: ./test.sh [--no-install] [--preset release|asan] [ctest arguments...]
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
install=yes preset=release
while [ $# -gt 0 ]; do
    case "$1" in
        --no-install) install=no; shift ;;
        --preset) preset=$2; shift 2 ;;
        *) break ;;
    esac
done
# shellcheck disable=SC2086
[ "$install" = no ] || need_packages $TEST_PACKAGES
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -- -k 0 | tail -n 40
ctest --preset "$preset" -j "$(nproc)" "$@"
