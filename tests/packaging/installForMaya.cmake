# cmake -DSOURCE_DIR=<checkout> -DWORK_DIR=<folder> -DCXX_COMPILER=<c++> -DGENERATOR=<name>
#       {-DPLUGIN=<file> [-DTBB_DIR=<folder>] | -DSYSTEM=Windows} -P installForMaya.cmake
#
# Configures the build for Maya with a kit of our own headers, puts a plug-in where the build would have left it, installs, and
# looks at the result. scripts/check-package.sh does the same with a plug-in that was built that way. For Windows, whose compiler
# may be one of another system, plug-in and oneTBB are empty files.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/kit/lib")
file(CREATE_LINK "${SOURCE_DIR}/host/include" "${WORK_DIR}/kit/include" SYMBOLIC)
foreach(library OpenMaya OpenMayaAnim OpenMayaUI Foundation)
  foreach(name lib${library}.so lib${library}.dylib ${library}.lib)
    file(WRITE "${WORK_DIR}/kit/lib/${name}" "")
  endforeach()
endforeach()

set(system)
if(SYSTEM STREQUAL "Windows")
  set(PLUGIN "${WORK_DIR}/DELVENTools.mll")
  set(TBB_DIR "${WORK_DIR}/oneTbb")
  file(WRITE "${PLUGIN}" "")
  file(WRITE "${TBB_DIR}/tbb12.dll" "")
  file(WRITE "${TBB_DIR}/TBBConfig.cmake" [[
add_library(TBB::tbb SHARED IMPORTED)
set_target_properties(TBB::tbb PROPERTIES IMPORTED_LOCATION "${CMAKE_CURRENT_LIST_DIR}/tbb12.dll"
  IMPORTED_IMPLIB "${CMAKE_CURRENT_LIST_DIR}/tbb12.lib" INTERFACE_INCLUDE_DIRECTORIES "${CMAKE_CURRENT_LIST_DIR}")
]])
  file(WRITE "${TBB_DIR}/TBBConfigVersion.cmake" "set(PACKAGE_VERSION 2021.5)\nset(PACKAGE_VERSION_COMPATIBLE TRUE)\n")
  set(system -DCMAKE_SYSTEM_NAME=Windows)
endif()

# The search path of another build cannot be taken out of its plug-in.
execute_process(
  COMMAND "${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}" -DCMAKE_BUILD_TYPE=Release
          -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DTBB_DIR=${TBB_DIR} -DMAYA_DEVKIT_LOCATION=${WORK_DIR}/kit
          -DDELVEN_BUILD_HOST=OFF -DDELVEN_BUILD_TESTS=OFF -DCMAKE_SKIP_RPATH=ON ${system}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(COPY "${PLUGIN}" DESTINATION "${WORK_DIR}/build/bin")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${WORK_DIR}/build" --prefix "${WORK_DIR}/modules"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(MODULES "${WORK_DIR}/modules")
include("${SOURCE_DIR}/tests/packaging/installedTree.cmake")
