#!/usr/bin/env bash
# Installs what is missing, builds, writes sample observations and draws them.
# usage: ./demo.sh [--no-install] [FOLDER]     (default folder: demo-out)
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
install=yes
[ "${1:-}" != --no-install ] || { install=no; shift; }
out=${1:-demo-out}
# shellcheck disable=SC2086
[ "$install" = no ] || need_packages $DEMO_PACKAGES
cmake --preset release -DBUILD_TESTING=OFF -DTYR_BENCH=OFF -B build-demo >/dev/null
cmake --build build-demo >"build-demo/build.log" 2>&1 || { tail -n 40 build-demo/build.log; exit 1; }
bin=build-demo/bin
mkdir -p "$out"

# draw NAME ARGUMENTS...: a plot to PostScript, and a PNG of it, upright
draw() {
    local name=$1
    shift
    "$bin/profiler" -df /nonexistent -fp data -me warn -de "p,$out/$name.ps,eps,port,color" "$@"
    gs -q -dNOPAUSE -dBATCH -dSAFER -dEPSCrop -dTextAlphaBits=4 -dGraphicsAlphaBits=4 -sDEVICE=png16m \
        -r110 -sOutputFile="$out/$name.png" "$out/$name.ps"
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
draw map -le 3000m -re us -va wbrb -mf tyr.map:DGray "$out"/layout-12/20261122_0000_prf.nc
