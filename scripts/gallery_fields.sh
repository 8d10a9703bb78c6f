#!/usr/bin/env bash
# Draws sheets of gridded fields to look through: a height field with highs and lows, a filled one
# with its bar, and winds, on the projections. build/ must stand with field_page.
# usage: scripts/gallery_fields.sh [FOLDER]      (default folder: gallery-out)
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-gallery-out}
mkdir -p "$out/fields"
for sheet in height:ln:lab=23 filled:cf:bar barbs:barb:sk=2 arrows:vect:sk=2 streams:strm; do
    name=${sheet%%:*}
    pictures=()
    # polar stereographic, latitude and longitude across the date line, Mercator, Lambert,
    # orthographic, Mollweide, satellite
    for projection in 1 2 3 4 5 7 9; do
        file="$out/fields/$name-$projection"
        rm -f "$file.ps"
        build/bin/field_page "$file.ps" "${sheet#*:}" "$projection" 37 >/dev/null
        gs -q -dNOPAUSE -dBATCH -dTextAlphaBits=4 -dGraphicsAlphaBits=4 -sDEVICE=png16m -r50 \
            -sOutputFile="$file.png" "$file.ps"
        pictures+=("$file.png")
    done
    montage "${pictures[@]}" -rotate 90 -tile 3x -geometry +2+2 "$out/fields-$name.png"
    echo "$out/fields-$name.png"
done
