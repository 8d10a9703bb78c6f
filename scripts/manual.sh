#!/usr/bin/env bash
# Runs the commands under the pictures of the manual.
# usage: scripts/manual.sh BIN_FOLDER [--write]
#   --write  renews the pictures in docs/manual/images
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
bin=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
"$bin/make_samples" obs --layout 12 --hours 13
export PATH="$bin:$PATH" tyrfile="$source/data" tyrmess=warn tyrdefault=/nonexistent
failed=0
for chapter in "$source"/docs/manual/*.md; do
    name=$(basename "$chapter" .md)
    grep -q '^!\[' "$chapter" || continue
    # shellcheck disable=SC2016
    sed -n '/^```sh$/,/^```$/p; /^```$/q' "$chapter" | sed '/^```/d' >command.sh
    if ! bash -e command.sh || ! grep -q '^%%EOF' "$name.ps"; then
        echo "$name: the command draws nothing" >&2
        failed=1
    elif [ "${2:-}" = --write ]; then
        gs -q -dNOPAUSE -dBATCH -dSAFER -dEPSCrop -dTextAlphaBits=4 -dGraphicsAlphaBits=4 \
            -sDEVICE=png16m -r72 -sOutputFile="$name.png" "$name.ps"
        convert "$name.png" +dither -colors 48 "PNG8:$source/docs/manual/images/$name.png"
    fi
done
exit $failed
