#!/usr/bin/env bash
# Compiles the module with clang, against libstdc++ and against LLVM's libc++, as on macOS: the two compilers warn of
# different things, and the two libraries include less or more behind their headers. Nothing is linked; objects that
# were compiled before come from ccache where it is installed.
#
#   scripts/check-clang-compile.sh [file.cpp]...     default: all of source/
#
# CLANG_CXX names another compiler.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
compiler=(${CLANG_CXX:-clang++})
command -v ccache >/dev/null && compiler=(ccache "${compiler[@]}")

if [[ $# -gt 0 ]]; then
    files=("$@")
else
    mapfile -t files < <(find "$root/source" -name '*.cpp' | sort)
fi
if [[ ${#files[@]} -eq 0 ]]; then
    echo "check-clang-compile: found no source files" >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# An own file to compile first: with a library that is not installed every file would fail.
for library in libstdc++ libc++; do
    if ! echo '#include <vector>' | "${compiler[@]}" -x c++ -stdlib=$library -fsyntax-only - 2>"$work/errors"; then
        cat "$work/errors" >&2
        echo "check-clang-compile: no headers of $library; run 'scripts/install-dependencies.sh check'" >&2
        exit 1
    fi
done

# As in cmake/DelvenTargets.cmake: for clang -Wconversion covers changes of sign as well.
flags=(-std=c++17 -O0 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror
    -I"$root/host/include" -I"$root/source")
compile() {
    local library=$1 file=$2
    shift 2
    "$@" -stdlib="$library" -c "$file" -o "$(mktemp "$work/XXXXXX.o")"
}
export -f compile
export work
for library in libstdc++ libc++; do
    printf '%s\0' "${files[@]}" |
        xargs -0 -I '{}' -P "$(nproc)" bash -c 'compile "$@"' compile "$library" '{}' "${compiler[@]}" "${flags[@]}"
done
echo "check-clang-compile: ${#files[@]} files compile with libstdc++ and with libc++"
