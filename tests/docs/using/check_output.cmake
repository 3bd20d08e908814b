# Runs a program of a document on the file of another, and compares what it prints with what the document says.

include("${CMAKE_CURRENT_LIST_DIR}/../extract.cmake")

extract_block("${document}" text shown)
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
execute_process(COMMAND ${emulator} "${sample_program}" sample.oxd WORKING_DIRECTORY "${work}"
  COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${emulator} "${program}" ${arguments} WORKING_DIRECTORY "${work}"
  OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\r\n" "\n" printed "${printed}")
if(NOT printed STREQUAL shown)
  message(FATAL_ERROR "The program prints:\n${printed}")
endif()
