#!/usr/bin/env bash
# clang-tidy and cppcheck over the product; needs build/compile_commands.json.
set -euo pipefail
cd "$(dirname "$0")/.."
sources=$(git ls-files '*.cpp' | grep -E '^(tyr|programs|tools)/')
# shellcheck disable=SC2086
cppcheck --enable=warning,portability --quiet -j"$(nproc)" --std=c++20 -I. --error-exitcode=1 \
    --suppress=CastIntegerToAddressAtReturn \
    --suppress=constStatement:tyr/grid_math/pointwise.h $sources # it misreads fold expressions
findings=$(echo "$sources" | xargs -P"$(nproc)" -n6 clang-tidy -p build --quiet \
    --extra-arg=-Wno-unknown-warning-option 2>/dev/null | grep -E '(warning|error):' | sort -u) || true
if [ -n "$findings" ]; then
    echo "$findings"
    exit 1
fi
echo "lint: clean"
