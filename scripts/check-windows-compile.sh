#!/usr/bin/env bash
# Compiles the module for 64-bit Windows with mingw-w64: it may use nothing of POSIX, and no type whose size differs
# there (long has 32 bits). Compile only; nothing is linked.
#
#   scripts/check-windows-compile.sh [file.cpp]...     default: all of source/
#
# MINGW_CXX names another compiler, TBB_INCLUDE_DIR another place of oneTBB's headers.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
compiler=${MINGW_CXX:-x86_64-w64-mingw32-g++-posix}
tbb=${TBB_INCLUDE_DIR:-/usr/include}

if [[ $# -gt 0 ]]; then
    files=("$@")
else
    mapfile -t files < <(find "$root/source" -name '*.cpp' | sort)
fi
if [[ ${#files[@]} -eq 0 ]]; then
    echo "check-windows-compile: found no source files" >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Only oneTBB's own folders: the rest of that directory belongs to this machine's C library.
mkdir "$work/include"
for folder in tbb oneapi; do
    if [[ ! -d "$tbb/$folder" ]]; then
        echo "check-windows-compile: no $folder headers in $tbb" >&2
        exit 1
    fi
    ln -s "$tbb/$folder" "$work/include/$folder"
done

flags=(-std=c++17 -O0 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
    -D_WINDOWS -DNT_PLUGIN -DREQUIRE_IOSTREAM -D_BOOL
    -isystem "$work/include" -I"$root/host/include" -I"$root/source")
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "$(nproc)" "$compiler" "${flags[@]}" -o /dev/null -c
echo "check-windows-compile: ${#files[@]} files compile"
