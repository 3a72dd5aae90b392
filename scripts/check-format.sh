#!/usr/bin/env bash
# Fails when a C++ file of ours is not laid out as .clang-format says. `make format` repairs it.
#
#   scripts/check-format.sh [--fix]
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t files < <(find source host python tests bench fuzz -name '*.cpp' -o -name '*.h' | sort)
if [[ ${#files[@]} -eq 0 ]]; then
    echo "check-format: found no source files" >&2
    exit 1
fi

if [[ "${1:-}" == --fix ]]; then
    clang-format -i "${files[@]}"
else
    clang-format --dry-run -Werror "${files[@]}"
    echo "check-format: ${#files[@]} files in order"
fi
