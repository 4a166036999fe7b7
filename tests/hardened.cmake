# Fails unless PROGRAM has its guards: it stands at a random address, its stack runs no code and is
# watched, and its tables of addresses are read only before main. READELF tells.
execute_process(COMMAND ${READELF} -hldW --dyn-syms ${PROGRAM}
  OUTPUT_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
foreach(trace
    "Type: +DYN" "FLAGS_1[^\n]* PIE" "FLAGS_1[^\n]* NOW" "GNU_RELRO" "GNU_STACK[^\n]* RW +0x"
    " __stack_chk_fail")
  if(NOT told MATCHES "${trace}")
    message(SEND_ERROR "${PROGRAM} has no trace of ${trace}")
  endif()
endforeach()

# The library's guards leave a trace only where the engine calls what they guard, so the command tells.
file(READ ${COMMANDS} commands)
string(REGEX MATCH "[^\n]*-c [^\n]*frontend/main\\.cpp\"" command "${commands}")
if(NOT command MATCHES "-D_FORTIFY_SOURCE=2")
  message(SEND_ERROR "compiled without the library's guards: ${command}")
endif()
