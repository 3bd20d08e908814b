# Compares the file that the program in the format document writes with the bytes that the document shows: the header as
# text, and everything behind it as a hex dump.

include("${CMAKE_CURRENT_LIST_DIR}/extract.cmake")

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
execute_process(COMMAND ${emulator} "${sample_program}" sample.oxd WORKING_DIRECTORY "${work}"
  COMMAND_ERROR_IS_FATAL ANY)
file(READ "${work}/sample.oxd" written HEX)

extract_block("${document}" text header)
string(REPLACE "\n" "\r\n" header "${header}")
string(HEX "${header}" shown)

# Each line of the dump has an offset, bytes and their meaning, separated by two or more blanks. Offsets must be right.
extract_block("${document}" hexdump dump)
string(REGEX MATCHALL "[^\n]+" dump "${dump}")
foreach(line IN LISTS dump)
  if(NOT line MATCHES "^([0-9a-f]+)  ([0-9a-f ]+)(  .*)?$")
    message(FATAL_ERROR "Not a line of a hex dump: ${line}")
  endif()
  math(EXPR offset "0x${CMAKE_MATCH_1}")
  string(REPLACE " " "" bytes "${CMAKE_MATCH_2}")
  string(LENGTH "${shown}" digits)
  math(EXPR expected "${digits} / 2")
  if(NOT offset EQUAL expected)
    message(FATAL_ERROR "The dump shows offset ${offset} where ${expected} comes next: ${line}")
  endif()
  string(APPEND shown "${bytes}")
endforeach()

if(NOT shown STREQUAL written)
  message(FATAL_ERROR "The library does not write the bytes that ${document} shows.\nshown:   ${shown}\nwritten: ${written}")
endif()
