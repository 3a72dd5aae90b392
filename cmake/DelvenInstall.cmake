# `cmake --install`: for Maya, a folder with a .mod file that can be dropped into a modules path; for the headless host,
# a bin folder that can be put anywhere.
if(DELVEN_BUILD_HOST)
  set_target_properties(DELVENTools delvenhost delvenbatch PROPERTIES INSTALL_RPATH "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>")
  install(TARGETS DELVENTools delvenhost delvenbatch
    RUNTIME DESTINATION bin
    LIBRARY DESTINATION bin
    ARCHIVE DESTINATION lib)
  # The host finds the kit's procedures in the folder beside its own.
  install(DIRECTORY module/scripts DESTINATION .)
  install(FILES LICENSE README.md DESTINATION share/doc/DELVENTools)
  if(TARGET delven_python)
    install(TARGETS delven_python LIBRARY DESTINATION python/delven)
    install(DIRECTORY python/delven python/headless DESTINATION python PATTERN __pycache__ EXCLUDE)
    install(PROGRAMS python/delvenpy DESTINATION bin)
  endif()
else()
  set(library_folder lib)
  set(DELVEN_MOD_MORE)
  if(WIN32)
    set(DELVEN_MOD_PLATFORM win64)
    set(library_folder bin)
    set(DELVEN_MOD_MORE "\nPATH +:= bin")
  elseif(APPLE)
    set(DELVEN_MOD_PLATFORM mac)
  else()
    set(DELVEN_MOD_PLATFORM linux)
  endif()
  configure_file(cmake/DELVENTools.mod.in DELVENTools.mod @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/DELVENTools.mod" DESTINATION .)
  install(TARGETS DELVENTools LIBRARY DESTINATION DELVENTools/plug-ins)
  delven_install_one_tbb(DELVENTools DELVENTools/plug-ins DELVENTools/${library_folder})
  # Maya finds the procedures in the folder scripts of a module by itself.
  install(DIRECTORY module/scripts DESTINATION DELVENTools)
  # With all that README.md and the pages refer to.
  install(FILES LICENSE README.md CONTRIBUTING.md DESTINATION DELVENTools)
  install(DIRECTORY docs examples DESTINATION DELVENTools PATTERN __pycache__ EXCLUDE)
endif()
