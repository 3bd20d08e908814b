# Takes the variables that CMakeLists.txt passes; `prefix` in place of `build` uses an installed library. The folder
# `work` is emptied first.

file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")

# Runs a command in `work` and stores its output in `output`. Stops with the output if the command fails.
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

# A program that uses the CMake package. It finds the library through the run path that CMake sets; Windows has no run
# paths, so Wine is told where to look.
set(ENV{WINEPATH} "${prefix}/bin")
run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${work}/consumer" -G "${generator}"
  "-DCMAKE_SYSTEM_NAME=${system}" "-DCMAKE_C_COMPILER=${c_compiler}" "-DCMAKE_BUILD_TYPE=${config}" "-DCMAKE_PREFIX_PATH=${prefix}"
  "-DVELOXD_WANTED=${version}")
run("${CMAKE_COMMAND}" --build "${work}/consumer")
run_consumer("${work}/consumer/consumer" package.oxd)

# A program that uses pkg-config, compiled as strictly as a user may compile it.
set(ENV{PKG_CONFIG_PATH} "${prefix}/${libdir}/pkgconfig")
run("${pkg_config}" --cflags --libs "VELOxdDll = ${version}")
separate_arguments(flags UNIX_COMMAND "${output}")
run("${c_compiler}" -std=c99 -Wall -Wextra -Wpedantic -Wstrict-prototypes -Werror
  "${CMAKE_CURRENT_LIST_DIR}/consumer/main.c" -o "${work}/flags" ${flags})
set(ENV{LD_LIBRARY_PATH} "${prefix}/${libdir}")
run_consumer("${work}/flags" flags.oxd)
