#!/usr/bin/env bash
# Installs what is missing, builds, writes sample observations and draws them.
# usage: ./demo.sh [--no-install] [--build FOLDER] [FOLDER]
#   --no-install    leaves the packages of this machine alone
#   --build FOLDER  builds there (default: build-demo); the sources are only read
#   FOLDER          gets observations and pictures (default: demo-out)
set -euo pipefail
source=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=scripts/packages.sh
. "$source/scripts/packages.sh"
install=yes build=build-demo
while [ $# -gt 0 ]; do
    case "$1" in
        --no-install) install=no; shift ;;
        --build) build=${2:?--build needs a folder}; shift 2 ;;
        -*) sed -n 's/^# \{0,1\}//; 2,6p' "$0"; exit 2 ;;
        *) break ;;
    esac
done
out=${1:-demo-out}
# shellcheck disable=SC2086
[ "$install" = no ] || need_packages $DEMO_PACKAGES
mkdir -p "$out" "$build"
cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF \
    -DTYR_BENCH=OFF >/dev/null
cmake --build "$build" --target profiler make_samples >"$build/build.log" 2>&1 ||
    { tail -n 40 "$build/build.log"; exit 1; }
bin=$build/bin

# draw NAME ARGUMENTS...: a plot to PostScript and to PNG, in the look of an installation
draw() {
    local name=$1 device
    shift
    for device in "p,$out/$name.ps,eps,port,color" "i,$out/$name.png"; do
        "$bin/profiler" -df "$source/data" -fp "$source/data" -me warn -de "$device" "$@"
    done
    echo "  $out/$name.ps  $out/$name.png"
}

echo "sample observations:"
for layout in 12 11 bufr; do
    "$bin/make_samples" "$out/layout-$layout" --layout "$layout"
    echo "  $out/layout-$layout"
done
echo "pictures:"
draw section -id PLTC2 -va wbrb "$out"/layout-12/*.nc
draw section-11 -id PLTC2 -va wbrb "$out"/layout-11/*.nc
draw section-bufr -id 74533 -va wbrb "$out"/layout-bufr/*.bufr
draw lower -id PLTC2 -va wbrb -pp lower "$out"/layout-12/*.nc
draw map -le 3000m -re us -va wbrb "$out"/layout-12/20261122_0000_prf.nc
