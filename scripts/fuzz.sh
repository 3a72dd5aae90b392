#!/usr/bin/env bash
# Runs every fuzz target for FUZZ_SECONDS seconds (default 30), starting from its seed corpus, and fails on any finding.
# New inputs stay in the build directory; the seeds in fuzz/corpus are copied, never written.
#
#   scripts/fuzz.sh [build-directory]     default: build/fuzz
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath "${1:-$root/build/fuzz}")
seconds=${FUZZ_SECONDS:-30}

shopt -s nullglob
fuzzers=("$build"/bin/*Fuzzer)
if [[ ${#fuzzers[@]} -eq 0 ]]; then
    echo "fuzz: no fuzz target in $build/bin" >&2
    exit 1
fi

failed=()
for fuzzer in "${fuzzers[@]}"; do
    name=$(basename "$fuzzer" Fuzzer)
    seeds=("$root/fuzz/corpus/$name"/*)
    if [[ ${#seeds[@]} -eq 0 ]]; then
        echo "fuzz: $name has no seeds in fuzz/corpus/$name" >&2
        exit 1
    fi
    work="$build/fuzz-$name"
    mkdir -p "$work/corpus" "$work/findings"
    cp "${seeds[@]}" "$work/corpus/"
    echo "== $name: $seconds seconds from ${#seeds[@]} seeds"
    # A single input may take 10 seconds and 2 GiB; more counts as a hang or a leak.
    if "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$work/findings/" \
        -print_final_stats=1 "$work/corpus" >"$work/log" 2>&1; then
        grep -E '^(stat::|Done )' "$work/log" || true
    else
        tail -n 60 "$work/log"
        failed+=("$name")
    fi
done

if [[ ${#failed[@]} -gt 0 ]]; then
    echo "fuzz: failed: ${failed[*]}; the inputs are in $build/fuzz-<name>/findings" >&2
    exit 1
fi
