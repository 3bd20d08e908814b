# Runs the program in the README on a small file, and on a file that does not exist.

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
execute_process(COMMAND ${emulator} "${sample_program}" old.oxd WORKING_DIRECTORY "${work}" COMMAND_ERROR_IS_FATAL ANY)
file(READ "${work}/old.oxd" before HEX)

function(run old)
  execute_process(COMMAND ${emulator} "${program}" ${old} new.oxd WORKING_DIRECTORY "${work}"
    RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE error)
  set(result "${result}" PARENT_SCOPE)
  set(printed "${printed}" PARENT_SCOPE)
  set(error "${error}" PARENT_SCOPE)
endfunction()

run(old.oxd)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The example failed: ${result} ${error}")
endif()
if(NOT printed MATCHES "^0 [^\n]+\n1 [^\n]+\n2 [^\n]+\n3 [^\n]+\n$")
  message(FATAL_ERROR "Not the four points of a line: ${printed}")
endif()

file(READ "${work}/old.oxd" after HEX)
if(NOT after STREQUAL before)
  message(FATAL_ERROR "The program changed the old file.")
endif()
file(STRINGS "${work}/new.oxd" unit REGEX "^Dim2Unit=")
if(NOT unit STREQUAL "Dim2Unit=V")
  message(FATAL_ERROR "The new file does not have the new unit: ${unit}")
endif()

run(missing.oxd)
if(NOT result EQUAL 1 OR NOT error MATCHES "The specified file was not found" OR NOT printed STREQUAL "")
  message(FATAL_ERROR "A missing file went unnoticed: ${result} ${printed}${error}")
endif()
