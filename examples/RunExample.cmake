# Runs the example program as a test: it must succeed, and the folder of log
# files it leaves for the reader (it prints their paths) is removed after.
# usage: cmake -DEXAMPLE=path/to/vq0300-example -P RunExample.cmake
execute_process(COMMAND "${EXAMPLE}" OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
message("${output}${errors}")
string(REGEX MATCH "channel log: ([^\n]*)/messages\\.log" _ "${output}")
set(logs "${CMAKE_MATCH_1}")
if(logs MATCHES "^/tmp/vq0300-example-[^/]+$")
  file(REMOVE_RECURSE "${logs}")
endif()
if(NOT result EQUAL 0)
  message(FATAL_ERROR "vq0300-example ended with ${result}")
endif()
