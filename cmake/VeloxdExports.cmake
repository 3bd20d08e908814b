# src/api/exports.txt is the one list of exported names, one a line. Everything that needs the names is made from it.

set(VELOXD_EXPORT_LIST "${PROJECT_SOURCE_DIR}/src/api/exports.txt")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${VELOXD_EXPORT_LIST}")
file(STRINGS "${VELOXD_EXPORT_LIST}" VELOXD_EXPORTS REGEX "^[A-Za-z]")

# Makes the shared library `target` export exactly the listed names.
function(veloxd_export_only_listed target)
  if(WIN32)
    veloxd_write_def(${target})
    target_sources(${target} PRIVATE "${VELOXD_DEF_FILE}")
    return()
  endif()
  list(JOIN VELOXD_EXPORTS ";\n    " names)
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "{\n  global:\n    ${names};\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}" "LINKER:--no-undefined-version")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# Other compilers make an import library of their own from the module-definition file, so it is shipped, too.
function(veloxd_write_def target)
  list(JOIN VELOXD_EXPORTS "\n  " names)
  set(file "${CMAKE_CURRENT_BINARY_DIR}/${target}.def")
  file(CONFIGURE OUTPUT "${file}" CONTENT "LIBRARY ${target}\nEXPORTS\n  ${names}\n" @ONLY)
  set(VELOXD_DEF_FILE "${file}" CACHE INTERNAL "The list of exports as other linkers read it")
endfunction()
