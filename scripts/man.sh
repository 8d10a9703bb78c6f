#!/usr/bin/env bash
# Makes the man pages in docs/man from the manual.
# usage: scripts/man.sh [OUT_FOLDER]     (default: docs/man)
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$source/docs/man}
command -v pandoc >/dev/null || { echo "pandoc isn't installed: the pages stay as they are" >&2; exit 1; }
mkdir -p "$out/man1" "$out/man7"
for page in "$source"/docs/manual/*.1.md; do
    sed '/<!-- table/d' "$page" | "$source/scripts/man_lists.py" | pandoc -s -f markdown -t man -o "$out/man1/$(basename "$page" .md)"
done
for chapter in "$source"/docs/manual/*.md; do
    name=$(basename "$chapter" .md)
    case $name in *.1 | README) continue ;; esac
    # the title becomes the page's name; pictures and links are for the screen
    {
        echo "% TYR-$(tr '[:lower:]' '[:upper:]' <<<"$name")(7) 5.59 | Wind profiler plots"
        echo
        echo "# NAME"
        echo
        echo "tyr-$name - $(sed -n '1s/^# //p' "$chapter") in the manual of the plotting programs"
        echo
        sed -e '1s/^# .*/# DESCRIPTION/' -e '/^!\[/d' -e '/<!-- table/d' -e 's/^## /# /' \
            -e 's/\[\([^]]*\)\]([^)]*)/\1/g' "$chapter"
    } | "$source/scripts/man_lists.py" | pandoc -s -f markdown -t man -o "$out/man7/tyr-$name.7"
done
