# The library exports the listed names, each with its version, and nothing else, and the header declares just these,
# behind the word `api`. What a Windows library needs is part of every Windows from 8 on, or shipped `beside` it, and what
# is shipped does not tell where it was built.

# What the inspection of a file printed that matches `pattern` of one group: the texts of that group, sorted.
function(inspect result pattern)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "${pattern}" found "${printed}")
  list(TRANSFORM found REPLACE "${pattern}" "\\1")
  list(SORT found)
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

function(expect_listed what)
  if(NOT ARGN STREQUAL listed)
    message(FATAL_ERROR "${what}: ${ARGN}\nlisted: ${listed}")
  endif()
endfunction()

file(STRINGS "${list}" listed REGEX "^[A-Za-z]")
list(SORT listed)

if(library MATCHES "\\.dll$")
  inspect(exported "\t\\[ *[0-9]+\\] ([A-Za-z_]+)\n" "${objdump}" -p "${library}")
  inspect(imported "DLL Name: ([^\n]+)" "${objdump}" -p "${library}")
  list(REMOVE_ITEM imported KERNEL32.dll api-ms-win-core-synch-l1-2-0.dll msvcrt.dll ${beside})
  if(imported)
    message(FATAL_ERROR "not part of every Windows: ${imported}")
  endif()
  # Windows may load it anywhere in 64 bits, and runs no data; and no clock makes two builds differ.
  foreach(file IN LISTS library tool)
    inspect(marks "\t(HIGH_ENTROPY_VA|DYNAMIC_BASE|NX_COMPAT)\n" "${objdump}" -p "${file}")
    inspect(time "\nTime/Date[ \t]+([^\n]+)" "${objdump}" -p "${file}")
    if(NOT marks STREQUAL "DYNAMIC_BASE;HIGH_ENTROPY_VA;NX_COMPAT" OR NOT time MATCHES " 1970")
      message(FATAL_ERROR "${file}: ${marks}, of ${time}")
    endif()
  endforeach()
  # The libraries that are linked in are built below the source root, too.
  string(HEX "${source_root}" path)
  foreach(file IN LISTS library tool)
    file(READ "${file}" bytes HEX)
    string(FIND "${bytes}" "${path}" found)
    if(NOT found EQUAL -1)
      message(FATAL_ERROR "${file} holds the path ${source_root}")
    endif()
  endforeach()
else()
  # The names with their version, which is a symbol itself; some programs give that one a version, too.
  inspect(exported "[^\n]* ([^ \n]+)\n" "${nm}" -D --defined-only "${library}")
  list(TRANSFORM exported REPLACE "^([A-Za-z_]+)$" "\\1 without a version")
  list(TRANSFORM exported REPLACE "@@${version}$" "")
  list(REMOVE_ITEM exported "${version}")
endif()
expect_listed(exported ${exported})

file(STRINGS "${header}" declared REGEX "^${api} ")
list(TRANSFORM declared REPLACE "^${api} [a-z0-9_* ]*[ *]([A-Za-z_]+)\\(.*" "\\1")
list(SORT declared)
expect_listed(declared ${declared})
