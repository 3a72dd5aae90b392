# Finds Maya's developer kit and gives it as the imported target Maya::Maya.
#
# Looks below MAYA_DEVKIT_LOCATION, DEVKIT_LOCATION and MAYA_LOCATION, first as CMake variables, then in the environment.
# Headers and libraries may lie below different ones of them: a kit without libraries goes with an installed Maya.
#
# Result: Maya_FOUND, Maya_VERSION (the year), Maya_INCLUDE_DIR, Maya_LIBRARIES, and Maya::Maya with the include path, the
# libraries and the definitions that the kit's headers ask for.

set(_maya_roots)
foreach(_name MAYA_DEVKIT_LOCATION DEVKIT_LOCATION MAYA_LOCATION)
  if(DEFINED ${_name} AND NOT "${${_name}}" STREQUAL "")
    list(APPEND _maya_roots "${${_name}}")
  endif()
endforeach()
foreach(_name MAYA_DEVKIT_LOCATION DEVKIT_LOCATION MAYA_LOCATION)
  if(NOT "$ENV{${_name}}" STREQUAL "")
    file(TO_CMAKE_PATH "$ENV{${_name}}" _path)
    list(APPEND _maya_roots "${_path}")
  endif()
endforeach()

find_path(Maya_INCLUDE_DIR maya/MTypes.h
  PATHS ${_maya_roots}
  PATH_SUFFIXES include devkit/include devkitBase/include ../devkit/include
  NO_DEFAULT_PATH)

set(Maya_LIBRARIES)
set(_maya_needed Maya_INCLUDE_DIR)
foreach(_library OpenMaya OpenMayaAnim OpenMayaUI Foundation)
  find_library(Maya_${_library}_LIBRARY ${_library}
    PATHS ${_maya_roots}
    PATH_SUFFIXES lib devkitBase/lib Maya.app/Contents/MacOS Contents/MacOS MacOS
    NO_DEFAULT_PATH)
  list(APPEND Maya_LIBRARIES "${Maya_${_library}_LIBRARY}")
  list(APPEND _maya_needed Maya_${_library}_LIBRARY)
  mark_as_advanced(Maya_${_library}_LIBRARY)
endforeach()
mark_as_advanced(Maya_INCLUDE_DIR)

# The version number moved from one header to the other between releases of the kit.
foreach(_header MApiVersion.h MTypes.h)
  if(NOT Maya_VERSION AND EXISTS "${Maya_INCLUDE_DIR}/maya/${_header}")
    file(STRINGS "${Maya_INCLUDE_DIR}/maya/${_header}" _maya_version_line
         REGEX "^#[ \t]*define[ \t]+MAYA_API_VERSION[ \t]+[0-9]+" LIMIT_COUNT 1)
    if(_maya_version_line MATCHES "MAYA_API_VERSION[ \t]+([0-9][0-9][0-9][0-9])")
      set(Maya_VERSION "${CMAKE_MATCH_1}")
    endif()
  endif()
endforeach()

if(_maya_roots)
  list(JOIN _maya_roots ", " _maya_shown)
  set(_maya_reason "No complete developer kit below ${_maya_shown}.")
else()
  set(_maya_reason "Set MAYA_DEVKIT_LOCATION, DEVKIT_LOCATION or MAYA_LOCATION, in the environment or with -D, to the \
folder that holds Maya's include and lib folders. Or build for the headless host with -DDELVEN_BUILD_HOST=ON.")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Maya
  REQUIRED_VARS ${_maya_needed}
  VERSION_VAR Maya_VERSION
  REASON_FAILURE_MESSAGE "${_maya_reason}")

if(Maya_FOUND AND NOT TARGET Maya::Maya)
  add_library(Maya::Maya INTERFACE IMPORTED)
  target_include_directories(Maya::Maya SYSTEM INTERFACE "${Maya_INCLUDE_DIR}")
  target_link_libraries(Maya::Maya INTERFACE ${Maya_LIBRARIES})
  target_compile_definitions(Maya::Maya INTERFACE REQUIRE_IOSTREAM _BOOL)
  if(WIN32)
    target_compile_definitions(Maya::Maya INTERFACE NT_PLUGIN _WINDOWS)
  elseif(APPLE)
    target_compile_definitions(Maya::Maya INTERFACE MAC_PLUGIN OSMac_ OSMac_MachO CC_GNU_)
  else()
    target_compile_definitions(Maya::Maya INTERFACE LINUX LINUX_64 UNIX Bits64_ FUNCPROTO)
  endif()
endif()
