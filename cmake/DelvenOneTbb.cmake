# oneTBB in the build for Maya. Maya 2025 has an older release of the library in its process and in its kit, under the same names of
# headers and another file name, so the module has its own headers come first and brings its own library.

# delven_one_tbb_first(<target>)
#
# oneTBB's headers come before those of the kit.
function(delven_one_tbb_first target)
  get_target_property(folders TBB::tbb INTERFACE_INCLUDE_DIRECTORIES)
  foreach(folder IN LISTS folders)
    if(folder IN_LIST CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
      # Compilers look into their own folders last, whatever they are told: links in a folder of ours lead there.
      foreach(name tbb oneapi)
        file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/oneTbb")
        file(CREATE_LINK "${folder}/${name}" "${PROJECT_BINARY_DIR}/oneTbb/${name}" SYMBOLIC)
      endforeach()
      set(folder "${PROJECT_BINARY_DIR}/oneTbb")
    endif()
    target_include_directories(${target} SYSTEM BEFORE PRIVATE "${folder}")
  endforeach()
endfunction()

# delven_install_one_tbb(<plug-in> <folder of the plug-in> <folder of the library>)
#
# Installs the library and has the installed plug-in find it there, wherever both are moved: by a path relative to the plug-in, and
# before any other copy. On Windows a path in the plug-in does not exist; the .mod file names the folder. The folders are
# relative to the prefix, side by side.
function(delven_install_one_tbb plugin plugin_folder library_folder)
  get_target_property(type TBB::tbb TYPE)
  if(type STREQUAL "STATIC_LIBRARY")
    return()
  endif()
  set(name "$<TARGET_FILE_NAME:TBB::tbb>")
  if(NOT WIN32)
    # The name that the plug-in asks for; the file itself may have a longer one.
    set(name "$<TARGET_SONAME_FILE_NAME:TBB::tbb>")
    cmake_path(RELATIVE_PATH library_folder BASE_DIRECTORY "${plugin_folder}" OUTPUT_VARIABLE way)
    set_target_properties(${plugin} PROPERTIES INSTALL_RPATH "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>/${way}")
  endif()
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # A run path of the older kind goes before LD_LIBRARY_PATH, which Maya sets; linkers differ in which kind they write.
    target_link_options(${plugin} PRIVATE "LINKER:--disable-new-dtags")
  endif()
  install(CODE "
    set(library \"$<TARGET_FILE:TBB::tbb>\")
    set(name \"${name}\")
    set(folder \"\${CMAKE_INSTALL_PREFIX}/${library_folder}\")
    set(plugin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${plugin_folder}/$<TARGET_FILE_NAME:${plugin}>\")
    set(is_apple \"$<PLATFORM_ID:Darwin>\")")
  install(SCRIPT "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/installOneTbb.cmake")
endfunction()
