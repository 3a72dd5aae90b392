# cmake -DNM=<nm> -DPLUGIN=<file> -P pluginExports.cmake
#
# The plug-in shows what the host looks for, two entry points and what the plug-in was built with, and nothing else: a name of
# ours that leaks could take the place of another plug-in's in the same process.
cmake_minimum_required(VERSION 3.25)

get_filename_component(name "${PLUGIN}" NAME)
if(NOT name MATCHES "^DELVENTools\\.(so|mll|bundle)$")
  message(FATAL_ERROR "the plug-in is called ${name}")
endif()

execute_process(COMMAND "${NM}" --dynamic --defined-only --demangle --format=posix "${PLUGIN}"
  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
set(names)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "[( ].*" "" symbol "${line}")
  list(APPEND names "${symbol}")
endforeach()
list(SORT names)
if(NOT names STREQUAL "ADSK_PLUGIN_SIGNATURE;MApiVersion;initializePlugin;uninitializePlugin")
  message(FATAL_ERROR "visible names of ${PLUGIN}:\n${listing}")
endif()
