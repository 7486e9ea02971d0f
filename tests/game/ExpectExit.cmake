# Runs TOOL with ARGS (separated by |) and checks its exit code against
# EXPECT. A failing run (code 2 or 3) must print nothing on standard output
# and exactly one line on standard error; a run with code 0 nothing on
# standard error.
string(REPLACE "|" ";" arguments "${ARGS}")
execute_process(COMMAND ${TOOL} ${arguments}
  RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT code STREQUAL EXPECT)
  message(FATAL_ERROR "exit code ${code}, expected ${EXPECT}; stderr: ${err}")
endif()
if(EXPECT STREQUAL "0")
  if(NOT err STREQUAL "")
    message(FATAL_ERROR "unexpected error output: ${err}")
  endif()
  return()
endif()
if(NOT out STREQUAL "")
  message(FATAL_ERROR "unexpected standard output: ${out}")
endif()
string(REGEX MATCHALL "\n" ends "${err}")
list(LENGTH ends lines)
if(NOT lines EQUAL 1 OR NOT err MATCHES "\n$" OR err STREQUAL "\n")
  message(FATAL_ERROR "standard error is not one line: [${err}]")
endif()
message(STATUS "exit ${code}: ${err}")
