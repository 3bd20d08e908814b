# src/api/exports.txt is the one list of exported names, one a line. Everything that needs the names is made from it.

set(VELOXD_EXPORT_LIST "${PROJECT_SOURCE_DIR}/src/api/exports.txt")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${VELOXD_EXPORT_LIST}")
file(STRINGS "${VELOXD_EXPORT_LIST}" VELOXD_EXPORTS REGEX "^[A-Za-z]")

# Makes the shared library `target` export exactly the listed names.
function(veloxd_export_only_listed target)
  list(JOIN VELOXD_EXPORTS ";\n    " names)
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "{\n  global:\n    ${names};\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}" "LINKER:--no-undefined-version")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()
