# cmake -DSOURCE_DIR=<checkout> -DWORK_DIR=<folder> -DCXX_COMPILER=<c++> -DCXX_COMPILER_ID=<GNU or Clang>
#       -P mustNotCompile.cmake
#
# Our declarations of the API are at least as strict as the host's: each faulty line of refusedCode.cmake fails to
# compile, with the error that it is about, while the control lines all compile together.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

# Every case is a function of one file, with its faulty line where FAULTY is its number, or 1000 for all. Messages name the fact
# as the file. A header that is missing ends the compiler's work, so that this fault is left out there.
set(none 0)
set(all 1000)
set(code "")
foreach(header algorithm ostream utility vector)
  string(APPEND code "#include <${header}>\n")
endforeach()
file(GLOB headers RELATIVE "${SOURCE_DIR}/host/include" "${SOURCE_DIR}/host/include/maya/*.h")
list(FILTER headers EXCLUDE REGEX "/(MApiVersion|MFnPlugin)\\.h$")
foreach(header IN LISTS headers)
  string(APPEND code "#include <${header}>\n")
endforeach()
set(count 0)
function(refuse fact parameters faulty control error)
  math(EXPR number "${count} + 1")
  set(condition "FAULTY == ${number}")
  if(NOT faulty MATCHES "^#")
    string(APPEND condition " || FAULTY == ${all}")
  endif()
  string(APPEND code "void ${fact}(${parameters}) {\n#if ${condition}\n#line 1 \"${fact}\"\n${faulty}\n"
                     "#else\n${control}\n#endif\n}\n")
  set(code "${code}" PARENT_SCOPE)
  set(count ${number} PARENT_SCOPE)
  set(fact_${number} "${fact}" PARENT_SCOPE)
  set(error_${number} "${error}" PARENT_SCOPE)
endfunction()
include("${CMAKE_CURRENT_LIST_DIR}/refusedCode.cmake")
file(WRITE "${WORK_DIR}/cases.cpp" "${code}")

set(flags -std=c++17 -fsyntax-only -Wshadow -Werror)
if(CXX_COMPILER_ID MATCHES "Clang")
  list(APPEND flags -ferror-limit=0)
endif()

# compile(<number of the faulty case, ${all} or ${none}>): leaves `status` and `output`.
function(compile faulty)
  execute_process(COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C "${CXX_COMPILER}" ${flags}
                          "-I${SOURCE_DIR}/host/include" -DFAULTY=${faulty} "${WORK_DIR}/cases.cpp"
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(status "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

compile(${none})
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the control lines do not compile:\n${output}")
endif()

# Most faults are found together. What the compiler finds inside a library's template, and what is left, is looked at
# one by one.
compile(${all})
set(together "${output}")
foreach(number RANGE 1 ${count})
  set(fact "${fact_${number}}")
  if(together MATCHES "(^|\n)${fact}:1:[0-9]+: error: [^\n]*(${error_${number}})")
    continue()
  endif()
  compile(${number})
  if(status EQUAL 0)
    message(SEND_ERROR "${fact}: compiles")
  elseif(NOT output MATCHES "error: [^\n]*(${error_${number}})")
    message(SEND_ERROR "${fact}: fails without '${error_${number}}':\n${output}")
  elseif(NOT output MATCHES "(^|[\n ])${fact}:1:")
    message(SEND_ERROR "${fact}: fails elsewhere:\n${output}")
  endif()
endforeach()
message(STATUS "${count} facts hold, or are told above")
