#!/usr/bin/env bash
# Runs every fuzz target for so many seconds or ten million executions, two at a time, and prints a
# line for each: executions, seconds, and what stopped it. Findings stand in build-fuzz/work/<target>.
# usage: scripts/fuzz.sh [seconds]      (default 600)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
need_packages clang libclang-rt-14-dev
seconds=${1:-600}
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz | tail -n 1

run_target() {
    local target=$1 seconds=$2 work=build-fuzz/work/$1 code=0
    mkdir -p "$work"
    build-fuzz/bin/fuzz_"$target" -max_total_time="$seconds" -runs=10000000 -timeout=15 \
        -artifact_prefix="$work/" -print_final_stats=1 "$work" "tests/fuzz/corpus/$target" \
        >"$work.log" 2>&1 || code=$?
    printf '%-12s %12s executions, code %d\n' "$target" \
        "$(sed -n 's/.*number_of_executed_units: *//p' "$work.log" | tail -n 1)" $code
}
export -f run_target
# shellcheck disable=SC2016
find tests/fuzz/corpus -mindepth 1 -maxdepth 1 -type d -printf '%f\n' | sort |
    xargs -P2 -I{} bash -c 'run_target "$1" "$2"' _ {} "$seconds"
