# The ways we build beside release and debug: sanitizers, and a compiler cache where there is one.

set(DELVEN_SANITIZE "" CACHE STRING "Sanitizers to build everything with, as -fsanitize takes them: address,undefined or thread")
option(DELVEN_COVERAGE "Count which lines and branches of source/ the tests reach" OFF)
option(DELVEN_WARNINGS_AS_ERRORS "Stop at a warning in our own code" ON)

if(DELVEN_SANITIZE)
  add_compile_options(-fsanitize=${DELVEN_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${DELVEN_SANITIZE})
  if(DELVEN_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=all)
  endif()
endif()

# How the sanitizers report, for every test: each finding fails the test.
set(DELVEN_TEST_ENVIRONMENT
    "ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "TSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/tsan.supp:exitcode=66:second_deadlock_stack=1")

find_program(DELVEN_CCACHE ccache)
if(DELVEN_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # Relative paths let two checkouts share what was compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND};-E;env;CCACHE_BASEDIR=${PROJECT_SOURCE_DIR};CCACHE_NOHASHDIR=1;${DELVEN_CCACHE}")
endif()
