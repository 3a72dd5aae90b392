# A locale with a decimal comma for the tests that run in one. Few machines have one installed, so it is compiled into the
# build folder from the sources of Debian's package `locales`. Windows and macOS bring theirs.
#
# Result: DELVEN_COMMA_LOCALE, its name, empty where there is none; DELVEN_COMMA_LOCALE_ENVIRONMENT, what a test program needs to
# run in it (tests/support/testLocale.cpp).

set(DELVEN_COMMA_LOCALE)
set(DELVEN_COMMA_LOCALE_ENVIRONMENT)
if(WIN32 OR APPLE)
  set(DELVEN_COMMA_LOCALE "de_DE.UTF-8")
else()
  set(folder "${PROJECT_BINARY_DIR}/locales")
  find_program(DELVEN_LOCALEDEF localedef)
  mark_as_advanced(DELVEN_LOCALEDEF)
  if(DELVEN_LOCALEDEF AND NOT EXISTS "${folder}/de_DE.UTF-8/LC_NUMERIC")
    file(MAKE_DIRECTORY "${folder}")
    execute_process(COMMAND "${DELVEN_LOCALEDEF}" --no-archive -i de_DE -f UTF-8 "${folder}/de_DE.UTF-8"
      OUTPUT_QUIET ERROR_QUIET)
  endif()
  if(EXISTS "${folder}/de_DE.UTF-8/LC_NUMERIC")
    set(DELVEN_COMMA_LOCALE "de_DE.UTF-8")
    list(APPEND DELVEN_COMMA_LOCALE_ENVIRONMENT "LOCPATH=${folder}")
  endif()
endif()
if(DELVEN_COMMA_LOCALE)
  list(APPEND DELVEN_COMMA_LOCALE_ENVIRONMENT "DELVEN_TEST_LOCALE=${DELVEN_COMMA_LOCALE}")
else()
  message(WARNING "No locale with a decimal comma could be made (the package `locales` has its source): the tests that run in \
one are disabled.")
endif()
