# cmake -DSOURCE_DIR=<checkout> -DMODULES=<folder> -P installedTree.cmake
#
# What was installed for Maya into a modules folder: nothing is missing, nothing is there by accident, the .mod file leads
# to the plug-in, and the pages refer to files that came with them.
cmake_minimum_required(VERSION 3.25)

set(module "${MODULES}/DELVENTools")

file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE "${MODULES}" "${MODULES}/*")
list(FILTER installed EXCLUDE REGEX "^DELVENTools/(docs|examples)/")
string(REGEX REPLACE "\\.(mll|bundle)(;|$)" ".so\\2" installed "${installed}")
list(SORT installed)
set(expected DELVENTools.mod DELVENTools/CONTRIBUTING.md DELVENTools/LICENSE DELVENTools/README.md
    DELVENTools/plug-ins/DELVENTools.so)
if(NOT installed STREQUAL expected)
  message(SEND_ERROR "expected ${expected}\ninstalled ${installed}")
endif()

foreach(folder docs examples)
  file(GLOB_RECURSE wanted LIST_DIRECTORIES false RELATIVE "${SOURCE_DIR}" "${SOURCE_DIR}/${folder}/*")
  list(FILTER wanted EXCLUDE REGEX "/__pycache__/")
  file(GLOB_RECURSE found LIST_DIRECTORIES false RELATIVE "${module}" "${module}/${folder}/*")
  list(SORT wanted)
  list(SORT found)
  if(NOT found STREQUAL wanted)
    message(SEND_ERROR "${folder}: expected ${wanted}\ninstalled ${found}")
  endif()
endforeach()
foreach(file docs/commands.md docs/building-for-maya.md examples/demo.mel examples/meshes/head.obj)
  if(NOT EXISTS "${module}/${file}")
    message(SEND_ERROR "${file} is not installed")
  endif()
endforeach()

# Maya takes the plug-ins folder below the path on the line.
file(READ "${MODULES}/DELVENTools.mod" line)
if(NOT line MATCHES "^\\+ MAYAVERSION:2025 PLATFORM:(win64|linux|mac) DELVENTools [0-9]+\\.[0-9]+\\.[0-9]+ (\\./[^\n]+)\n$")
  message(SEND_ERROR "DELVENTools.mod says: ${line}")
elseif(NOT IS_DIRECTORY "${MODULES}/${CMAKE_MATCH_2}/plug-ins")
  message(SEND_ERROR "DELVENTools.mod leads to ${CMAKE_MATCH_2}, where there are no plug-ins")
endif()

file(GLOB_RECURSE pages "${module}/*.md")
foreach(page IN LISTS pages)
  file(READ "${page}" text)
  # Brackets and semicolons would confuse CMake's lists.
  string(REGEX REPLACE "[][;]" " " text "${text}")
  string(REGEX MATCHALL " \\([A-Za-z][^)# ]*" links "${text}")
  get_filename_component(folder "${page}" DIRECTORY)
  foreach(link IN LISTS links)
    string(REGEX REPLACE "^ \\(" "" link "${link}")
    if(link MATCHES "\\.[a-z]+$" AND NOT link MATCHES ":" AND NOT EXISTS "${folder}/${link}")
      message(SEND_ERROR "${page} refers to ${link}")
    endif()
  endforeach()
endforeach()
