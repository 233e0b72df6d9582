#!/usr/bin/env bash
# Runs every fuzzer of a build directory from its corpus, one on each processor at a time, and fails when one finds
# something.
# usage: tools/fuzz.sh BUILD_DIR SECONDS    (seconds for each fuzzer)
# Inputs, logs and finds stay in BUILD_DIR/fuzzing; the tree is not written.
set -euo pipefail

build=$1
seconds=$2
tests=$(cd "$(dirname "$0")/../tests/fuzz" && pwd)
work=$build/fuzzing
mkdir -p "$work"

# fuzzer_run NAME: runs one fuzzer and says in one line what came of it; false when it found something.
fuzzer_run()
{
    local name=$1 result status=0
    rm -rf "${work:?}/$name"
    mkdir -p "$work/$name/corpus" "$work/$name/finds"
    cp "$tests/corpus/$name/"* "$work/$name/corpus/"
    local options=(-max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 -print_final_stats=1)
    options+=(-artifact_prefix="$work/$name/finds/")
    case "$name" in
        fuzz_record | fuzz_geometry) options+=(-max_len=48) ;;
        fuzz_kernels) options+=(-max_len=44) ;;
        fuzz_storage) options+=(-max_len=24) ;;
    esac
    if [ -f "$tests/$name.dict" ]; then options+=(-dict="$tests/$name.dict"); fi
    # Freed memory is kept from reuse for a shorter time than usual: many more runs for hardly fewer finds.
    if ASAN_OPTIONS=quarantine_size_mb=16:detect_stack_use_after_return=1 UBSAN_OPTIONS=print_stacktrace=1 \
        LSAN_OPTIONS=suppressions="$tests/../support/lsan.supp:print_suppressions=0" \
        "$build/tests/fuzz/$name" "$work/$name/corpus" "${options[@]}" >"$work/$name/log" 2>&1; then
        result="nothing found"
    else
        result="FAILED, input and log in $work/$name"
        status=1
        awk '!/^(#[0-9]+|ParseDictionary|Dictionary:|INFO:)/ && ++shown <= 60' "$work/$name/log" >&2
    fi
    local executed covered
    executed=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/$name/log")
    covered=$(sed -n 's/^#[0-9].* cov: \([0-9]*\).*/\1/p' "$work/$name/log" | tail -n 1)
    echo "$name: ${executed:-no} executions in $seconds s, ${covered:-no} branches reached: $result"
    return "$status"
}

found=0
running=0
for folder in "$tests"/corpus/*/; do
    if [ "$running" -ge "$(nproc)" ]; then
        wait -n || found=1
        running=$((running - 1))
    fi
    fuzzer_run "$(basename "$folder")" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || found=1
    running=$((running - 1))
done
exit "$found"
