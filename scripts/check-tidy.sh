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

# What is not built here (for another system, or in place of a missing library) has no compile command.
mapfile -t files < <(find source host python -name '*.cpp' | sort | while read -r file; do
    ! grep -qF "/$file\"" "$build/compile_commands.json" || echo "$file"
done)
printf '%s\0' "${files[@]}" |
    xargs -0 --no-run-if-empty -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet 2>&1 |
    { grep -vE '^[0-9]+ warnings? generated\.$' || true; }
echo "check-tidy: ${#files[@]} files in order"
