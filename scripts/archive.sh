#!/usr/bin/env bash
# Draws the sections of many stations and days, by GNU parallel or as an array of Slurm jobs.
#
# usage: scripts/archive.sh [options] DATA_FOLDER OUT_FOLDER [-- profiler's options]
#   --stations FILE   identifiers, one a line (default: those of the first day's files)
#   --first YYYYMMDD  first day (default: that of the oldest file)
#   --days N          so many days (default: up to the newest file)
#   --workers N       at once (default: processors)
#   --chunk N         plots a worker draws before it is started anew (default: 10)
#   --hosts FILE      further machines for GNU parallel, one a line as its --sshloginfile has them;
#                     both folders and the programs stand under the same names there
#   --slurm           an array of Slurm jobs in the place of GNU parallel
#   --profiler FILE   the program (default: the one on the PATH)
#
# A day's section of a station is OUT/YYYYMMDD/STATION.ps; what was told while it was drawn, and how it
# ended, stands in OUT/status. The same call again draws what isn't there whole, and nothing else. At the
# end OUT/missing tells each picture that is missing or that lacks a file, and why; the exit code then is
# 1. What profiler has to say of stations without a report isn't counted: the picture shows the gap.
set -euo pipefail

usage() { sed -n '/^# usage/,/^[^#]/s/^# \{0,1\}//p' "$0"; exit "${1:-2}"; }

# One picture. Its status is written last, so that a worker that is killed leaves none.
draw() {
    local day=$1 station=$2 code=0
    local status=$ARCHIVE_OUT/status/$day-$station
    [ -d "$ARCHIVE_OUT/$day" ] || mkdir -p "$ARCHIVE_OUT/$day"
    # shellcheck disable=SC2086
    $ARCHIVE_PROFILER -me warn -dp "$ARCHIVE_DATA" -cu "#${day}2300" -nh -23 -id "$station" -va wbrb \
        -de "p,$ARCHIVE_OUT/$day/$station.ps,color" $ARCHIVE_OPTIONS >"$status.part" 2>&1 </dev/null ||
        code=$?
    echo "code $code" >>"$status.part"
    mv "$status.part" "$status"
}

# A worker's share: DAY:STATION words.
if [ "${1:-}" = --draw ]; then
    shift
    for task; do draw "${task%:*}" "${task#*:}"; done
    exit 0
fi
# A job of the array draws the lines of the list that are its own.
if [ "${1:-}" = --job ]; then
    first=$((SLURM_ARRAY_TASK_ID * ARCHIVE_CHUNK + 1))
    sed -n "$first,$((first + ARCHIVE_CHUNK - 1))p" "$ARCHIVE_OUT/todo" |
        while read -r task; do draw "${task%:*}" "${task#*:}"; done
    exit 0
fi

stations='' first='' days='' chunk=10 hosts='' slurm=no
workers=$(nproc) ARCHIVE_PROFILER=profiler
while [ $# -gt 0 ]; do
    case "$1" in
        --stations) stations=$2; shift 2 ;;
        --first) first=$2; shift 2 ;;
        --days) days=$2; shift 2 ;;
        --workers) workers=$2; shift 2 ;;
        --chunk) chunk=$2; shift 2 ;;
        --hosts) hosts=$2; shift 2 ;;
        --slurm) slurm=yes; shift ;;
        --profiler) ARCHIVE_PROFILER=$2; shift 2 ;;
        -h | --help) usage 0 ;;
        -*) echo "unknown option: $1" >&2; usage ;;
        *) break ;;
    esac
done
[ $# -ge 2 ] || usage
data=$(realpath "$1") out=$(realpath -m "$2")
shift 2
[ "${1:-}" != -- ] || shift
export ARCHIVE_PROFILER ARCHIVE_DATA=$data ARCHIVE_OUT=$out ARCHIVE_OPTIONS="$*" ARCHIVE_CHUNK=$chunk
mkdir -p "$out/status"

# what is to be there
files=$(find "$data" -maxdepth 1 -name '[12][0-9]*' -printf '%f\n' | sort)
[ -n "$files" ] || { echo "no files with a date in $data" >&2; exit 1; }
[ -n "$first" ] || first=$(head -c 8 <<<"$files")
[ -n "$days" ] || days=$((($(date -ud "$(tail -n 1 <<<"$files" | head -c 8)" +%s) - $(date -ud "$first" +%s)) / 86400 + 1))
if [ -z "$stations" ]; then
    stations=$out/stations
    # shellcheck disable=SC2013
    for file in $(grep "^$(head -c 8 <<<"$files")" <<<"$files"); do
        # the list that the program prints when no station is named; nobody answers which
        # shellcheck disable=SC2086
        $ARCHIVE_PROFILER $ARCHIVE_OPTIONS -me mess -de p,/dev/null "$data/$file" </dev/null 2>/dev/null |
            sed -n '/^Available stations:/,$p' | sed '1d; /Enter the stations/,$d' | tr -s ' ' '\n' || true
    done | grep . | sort -u >"$stations" || true
    [ -s "$stations" ] || { echo "no stations in the files of $data: name them by --stations" >&2; exit 1; }
fi
for ((i = 0; i < days; i++)); do
    day=$(date -ud "$first +$i days" +%Y%m%d)
    sed "s/^/$day:/" "$stations"
done >"$out/tasks"

# what of it isn't there yet
is_whole() {
    local status=$out/status/${1/:/-}
    [ -s "$out/${1/://}.ps" ] && [ -f "$status" ] && ! grep -qv ' not found$\|^code 0$' "$status"
}
while read -r task; do
    is_whole "$task" || { rm -f "$out/status/${task/:/-}"; echo "$task"; }
done <"$out/tasks" >"$out/todo"

# tells what is missing, however the run ended
report() {
    local task status why
    while read -r task; do
        is_whole "$task" && continue
        status=$out/status/${task/:/-}
        if [ ! -f "$status" ]; then
            why='not drawn: its worker ended'
        elif [ ! -s "$out/${task/://}.ps" ]; then
            why="not drawn: $(grep -v ' not found$' "$status" | paste -sd ';')"
        else
            why="drawn without: $(grep -v ' not found$\|^code 0$' "$status" | paste -sd ';')"
        fi
        echo "${task/:/ } $why"
    done <"$out/tasks" >"$out/missing"
    echo "$(wc -l <"$out/tasks") pictures, $(wc -l <"$out/todo") to draw, $(wc -l <"$out/missing") missing or incomplete"
    if [ -s "$out/missing" ]; then
        cut -d ' ' -f 3- "$out/missing" | sort | uniq -c | sort -rn | head -n 10
        echo "each of them: $out/missing"
    fi
}
trap report EXIT

self=$(realpath "$0")
if [ ! -s "$out/todo" ]; then
    :
elif [ "$slurm" = yes ]; then
    jobs=$((($(wc -l <"$out/todo") + chunk - 1) / chunk))
    sbatch --wait --quiet --job-name=archive --array="0-$((jobs - 1))%$workers" --export=ALL \
        --output="$out/status/slurm-%a.log" --wrap="'$self' --job" || true
else
    words=(--jobs "$workers" --max-args "$chunk" --joblog "$out/joblog" --halt never)
    [ -z "$hosts" ] || words+=(--sshloginfile "$hosts" --env ARCHIVE_PROFILER --env ARCHIVE_DATA
        --env ARCHIVE_OUT --env ARCHIVE_OPTIONS)
    parallel "${words[@]}" "$self" --draw :::: "$out/todo" || true
fi
report >/dev/null
[ ! -s "$out/missing" ]
