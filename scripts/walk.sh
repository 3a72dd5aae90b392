#!/usr/bin/env bash
# Replays what random walks have found before, and walks for WALK_SECONDS seconds (default 60) from the seed WALK_SEED
# (default 1). Each finding is printed with the fewest lines that show it.
#
#   scripts/walk.sh [build-directory]     default: build/asan
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath "${1:-$root/build/asan}")
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1

"$build/bin/delvenwalk" -replay "$root/tests/walk/findings"
"$build/bin/delvenwalk" -seed "${WALK_SEED:-1}" -seconds "${WALK_SECONDS:-60}"
