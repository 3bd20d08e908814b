# What the packages have beside programs and libraries: manual pages, what makes shells complete command lines, documents,
# and what tells a desktop of .oxd files. Pages and completions are made by the tool that is packaged and of the
# documents, so that they say what it does.

find_program(VELOXD_LOWDOWN lowdown)
find_package(Python3 3.9 COMPONENTS Interpreter QUIET)
if(NOT VELOXD_TOOLS OR NOT VELOXD_LOWDOWN OR NOT Python3_FOUND OR CMAKE_CROSSCOMPILING)
  message(STATUS "There will be no manual pages: making them takes the tool, lowdown and Python 3.")
  return()
endif()

set(pages "${PROJECT_BINARY_DIR}/manual")
set(completions "${PROJECT_BINARY_DIR}/completions")
set(make_pages "${PROJECT_SOURCE_DIR}/packaging/manual/make_pages.py")
file(GLOB written_for_pages CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/using/c*.md" "${PROJECT_SOURCE_DIR}/include/*.h"
  "${PROJECT_SOURCE_DIR}/scripts/interface/*.py")
add_custom_command(OUTPUT "${pages}/made"
  COMMAND "${CMAKE_COMMAND}" -E rm -rf "${pages}"
  COMMAND "${Python3_EXECUTABLE}" "${make_pages}" "$<TARGET_FILE:oxd>" "${PROJECT_SOURCE_DIR}" ${PROJECT_VERSION}
    "${pages}"
  COMMAND find "${pages}" -type f -exec gzip -9 --no-name {} +
  COMMAND "${CMAKE_COMMAND}" -E make_directory "${completions}"
  COMMAND $<TARGET_FILE:oxd> completion bash > "${completions}/oxd"
  COMMAND $<TARGET_FILE:oxd> completion zsh > "${completions}/_oxd"
  COMMAND $<TARGET_FILE:oxd> completion fish > "${completions}/oxd.fish"
  COMMAND "${CMAKE_COMMAND}" -E touch "${pages}/made"
  DEPENDS oxd "${make_pages}" "${PROJECT_SOURCE_DIR}/docs/oxd.md" "${PROJECT_SOURCE_DIR}/docs/format.md"
    ${written_for_pages}
  COMMENT "Making manual pages and completions" VERBATIM)

# The folder of documents `name` with copies of what follows, whose links lead to what is in it or are none. Sets the
# list `documents`.
set(documents "")
function(veloxd_documents name)
  set(copy "${PROJECT_SOURCE_DIR}/packaging/manual/copy_documents.py")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/docs/*" "${PROJECT_SOURCE_DIR}/bindings/*" "${PROJECT_SOURCE_DIR}/*.md")
  list(FILTER sources EXCLUDE REGEX "/(node_modules|build)/")
  set(made "${PROJECT_BINARY_DIR}/documents/${name}.made")
  add_custom_command(OUTPUT "${made}"
    COMMAND "${Python3_EXECUTABLE}" "${copy}" "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/documents/${name}" ${ARGN}
    COMMAND "${CMAKE_COMMAND}" -E touch "${made}"
    DEPENDS "${copy}" ${sources} VERBATIM)
  set(documents ${documents} "${made}" PARENT_SCOPE)
endfunction()
veloxd_documents(development README.md docs bindings)
veloxd_documents(tool docs/oxd.md docs/findings.md docs/processors.md docs/viewer.md docs/format.md docs/images docs/schema)
veloxd_documents(python docs/python docs/images docs/archive.md)
add_custom_target(manual ALL DEPENDS "${pages}/made" ${documents})
install(DIRECTORY "${PROJECT_BINARY_DIR}/documents/development/"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/libveloxddll-dev" COMPONENT development EXCLUDE_FROM_ALL)
install(DIRECTORY "${PROJECT_BINARY_DIR}/documents/tool/docs/"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/veloxd-tools" COMPONENT tool EXCLUDE_FROM_ALL)
install(DIRECTORY "${PROJECT_BINARY_DIR}/documents/python/docs/"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/python3-veloxd" COMPONENT python EXCLUDE_FROM_ALL)

# File managers know .oxd files, and draw their first channel.
install(FILES "${PROJECT_SOURCE_DIR}/packaging/desktop/veloxd.xml"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/mime/packages" COMPONENT tool EXCLUDE_FROM_ALL)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/desktop/magic"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/veloxd" COMPONENT tool EXCLUDE_FROM_ALL)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/desktop/veloxd.thumbnailer"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/thumbnailers" COMPONENT tool EXCLUDE_FROM_ALL)

set(share "${CMAKE_INSTALL_DATAROOTDIR}")
install(DIRECTORY "${pages}/" DESTINATION "${share}/man/man1" COMPONENT tool EXCLUDE_FROM_ALL
  FILES_MATCHING PATTERN "*.1.gz")
install(DIRECTORY "${pages}/" DESTINATION "${share}/man/man5" COMPONENT tool EXCLUDE_FROM_ALL
  FILES_MATCHING PATTERN "*.5.gz")
install(DIRECTORY "${pages}/" DESTINATION "${share}/man/man3" COMPONENT development EXCLUDE_FROM_ALL
  FILES_MATCHING PATTERN "*.3.gz")
install(FILES "${completions}/oxd"
  DESTINATION "${share}/bash-completion/completions" COMPONENT tool EXCLUDE_FROM_ALL)
install(FILES "${completions}/_oxd" DESTINATION "${share}/zsh/vendor-completions" COMPONENT tool EXCLUDE_FROM_ALL)
install(FILES "${completions}/oxd.fish"
  DESTINATION "${share}/fish/vendor_completions.d" COMPONENT tool EXCLUDE_FROM_ALL)
