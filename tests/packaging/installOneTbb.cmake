# cmake -DSOURCE_DIR=<checkout> -DWORK_DIR=<folder> -P installOneTbb.cmake
#
# Which file is installed as oneTBB, under which name, and what is asked of the tools of macOS: stand-ins here, which write down
# what they were called with.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK_DIR}")
file(WRITE "${WORK_DIR}/built/libtbb.so.12.5" "the library")
file(CREATE_LINK libtbb.so.12.5 "${WORK_DIR}/built/libtbb.so.12" SYMBOLIC)
file(WRITE "${WORK_DIR}/built/libtbb.12.5.dylib" "the library")
file(WRITE "${WORK_DIR}/tools/otool" "#!/bin/sh\necho \"$2:\"\necho /opt/tbb/lib/libtbb.12.dylib\n")
file(WRITE "${WORK_DIR}/tools/install_name_tool" "#!/bin/sh\necho \"$*\" >>'${WORK_DIR}/calls'\n")
file(CHMOD "${WORK_DIR}/tools/otool" "${WORK_DIR}/tools/install_name_tool" PERMISSIONS OWNER_READ OWNER_EXECUTE)
set(ENV{PATH} "${WORK_DIR}/tools:$ENV{PATH}")

set(folder "${WORK_DIR}/installed")
set(plugin "${WORK_DIR}/DELVENTools.bundle")

function(expect_installed library name is_apple expected)
  include("${SOURCE_DIR}/cmake/installOneTbb.cmake")
  set(file "${folder}/${expected}")
  set(content "")
  if(EXISTS "${file}" AND NOT IS_SYMLINK "${file}")
    file(READ "${file}" content)
  endif()
  if(NOT content STREQUAL "the library")
    message(SEND_ERROR "${library} as '${name}': ${expected} is not the library")
  endif()
endfunction()

# Its package need not say by which name it is asked for.
expect_installed("${WORK_DIR}/built/libtbb.so.12" "" 0 libtbb.so.12)
if(EXISTS "${WORK_DIR}/calls")
  message(SEND_ERROR "the tools of macOS were called for Linux")
endif()

expect_installed("${WORK_DIR}/built/libtbb.12.5.dylib" libtbb.12.dylib 1 libtbb.12.dylib)
file(READ "${WORK_DIR}/calls" calls)
if(NOT calls STREQUAL "-change /opt/tbb/lib/libtbb.12.dylib @rpath/libtbb.12.dylib ${plugin}\n")
  message(SEND_ERROR "install_name_tool was called with: ${calls}")
endif()
