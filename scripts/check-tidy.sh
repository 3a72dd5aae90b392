#!/usr/bin/env bash
# clang-tidy on the module and the host, with the compile commands of a configured and built directory.
#
#   scripts/check-tidy.sh [build-directory]     default: build/release
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}

if [[ ! -f "$build/compile_commands.json" ]]; then
    echo "check-tidy: $build is not configured; run 'make build' first" >&2
    exit 1
fi

# What is not built here has no compile command.
find source host python -name '*.cpp' ! -name '*Windows.cpp' -print0 | sort -z |
    xargs -0 --no-run-if-empty -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet 2>&1 |
    { grep -vE '^[0-9]+ warnings? generated\.$' || true; }
echo "check-tidy: $(find source host python -name '*.cpp' | wc -l) files in order"
