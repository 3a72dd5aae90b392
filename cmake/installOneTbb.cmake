# Part of `cmake --install`: puts the file `library` into `folder` under `name`, the name that `plugin` asks for. Links would be
# lost on the way through archives and shared folders, so it is the file itself.

if(name STREQUAL "")
  get_filename_component(name "${library}" NAME)
endif()
file(REAL_PATH "${library}" real)
file(INSTALL DESTINATION "${folder}" TYPE FILE FILES "${real}" RENAME "${name}")

if(is_apple)
  # A library that calls itself by its own place, as Homebrew's does, would be looked for there.
  execute_process(COMMAND otool -D "${library}" OUTPUT_VARIABLE told OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^.*\n" "" own_name "${told}")
  execute_process(COMMAND install_name_tool -change "${own_name}" "@rpath/${name}" "${plugin}" COMMAND_ERROR_IS_FATAL ANY)
endif()
