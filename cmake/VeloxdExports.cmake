# A shared library exports what its list of names says, one a line. Everything that needs the names is made from such a
# list.

# Reads the list `file` into a variable, and has CMake look again when it changes.
function(veloxd_read_exports variable file)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  file(STRINGS "${file}" names REGEX "^[A-Za-z]")
  set(${variable} "${names}" PARENT_SCOPE)
endfunction()

# The version since which the exports are what they are: a program that was linked with it asks for it, and learns when it
# is started, not in the middle of its work, that it found a library without them.
set(VELOXD_SYMBOL_VERSION VELOXD_0.2)

# What the functions of a library take and return is in the debug information of the folder that defines them, where
# scripts/abi reads it. Packages leave it out.
function(veloxd_describe_interface folder)
  if(NOT WIN32)
    target_compile_options(${folder} PRIVATE -g)
  endif()
endfunction()

# Makes the shared library `target`, which has its sources, one that others link: with versions and public headers, and
# with exactly the exports that the list `exports` names.
function(veloxd_public_library target exports description)
  target_include_directories(${target} INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE CXX)
  veloxd_read_exports(names "${exports}")
  if(WIN32)
    veloxd_write_def(${target} "${names}")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Library.rc.in" ${target}.rc @ONLY)
    target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    set_target_properties(${target} PROPERTIES PREFIX "")
    return()
  endif()
  configure_file("${PROJECT_SOURCE_DIR}/cmake/VersionNote.c.in" ${target}Version.c @ONLY)
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}Version.c")
  list(JOIN names ";\n    " names)
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" CONTENT "${VELOXD_SYMBOL_VERSION} {\n  global:\n    ${names};\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}" "LINKER:--no-undefined-version")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# Other compilers make an import library of their own from the module-definition file, so it is shipped, too.
function(veloxd_write_def target names)
  list(JOIN names "\n  " names)
  set(file "${CMAKE_CURRENT_BINARY_DIR}/${target}.def")
  file(CONFIGURE OUTPUT "${file}" CONTENT "LIBRARY ${target}\nEXPORTS\n  ${names}\n" @ONLY)
  target_sources(${target} PRIVATE "${file}")
  set_property(GLOBAL APPEND PROPERTY veloxd_def_files "${file}")
endfunction()

set(VELOXD_EXPORT_LIST "${PROJECT_SOURCE_DIR}/src/api/exports.txt")
veloxd_read_exports(VELOXD_EXPORTS "${VELOXD_EXPORT_LIST}")
