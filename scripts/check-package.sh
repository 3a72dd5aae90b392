#!/usr/bin/env bash
# Builds and installs the plug-in as for Maya, with a developer kit made of our own headers and the headless host's
# library, and loads what was installed. Shows that the Maya side of the build works as far as that goes without Maya:
# that no warning stops it, that oneTBB's headers win over older ones in the kit, and that the installed plug-in takes its own
# copy of the library.
#
#   scripts/check-package.sh [build-directory]     of the headless host; default: build/release
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
host=$(realpath "${1:-$root/build/release}")
work="$root/build/package"

rm -rf "$work"
mkdir -p "$work/kit/lib" "$work/kit/include/tbb"
ln -s "$root"/host/include/* "$work/kit/include"
# Of the older library no more than what tells it from oneTBB.
echo '#define TBB_INTERFACE_VERSION 11103' >"$work/kit/include/tbb/tbb_stddef.h"
for header in blocked_range parallel_for partitioner task_group; do
    echo '#include "tbb_stddef.h"' >"$work/kit/include/tbb/$header.h"
done
for library in OpenMaya OpenMayaAnim OpenMayaUI Foundation; do
    ln -s "$host/bin/libdelvenhost.so" "$work/kit/lib/lib$library.so"
done

cd "$root"
# Optimisation would cost time and show nothing more.
cmake --preset maya2025 -B "$work/build" -DMAYA_DEVKIT_LOCATION="$work/kit" -DCMAKE_CXX_FLAGS_RELEASE=-O0 >"$work/log"
if grep -q -e -Werror "$work/build/compile_commands.json"; then
    echo "check-package: the preset maya2025 stops at warnings" >&2
    exit 1
fi
cmake --build "$work/build"
cmake --install "$work/build" --prefix "$work/modules" >>"$work/log"

cmake -DSOURCE_DIR="$root" -DMODULES="$work/modules" -P tests/packaging/installedTree.cmake

if errors=$("${CXX:-c++}" -std=c++17 -fsyntax-only -I"$work/kit/include" -Isource source/symmetry/sideBySide.cpp 2>&1) ||
    [[ $(grep -m 1 error <<<"$errors") != *"headers are older than oneTBB"* ]]; then
    echo "check-package: the headers of an older library give no clear error, but" "$errors" >&2
    exit 1
fi

# Moved, and with other copies on the search path, as Maya's launcher sets it.
cp -r "$work/modules" "$work/moved"
mkdir "$work/decoy"
cp "$work/moved/DELVENTools/lib/"libtbb.so.* "$work/decoy"
found=$(LD_LIBRARY_PATH="$work/decoy:$host/bin" ldd "$work/moved/DELVENTools/plug-ins/DELVENTools.so" | grep libtbb.so)
if [[ $(wc -l <<<"$found") -ne 1 ||
    $(realpath "$(sed -E 's/.*=> (.*) \(.*/\1/' <<<"$found")") != "$work/moved/DELVENTools/lib/"* ]]; then
    echo "check-package: the installed plug-in does not take its own copy of oneTBB, but" "$found" >&2
    exit 1
fi

plugin="$work/modules/DELVENTools/plug-ins/DELVENTools.so"
cmake -DNM="$(command -v nm)" -DPLUGIN="$plugin" -P tests/packaging/pluginExports.cmake
"$host/bin/delvenbatch" -noAutoloadPlugins -plugin "$plugin" \
    -command 'if (!`pluginInfo -query -loaded "DELVENTools"`) error "DELVENTools is not loaded";'
# The examples find their meshes beside them, wherever that is.
"$host/bin/delvenbatch" -noAutoloadPlugins -plugin "$plugin" -script "$work/modules/DELVENTools/examples/demo.mel" >>"$work/log"
echo "check-package: the installed plug-in takes its own oneTBB and loads, and the installed demo runs with it"
