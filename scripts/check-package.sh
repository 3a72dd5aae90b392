#!/usr/bin/env bash
# Builds and installs the plug-in as for Maya, with a developer kit made of our own headers and the headless host's
# library, and loads what was installed. Shows that the Maya side of the build works as far as that goes without Maya.
#
#   scripts/check-package.sh [build-directory]     of the headless host; default: build/release
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
host=$(realpath "${1:-$root/build/release}")
work="$root/build/package"

rm -rf "$work"
mkdir -p "$work/kit/lib"
ln -s "$root/host/include" "$work/kit/include"
for library in OpenMaya OpenMayaAnim OpenMayaUI Foundation; do
    ln -s "$host/bin/libdelvenhost.so" "$work/kit/lib/lib$library.so"
done

cd "$root"
# Optimisation would cost time and show nothing more.
cmake --preset maya2025 -B "$work/build" -DMAYA_DEVKIT_LOCATION="$work/kit" -DCMAKE_CXX_FLAGS_RELEASE=-O0 >"$work/log"
cmake --build "$work/build"
cmake --install "$work/build" --prefix "$work/modules" >>"$work/log"

cmake -DSOURCE_DIR="$root" -DMODULES="$work/modules" -P tests/packaging/installedTree.cmake

plugin="$work/modules/DELVENTools/plug-ins/DELVENTools.so"
cmake -DNM="$(command -v nm)" -DPLUGIN="$plugin" -P tests/packaging/pluginExports.cmake
"$host/bin/delvenbatch" -noAutoloadPlugins -plugin "$plugin" \
    -command 'if (!`pluginInfo -query -loaded "DELVENTools"`) error "DELVENTools is not loaded";'
# The examples find their meshes beside them, wherever that is.
"$host/bin/delvenbatch" -noAutoloadPlugins -plugin "$plugin" -script "$work/modules/DELVENTools/examples/demo.mel" >>"$work/log"
echo "check-package: the installed plug-in loads, and the installed demo runs with it"
