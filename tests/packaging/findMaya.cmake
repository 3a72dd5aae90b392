# cmake -DSOURCE_DIR=<checkout> -DWORK_DIR=<folder> -DCXX_COMPILER=<c++> -DGENERATOR=<name> -P findMaya.cmake
#
# Runs find_package(Maya) in a project of its own on folders laid out as a developer kit is, each way that it can be
# named, and without any.
cmake_minimum_required(VERSION 3.25)

foreach(name MAYA_LOCATION MAYA_DEVKIT_LOCATION DEVKIT_LOCATION)
  unset(ENV{${name}})
endforeach()
file(REMOVE_RECURSE "${WORK_DIR}")

set(libraries OpenMaya OpenMayaAnim OpenMayaUI Foundation)
file(WRITE "${WORK_DIR}/kit/include/maya/MTypes.h" "#define MAYA_API_VERSION 20250300\n")
# The version may stand in a header of its own.
file(WRITE "${WORK_DIR}/headers/include/maya/MTypes.h" "#include <maya/MApiVersion.h>\n")
file(WRITE "${WORK_DIR}/headers/include/maya/MApiVersion.h" "#define MAYA_API_VERSION 20250300\n")
foreach(library IN LISTS libraries)
  file(WRITE "${WORK_DIR}/kit/lib/lib${library}.so" "")
  file(WRITE "${WORK_DIR}/installed/lib/lib${library}.so" "")
endforeach()

file(WRITE "${WORK_DIR}/project/CMakeLists.txt" [[
cmake_minimum_required(VERSION 3.25)
project(FindMayaTest LANGUAGES CXX)
# The libraries are empty files named as on Linux, on every machine.
set(CMAKE_FIND_LIBRARY_PREFIXES lib)
set(CMAKE_FIND_LIBRARY_SUFFIXES .so)
list(APPEND CMAKE_MODULE_PATH "${DELVEN_MODULES}")
# So that one machine shows what the others would define.
if(DELVEN_SYSTEM)
  set(${DELVEN_SYSTEM} TRUE)
endif()
find_package(Maya ${DELVEN_WANTED} REQUIRED)
get_target_property(include Maya::Maya INTERFACE_INCLUDE_DIRECTORIES)
get_target_property(libraries Maya::Maya INTERFACE_LINK_LIBRARIES)
get_target_property(definitions Maya::Maya INTERFACE_COMPILE_DEFINITIONS)
message(STATUS "found ${Maya_VERSION} include=${include} libraries=${libraries} definitions=${definitions}")
]])

# configure(<case> <argument>...): leaves `status` and `output`.
function(configure case)
  execute_process(COMMAND "${CMAKE_COMMAND}" -S "${WORK_DIR}/project" -B "${WORK_DIR}/build-${case}" -G "${GENERATOR}"
      -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DDELVEN_MODULES=${SOURCE_DIR}/cmake ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(status "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_found case include library_folder)
  set(expected "found 2025 include=${WORK_DIR}/${include} libraries=")
  foreach(library IN LISTS libraries)
    string(APPEND expected "${WORK_DIR}/${library_folder}/lib${library}.so;")
  endforeach()
  string(REGEX REPLACE ";$" " definitions=REQUIRE_IOSTREAM;_BOOL" expected "${expected}")
  string(FIND "${output}" "${expected}" position)
  if(NOT status EQUAL 0 OR position LESS 0)
    message(SEND_ERROR "${case}: expected '${expected}', got\n${output}")
  endif()
endfunction()

function(expect_definitions case)
  string(FIND "${output}" "definitions=REQUIRE_IOSTREAM;_BOOL;${ARGN}\n" position)
  if(NOT status EQUAL 0 OR position LESS 0)
    message(SEND_ERROR "${case}: expected the definitions '${ARGN}', got\n${output}")
  endif()
endfunction()

function(expect_missing case)
  # CMake wraps its messages.
  string(REGEX REPLACE "[ \n]+" " " flat "${output}")
  if(status EQUAL 0)
    message(SEND_ERROR "${case}: was found")
  endif()
  foreach(text IN LISTS ARGN)
    string(FIND "${flat}" "${text}" position)
    if(position LESS 0)
      message(SEND_ERROR "${case}: the message lacks '${text}':\n${output}")
    endif()
  endforeach()
endfunction()

foreach(name MAYA_DEVKIT_LOCATION DEVKIT_LOCATION MAYA_LOCATION)
  configure(cache-${name} -D${name}=${WORK_DIR}/kit)
  expect_found("${name} as a variable" kit/include kit/lib)
  set(ENV{${name}} "${WORK_DIR}/kit")
  configure(environment-${name})
  expect_found("${name} in the environment" kit/include kit/lib)
  unset(ENV{${name}})
endforeach()

configure(split -DDEVKIT_LOCATION=${WORK_DIR}/headers -DMAYA_LOCATION=${WORK_DIR}/installed)
expect_found("headers and libraries apart" headers/include installed/lib)

set(ENV{DEVKIT_LOCATION} "${WORK_DIR}/nowhere")
configure(precedence -DMAYA_LOCATION=${WORK_DIR}/kit)
expect_found("a variable goes before the environment" kit/include kit/lib)
unset(ENV{DEVKIT_LOCATION})

configure(macOS -DDEVKIT_LOCATION=${WORK_DIR}/kit -DDELVEN_SYSTEM=APPLE)
expect_definitions("macOS" MAC_PLUGIN OSMac_ OSMac_MachO CC_GNU_)
configure(Windows -DDEVKIT_LOCATION=${WORK_DIR}/kit -DDELVEN_SYSTEM=WIN32)
expect_definitions("Windows" NT_PLUGIN _WINDOWS)

configure(none)
expect_missing("nothing named" "Could NOT find Maya" MAYA_DEVKIT_LOCATION DEVKIT_LOCATION MAYA_LOCATION)

configure(headers-only -DDEVKIT_LOCATION=${WORK_DIR}/headers)
expect_missing("headers only" Maya_OpenMaya_LIBRARY "No complete developer kit below ${WORK_DIR}/headers")

configure(newer-wanted -DDEVKIT_LOCATION=${WORK_DIR}/kit -DDELVEN_WANTED=2026)
expect_missing("a kit that is too old" "required is at least \"2026\"")
