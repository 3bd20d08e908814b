# What `cpack` makes, in the folder packages/ of a build: a Debian package of each component, or for Windows one archive
# of them all. Files that are only for packages belong to no other installation (EXCLUDE_FROM_ALL).

set(CPACK_PACKAGE_NAME "${PROJECT_NAME}")
set(CPACK_PACKAGE_VENDOR "The VELOxd developers")
set(CPACK_PACKAGE_CONTACT "VELOxd developers <veloxd@localhost>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL library development)
if(VELOXD_TOOLS)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()

if(WIN32)
  include(VeloxdPackagesWindows)
else()
  include(VeloxdPackagesDebian)
endif()
include(CPack)
