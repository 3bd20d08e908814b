# What `cmake --install` puts where, with a CMake package and a pkg-config file for those who build against it. The
# components are those of the packages: library, development, tool; documentation stays out of them.

include(CMakePackageConfigHelpers)

install(TARGETS VELOxdDll VELOxdCurves VELOxdBlocks EXPORT VELOxdDllTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES "${PROJECT_SOURCE_DIR}/include/VELOxdDll.h" "${PROJECT_SOURCE_DIR}/include/veloxd_curves.h"
  "${PROJECT_SOURCE_DIR}/include/veloxd_blocks.h"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/README.md"
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
get_property(def_files GLOBAL PROPERTY veloxd_def_files)
if(def_files)
  install(FILES ${def_files} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()
if(VELOXD_TOOLS)
  install(TARGETS oxd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
endif()

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VELOxdDll")
install(EXPORT VELOxdDllTargets NAMESPACE VELOxdDll:: DESTINATION "${package_dir}" COMPONENT development)
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/VELOxdDllConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/VELOxdDllConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VELOxdDllConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VELOxdDllConfig.cmake" "${PROJECT_BINARY_DIR}/VELOxdDllConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT development)

# Relative to the file itself, so that what was installed may be moved.
file(RELATIVE_PATH prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
set(description_VELOxdDll "${PROJECT_DESCRIPTION}")
set(description_VELOxdCurves "Analyses force curves of scanning probe microscopes")
set(description_VELOxdBlocks "Reads and writes many lines of .oxd files in one call")
set(requires_VELOxdBlocks VELOxdDll)
foreach(library IN ITEMS VELOxdDll VELOxdCurves VELOxdBlocks)
  set(description "${description_${library}}")
  set(requires "${requires_${library}}")
  configure_file("${CMAKE_CURRENT_LIST_DIR}/Library.pc.in" "${PROJECT_BINARY_DIR}/${library}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${library}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endforeach()
