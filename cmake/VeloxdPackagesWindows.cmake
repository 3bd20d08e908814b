# The archive for Windows. What the DLL and the tool need is linked into them, so its licences come along.

set(CPACK_GENERATOR ZIP)
set(CPACK_STRIP_FILES OFF) # the linker has done so; doing it again would write the time into them
set(CPACK_PACKAGE_FILE_NAME "${PROJECT_NAME}-${PROJECT_VERSION}-win64")
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
list(APPEND CPACK_COMPONENTS_ALL archive)

set(packaging "${PROJECT_SOURCE_DIR}/packaging")
configure_file("${packaging}/windows/README.txt" "${PROJECT_BINARY_DIR}/README.txt" @ONLY NEWLINE_STYLE CRLF)
install(FILES "${PROJECT_BINARY_DIR}/README.txt" "${PROJECT_SOURCE_DIR}/LICENSE"
  DESTINATION . COMPONENT archive EXCLUDE_FROM_ALL)
install(FILES "${PROJECT_SOURCE_DIR}/docs/format.md" "${PROJECT_SOURCE_DIR}/docs/oxd.md"
  "${PROJECT_SOURCE_DIR}/docs/processors.md"
  DESTINATION doc COMPONENT archive EXCLUDE_FROM_ALL)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/using" "${PROJECT_SOURCE_DIR}/docs/reference" DESTINATION doc COMPONENT archive EXCLUDE_FROM_ALL)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/bindings/csharp" "${PROJECT_SOURCE_DIR}/bindings/matlab"
  DESTINATION bindings COMPONENT archive EXCLUDE_FROM_ALL)
install(DIRECTORY "${packaging}/licences" DESTINATION . COMPONENT archive EXCLUDE_FROM_ALL)

# Which versions of them are linked is known only here, where they were built.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(spdx "${PROJECT_BINARY_DIR}/${PROJECT_NAME}.spdx.json")
list(GET CMAKE_FIND_ROOT_PATH 0 libraries_for_windows)
set(pinned "${libraries_for_windows}/versions")
execute_process(COMMAND "${Python3_EXECUTABLE}" "${packaging}/windows/make_spdx.py" "${PROJECT_VERSION}" "${pinned}" "${spdx}"
  COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  "${pinned}" "${packaging}/windows/make_spdx.py" "${packaging}/windows/components.txt")
install(FILES "${spdx}" DESTINATION . COMPONENT archive EXCLUDE_FROM_ALL)
