# Runs the program of one page as the index of the pages describes it. Programs that load the library by its name find it
# in `library_folder`.

include("${CMAKE_CURRENT_LIST_DIR}/../extract.cmake")
set(ENV{LD_LIBRARY_PATH} "${library_folder}:$ENV{LD_LIBRARY_PATH}")

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
execute_process(COMMAND ${emulator} "${sample_program}" old.oxd WORKING_DIRECTORY "${work}"
  COMMAND_ERROR_IS_FATAL ANY)
file(READ "${work}/old.oxd" before HEX)

function(run old new)
  execute_process(COMMAND ${emulator} ${interpreter} "${program}" ${old} ${new} WORKING_DIRECTORY "${work}"
    RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE error)
  string(REPLACE "\r\n" "\n" printed "${printed}")
  set(result "${result}" PARENT_SCOPE)
  set(printed "${printed}" PARENT_SCOPE)
  set(error "${error}" PARENT_SCOPE)
endfunction()

extract_block("${index}" text shown)
run(old.oxd new.oxd)
if(NOT result EQUAL 0 OR NOT printed STREQUAL shown)
  message(FATAL_ERROR "Ended with ${result}: ${error}\nshown:\n${shown}\nprinted:\n${printed}")
endif()

# Only the group's name changes, in two places: the group and the frame of its channel.
string(HEX "ForwardScan" old_name)
string(HEX "Scan at 25 °C" new_name)
string(REPLACE "${old_name}" "${new_name}" expected "${before}")
file(READ "${work}/new.oxd" written HEX)
if(NOT written STREQUAL expected)
  message(FATAL_ERROR "expected: ${expected}\nwritten:  ${written}")
endif()
file(READ "${work}/old.oxd" after HEX)
if(NOT after STREQUAL before)
  message(FATAL_ERROR "The program changed the old file.")
endif()

# A failure ends the program with the stored error, and nothing is printed about a missing file.
run(missing.oxd unused.oxd)
if(NOT result EQUAL 1 OR NOT error MATCHES "The specified file was not found|No such file" OR NOT printed STREQUAL "")
  message(FATAL_ERROR "A missing file went unnoticed: ${result} ${printed}${error}")
endif()
run(old.oxd missing/new.oxd)
if(NOT result EQUAL 1 OR NOT error MATCHES "missing/new.oxd")
  message(FATAL_ERROR "A failure to save went unnoticed: ${result} ${error}")
endif()
