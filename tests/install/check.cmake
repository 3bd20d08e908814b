# Run with the variables that CMakeLists.txt passes, or with `prefix` in place of `build` to use what is installed
# there. `work` is emptied first.

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")

# Runs a command in `work`; stops with its output when it fails. What it printed is left in `output`.
function(run)
  execute_process(COMMAND ${ARGV} WORKING_DIRECTORY "${work}"
    RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE printed)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}\nended with ${result}:\n${printed}")
  endif()
  string(STRIP "${printed}" printed)
  set(output "${printed}" PARENT_SCOPE)
endfunction()

function(run_consumer program file)
  run(${emulator} "${program}${suffix}" "${file}")
  if(NOT output STREQUAL "ok")
    message(FATAL_ERROR "${program} printed \"${output}\"")
  endif()
endfunction()

if(build)
  set(prefix "${work}/prefix")
  run("${CMAKE_COMMAND}" --install "${build}" --config "${config}" --prefix "${prefix}")
endif()

# A program that uses the CMake package. It finds the library through the run path that CMake gives it; on Windows there
# is no such thing, and Wine is told where to look.
set(ENV{WINEPATH} "${prefix}/bin")
run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${work}/consumer" -G "${generator}"
  "-DCMAKE_SYSTEM_NAME=${system}" "-DCMAKE_C_COMPILER=${c_compiler}" "-DCMAKE_BUILD_TYPE=${config}" "-DCMAKE_PREFIX_PATH=${prefix}"
  "-DVELOXD_WANTED=${version}")
run("${CMAKE_COMMAND}" --build "${work}/consumer")
run_consumer("${work}/consumer/consumer" package.oxd)

# One that uses pkg-config, and a compiler as strict about the header as a user's may be.
set(ENV{PKG_CONFIG_PATH} "${prefix}/${libdir}/pkgconfig")
run("${pkg_config}" --cflags --libs "VELOxdDll = ${version}")
separate_arguments(flags UNIX_COMMAND "${output}")
run("${c_compiler}" -std=c99 -Wall -Wextra -Wpedantic -Wstrict-prototypes -Werror
  "${CMAKE_CURRENT_LIST_DIR}/consumer/main.c" -o "${work}/flags" ${flags})
set(ENV{LD_LIBRARY_PATH} "${prefix}/${libdir}")
run_consumer("${work}/flags" flags.oxd)
