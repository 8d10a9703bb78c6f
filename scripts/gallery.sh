#!/usr/bin/env bash
# Draws contact sheets to look through: the looks side by side, every variable of the menu, the ways of
# plotting values, and the projections.
# usage: scripts/gallery.sh [--write] [FOLDER]   (default folder: gallery-out; build/ must stand)
#   --write  renews the pictures of docs/images; the window's needs Xvfb
set -euo pipefail
cd "$(dirname "$0")/.."
write=no
[ "${1:-}" != --write ] || { write=yes; shift; }
out=${1:-gallery-out}
bin=build/bin
mkdir -p "$out/plots"
[ -d "$out/data" ] || "$bin/make_samples" "$out/data"
cells=()

# cell NAME ARGUMENTS...: one plot of a sheet, as an EPS file
cell() {
    local name=$1
    shift
    "$bin/profiler" -df data -fp data -me warn -de "p,$out/plots/$name.eps,eps,port,color" \
        "$@" </dev/null >/dev/null || echo "  $name: code $?"
    cells+=("$name")
}

# sheet NAME COLUMNS: the cells so far on one page, in PNG
sheet() {
    local name=$1 columns=$2 i=0 x y page="$out/$1.ps"
    local width=300 height=245
    local rows=$(((${#cells[@]} + columns - 1) / columns))
    {
        echo '%!PS'
        echo '/Helvetica findfont 9 scalefont setfont'
        for c in "${cells[@]}"; do
            x=$((i % columns * width))
            y=$(((rows - 1 - i / columns) * height))
            echo "gsave $x $y translate 4 4 moveto ($c) show 0 14 translate .385 .385 scale"
            echo "/showpage {} def ($out/plots/$c.eps) run grestore"
            i=$((i + 1))
        done
        echo 'systemdict /showpage get exec'
    } >"$page"
    gs -q -dNOPAUSE -dBATCH -dNOSAFER -dTextAlphaBits=4 -dGraphicsAlphaBits=4 -sDEVICE=png16m -r72 \
        -dDEVICEWIDTHPOINTS=$((columns * width)) -dDEVICEHEIGHTPOINTS=$((rows * height)) \
        -sOutputFile="$out/$name.png" "$page"
    echo "$out/$name.png"
    cells=()
}

files=("$out"/data/*.nc)
section=(-id PLTC2)

while read -r word; do
    cell "variable-$word" "${section[@]}" -va "$word" "${files[@]}"
done < <(awk '!/^(#|$)/ && $3 !~ /^le=/ {print $1}' data/profiler.var)
sheet variables 4

cell barbs-by-speed "${section[@]}" -va wbrb -in 10 -cb 0 -pp bar=0:120 -ct even.clr,tyr.clr "${files[@]}"
cell speed-numbers "${section[@]}" -va wspd -fm %3.0f "${files[@]}"
cell cloud-barbs "${section[@]}" -va wbrb::cbarb "${files[@]}"
cell dot-barbs "${section[@]}" -va wbrb::dbarb -pp lower "${files[@]}"
cell vectors "${section[@]}" -va wbrb::vbarb "${files[@]}"
cell markers "${section[@]}" -va wspd -pp mark=crcl -in 10 -cb 0 "${files[@]}"
cell labels-inside "${section[@]}" -va wbrb -pp fullab -la "lr:lower_right,lc:%D" "${files[@]}"
cell labels "${section[@]}" -va wbrb -la "uc:upper_centre,ll:lower_left,lr1:line_1,lr:%D" "${files[@]}"
cell panel "${section[@]}" -va wbrb -pp vp_size=2x2+1+0 "${files[@]}"
sheet values 3

# every projection with a formula, centred on five places of the earth
map=(-va wbrb -le 500 -pp lalo=15 -ct tyr.clr)
for place in 40,-100 90,0 -90,0 0,180 -25,135; do
    lat=${place%,*} lon=${place#*,}
    for projection in "ps 6" "ll 6" "me 8" "lc 6" "or 7" "mo 20" "la 10" "sat:0:$lon 6.5"; do
        domain="${projection% *},$lat,$lon,25,17,${projection#* },${projection#* }"
        case "$projection" in sat*) domain="${domain/,$lat,/,0,}" ;; esac
        cell "${projection%%[: ]*}-at-${lat}_$lon" "${map[@]}" -re "$domain" "${files[12]}"
    done
done
sheet projections 8

# looked PICTURE LOOK ARGUMENTS...: a picture as an installation with a look draws it
looked() {
    local picture=$1 look=$2
    shift 2
    "$bin/profiler" -df "+$look:data" -fp data -me warn -va wbrb -de "i,$picture,dpi=72" "$@" </dev/null
}

# the looks, two in a row, each under its name
level_map=(-le 3000m -re us "${files[12]}")
for kind in section map; do
    tiles=()
    for look in modern classic print dark colour-blind; do
        tiles+=(-label "$look" "$out/plots/$look-$kind.png")
        if [ $kind = section ]; then
            looked "$out/plots/$look-$kind.png" $look "${section[@]}" "${files[@]}"
        else
            looked "$out/plots/$look-$kind.png" $look "${level_map[@]}"
        fi
    done
    montage "${tiles[@]}" -tile 2x -geometry 560x+4+4 "$out/looks-$kind.png"
    cp "$out/plots/modern-$kind.png" "$out/$kind.png"
    echo "$out/looks-$kind.png"
done

if [ $write = yes ]; then
    if command -v xvfb-run >/dev/null; then
        xvfb-run -a "$bin/profiler" -df +dark:data -fp data -me warn -va wbrb "${section[@]}" \
            -de d -ge 700x560 -pp "png=$out/window.png" "${files[@]}" </dev/null
    fi
    for picture in variables values projections looks-section looks-map section map window; do
        [ ! -f "$out/$picture.png" ] ||
            convert "$out/$picture.png" +dither -colors 255 "PNG8:docs/images/$picture.png"
    done
fi
