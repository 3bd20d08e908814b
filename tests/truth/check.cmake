# Compares the tables in the document and the chart with what the program prints.

function(expect_shown what made shown)
  if(NOT made STREQUAL shown)
    message(FATAL_ERROR "${what} is out of date: run scripts/accuracy")
  endif()
endfunction()

# What the program prints, with plain line ends.
function(run result)
  execute_process(COMMAND ${emulator} "${program}" ${ARGN} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\r\n" "\n" printed "${printed}")
  set(${result} "${printed}" PARENT_SCOPE)
endfunction()

run(tables)
file(READ "${document}" page)
string(REGEX REPLACE ".*<!-- accuracy -->\n(.*)<!-- /accuracy -->.*" "\\1" shown "${page}")
expect_shown("${document}" "${tables}" "${shown}")

run(drawn chart)
file(READ "${chart}" shown)
expect_shown("${chart}" "${drawn}" "${shown}")
