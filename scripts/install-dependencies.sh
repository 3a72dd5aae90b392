#!/usr/bin/env bash
# Installs the Debian packages that the project needs and that are missing. Says nothing when all are there.
#
#   scripts/install-dependencies.sh [group]...     groups: build (the default) python bench fuzz coverage check all
set -euo pipefail

declare -A packages=(
    [build]="cmake ninja-build g++ libtbb-dev libedit-dev libembree-dev libgtest-dev libpng-dev locales"
    [python]="python3-dev pybind11-dev python3-numpy python3-pytest python3-tqdm python3-distributed"
    [bench]="libbenchmark-dev libgtest-dev libnanoflann-dev python3-scipy"
    [fuzz]="clang libclang-rt-dev"
    [coverage]="gcovr"
    # binutils: nm; util-linux: setarch, for ThreadSanitizer; strace: kills a save at each call to the system
    [check]="clang-format clang-tidy clang libc++-dev libc++abi-dev g++-mingw-w64-x86-64-posix ccache binutils util-linux strace python3"
)

groups=("${@:-build}")
[[ " ${groups[*]} " == *" all "* ]] && groups=("${!packages[@]}")

wanted=()
for group in "${groups[@]}"; do
    if [[ -z "${packages[$group]:-}" ]]; then
        echo "install-dependencies: unknown group '$group' (known: ${!packages[*]} all)" >&2
        exit 2
    fi
    read -ra names <<<"${packages[$group]}"
    wanted+=("${names[@]}")
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "install-dependencies: no apt-get here, so nothing was installed." >&2
    echo "Install the equivalents of these Debian packages by hand: ${wanted[*]}" >&2
    # A machine of another kind may have everything already: the build says what is missing.
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    # A package of several architectures prints its state once for each.
    [[ "$state" == installed* ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "install-dependencies: not root and no sudo; have these packages installed: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
run() {
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >"$log" 2>&1; then
        cat "$log" >&2
        echo "install-dependencies: failed: $*" >&2
        exit 1
    fi
}
run apt-get update
run apt-get install --yes --no-install-recommends "${missing[@]}"
