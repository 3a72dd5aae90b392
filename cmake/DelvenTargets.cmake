# What every target of this project shares: warnings, and the way a room of the host and a test program are declared.

add_library(delven_options INTERFACE)
if(MSVC)
  target_compile_options(delven_options INTERFACE /W4 /permissive- /utf-8 $<$<BOOL:${DELVEN_WARNINGS_AS_ERRORS}>:/WX>)
else()
  # For clang -Wconversion covers changes of sign as well; for gcc it does not in C++.
  target_compile_options(delven_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                  $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-sign-conversion>
                                                  $<$<BOOL:${DELVEN_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# For shared libraries: a name that nothing defines is an error when they are linked, as it is everywhere but with ELF.
# Sanitizers leave names of their runtime to the program.
add_library(delven_complete INTERFACE)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT DELVEN_SANITIZE)
  target_link_options(delven_complete INTERFACE "LINKER:--no-undefined")
endif()

# delven_add_room(<room> SOURCES <file>... [ROOMS <room>...] [LIBRARIES <target>...])
#
# One room of the headless host as a static library host_<room>; a room of host/api is called api_<room>. ROOMS are the
# rooms it may know; the include path is host/, so that an include names its room ("graph/node.h"). All rooms together
# make the shared library delvenhost (host/CMakeLists.txt); a test of one room links just that room.
function(delven_add_room room)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;ROOMS;LIBRARIES")
  add_library(host_${room} STATIC ${arg_SOURCES})
  target_include_directories(host_${room} PUBLIC "${PROJECT_SOURCE_DIR}/host")
  target_link_libraries(host_${room} PRIVATE delven_options)
  foreach(known IN LISTS arg_ROOMS)
    target_link_libraries(host_${room} PUBLIC host_${known})
  endforeach()
  target_link_libraries(host_${room} PUBLIC ${arg_LIBRARIES})
  set_property(GLOBAL APPEND PROPERTY DELVEN_ROOMS host_${room})
  set_property(GLOBAL APPEND PROPERTY DELVEN_ROOM_LIBRARIES ${arg_LIBRARIES})
endfunction()

# delven_add_test(<name> SOURCES <file>... [LIBRARIES <target>...] [LABELS <label>...])
#
# A GoogleTest program registered with ctest, one ctest test a program. The label "threads" has it run under
# ThreadSanitizer too, where the target delven_thread_tests builds just these programs; one that loads the plug-in
# depends on the target DELVENTools. <name>_in_comma_locale is the same program in a locale with a decimal comma, in which
# nothing may come out otherwise.
add_custom_target(delven_thread_tests)
function(delven_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;LABELS")
  add_executable(${name} ${arg_SOURCES} "${PROJECT_SOURCE_DIR}/tests/support/testLocale.cpp")
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE DELVEN_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                             DELVEN_BINARY_DIR="$<TARGET_FILE_DIR:${name}>")
  target_link_libraries(${name} PRIVATE delven_options ${arg_LIBRARIES} GTest::gtest_main)
  add_test(NAME ${name} COMMAND ${name})
  add_test(NAME ${name}_in_comma_locale COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${DELVEN_TEST_ENVIRONMENT}" LABELS "${arg_LABELS}" TIMEOUT 900
    RESOURCE_LOCK ${name})
  set_tests_properties(${name}_in_comma_locale PROPERTIES
    ENVIRONMENT "${DELVEN_TEST_ENVIRONMENT};${DELVEN_COMMA_LOCALE_ENVIRONMENT}" LABELS locale TIMEOUT 900
    RESOURCE_LOCK ${name} DISABLED "$<NOT:$<BOOL:${DELVEN_COMMA_LOCALE}>>")
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(delven_thread_tests ${name})
  endif()
endfunction()
