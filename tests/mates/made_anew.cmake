# Fails unless the program MAKER prints just what FILE holds.
execute_process(COMMAND ${MAKER} OUTPUT_VARIABLE made COMMAND_ERROR_IS_FATAL ANY)
file(READ ${FILE} held)
if(NOT made STREQUAL held)
  message(FATAL_ERROR "${FILE} is not what ${MAKER} prints")
endif()
