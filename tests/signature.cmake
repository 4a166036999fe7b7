# Fails unless the nodes that BENCH counts over every STEP-th position equal the recorded ones. This is
# a tripwire: it tells that the search has changed, not which of the two is right.
file(STRINGS ${RECORD} records REGEX "^${STEP} ")
string(REGEX REPLACE "^[0-9]+ ([0-9]+).*" "\\1" recorded "${records}")
execute_process(COMMAND ${BENCH} ${STEP} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
if(NOT printed MATCHES "\n([0-9]+) nodes [0-9]+ nps\n$")
  message(FATAL_ERROR "no signature in:\n${printed}")
endif()
if(NOT CMAKE_MATCH_1 STREQUAL recorded)
  message(FATAL_ERROR "signature ${CMAKE_MATCH_1}, recorded ${recorded}\n${printed}")
endif()
message(STATUS "signature ${recorded}")
