# Runs PROGRAM with DATA and compares what a terminal would show with EXPECTED:
# a backspace takes the character before it.
execute_process(COMMAND "${PROGRAM}" "${DATA}" OUTPUT_VARIABLE output RESULT_VARIABLE status)
string(ASCII 8 backspace)
while(output MATCHES "[^${backspace}]${backspace}")
  string(REGEX REPLACE "[^${backspace}]${backspace}" "" output "${output}")
endwhile()
file(READ "${EXPECTED}" expected)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${status}")
endif()
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} printed\n${output}\nbut ${EXPECTED} says\n${expected}")
endif()
