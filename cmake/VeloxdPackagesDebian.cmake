# The Debian packages: the library, what is needed to build against it, the tool, and the Python package.

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE veloxd)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(library_package "libveloxddll${PROJECT_VERSION_MAJOR}")

# Packages of the same version have a number of their own, which their changelog gives.
set(changelog "${PROJECT_SOURCE_DIR}/packaging/debian/changelog")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${changelog}")
file(STRINGS "${changelog}" newest_entry LIMIT_COUNT 1)
if(NOT newest_entry MATCHES "\\(${PROJECT_VERSION}-([0-9]+)\\)")
  message(FATAL_ERROR "packaging/debian/changelog does not begin with version ${PROJECT_VERSION}: ${newest_entry}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(debian_version "${PROJECT_VERSION}-${CMAKE_MATCH_1}")
execute_process(COMMAND gzip -9 --no-name --stdout "${changelog}"
  OUTPUT_FILE "${PROJECT_BINARY_DIR}/changelog.Debian.gz")
execute_process(COMMAND gzip -9 --no-name --stdout "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  OUTPUT_FILE "${PROJECT_BINARY_DIR}/changelog.gz")

# Each description brings its own first line.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

# Describes the package `name` that the component becomes. It gets the documents that every package has, and those that
# follow. The variable notices_<component> names the works of which headers are compiled into it: their licences ask for
# their text to be in its copyright file, too.
function(veloxd_debian_package component name section description)
  string(TOUPPER "${component}" upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME "${name}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
  set(documents DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}" COMPONENT ${component} EXCLUDE_FROM_ALL)
  file(READ "${PROJECT_SOURCE_DIR}/LICENSE" copyright)
  foreach(work IN LISTS notices_${component})
    set(notice "${PROJECT_SOURCE_DIR}/packaging/licences/${work}.txt")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${notice}")
    file(READ "${notice}" text)
    string(APPEND copyright "\n\n${text}")
  endforeach()
  file(WRITE "${PROJECT_BINARY_DIR}/copyright/${component}" "${copyright}")
  install(FILES "${PROJECT_SOURCE_DIR}/packaging/debian/overrides/${name}"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides" COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES "${PROJECT_BINARY_DIR}/copyright/${component}" RENAME copyright ${documents})
  install(FILES "${PROJECT_BINARY_DIR}/changelog.Debian.gz" "${PROJECT_BINARY_DIR}/changelog.gz" ${ARGN} ${documents})
endfunction()

veloxd_debian_package(library ${library_package} libs
"library for .oxd files of scanning probe microscopes
It reads, edits and writes the measurement files of a scanning probe
microscope: images and curves as numbers in physical units, with the names and
scales of their axes and the settings of the measurement. A second library in
it derives slope, adhesion and indentation from force curves, and a third reads
many lines in one call.")
veloxd_debian_package(development libveloxddll-dev libdevel
"library for .oxd files of scanning probe microscopes - development files
What it takes to build programs that read, edit and write .oxd files, or that
analyse force curves: C headers, which describe every function, a CMake
package, files for pkg-config, and documents with examples in six languages.")
set(notices_tool CLI11 nlohmann-json)
if(VELOXD_VIEWER)
  list(APPEND notices_tool uPlot)
endif()
veloxd_debian_package(tool veloxd-tools science
"command-line tool for .oxd files of scanning probe microscopes
The tool oxd shows what is in a measurement file, exports its images and curves
as tables and pictures, corrects samples, and changes settings.")
# The library's own dependencies are looked up, and so are those of the tool but for the one on the library: where that
# is built, it belongs to no package yet. It may be newer than the tool, as its interface is only added to.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
get_target_property(library_folder VELOxdDll BINARY_DIR)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${library_folder}")
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library_package} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS fonts-noto-cjk) # for pictures of channels with names in these scripts
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${debian_version})")

# The packages of other programs learn from this which version of the library they need.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# The cache of the dynamic linker is to be renewed after an installation. CPack adds scripts to the same effect.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")

include(VeloxdPackagesManual)
include(VeloxdPackagesPython)
