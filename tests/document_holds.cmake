# Fails unless DOCUMENT holds all that TOOL prints, word for word.
execute_process(COMMAND ${TOOL} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${DOCUMENT} document)
string(FIND "${document}" "${printed}" where)
if(where EQUAL -1)
  message(FATAL_ERROR "${DOCUMENT} must hold what ${TOOL} prints:\n${printed}")
endif()
