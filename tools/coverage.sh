#!/usr/bin/env bash
# Prints which lines and branches of the product the tests of a build directory have run, by file and in all, and
# writes the same as coverage.json and as pages into coverage/ of that directory. Fails when too few lines were run:
# gcovr.cfg says how many and what counts.
# usage: tools/coverage.sh <build directory>
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/.."

mkdir -p "$build/coverage"
# The compiler's counters are read once; the reports are made of what was read.
folders=("$build"/{src,platform,instrument,tools/dotweave,tests})
gcovr --root . --fail-under-line 0 --fail-under-branch 0 --json "$build/coverage.json" "${folders[@]}"
gcovr --root . --fail-under-line 0 --fail-under-branch 0 --add-tracefile "$build/coverage.json" --txt --branches
gcovr --root . --fail-under-line 0 --fail-under-branch 0 --add-tracefile "$build/coverage.json" \
    --html-details "$build/coverage/index.html"
gcovr --root . --add-tracefile "$build/coverage.json" --txt --print-summary
