# Compares the page of findings with what the table of rules makes.

execute_process(COMMAND ${emulator} "${program}" OUTPUT_VARIABLE made COMMAND_ERROR_IS_FATAL ANY)
file(READ "${document}" shown)
string(REPLACE "\r\n" "\n" made "${made}")
string(REPLACE "\r\n" "\n" shown "${shown}")
if(NOT made STREQUAL shown)
  message(FATAL_ERROR "${document} is out of date: run scripts/findings")
endif()
