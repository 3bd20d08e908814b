# The Debian package of the Python package. Python sources are for every machine and every version of Python 3; byte code
# is made where they are installed. What names the package and its entry points to others is made of pyproject.toml,
# which takes a Python that reads it.

find_package(Python3 3.11 COMPONENTS Interpreter QUIET)
if(NOT Python3_FOUND)
  message(STATUS "There will be no package of the Python package: making it takes Python 3.11.")
  return()
endif()
list(APPEND CPACK_COMPONENTS_ALL python)

veloxd_debian_package(python python3-veloxd python
"Python package for .oxd files of scanning probe microscopes
Groups and channels are mappings, channels read like arrays of NumPy, and files
open as labelled arrays of xarray. Pictures are true to scale, with labelled
axes, and a file is saved in one step.")

set(pyproject "${PROJECT_SOURCE_DIR}/pyproject.toml")
set(dist_info "${PROJECT_BINARY_DIR}/veloxd-${PROJECT_VERSION}.dist-info")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${pyproject}")
execute_process(COMMAND_ERROR_IS_FATAL ANY COMMAND
  "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/packaging/python/dist_info.py" "${pyproject}" ${PROJECT_VERSION}
  "${dist_info}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/python/src/veloxd" "${dist_info}"
  DESTINATION lib/python3/dist-packages COMPONENT python EXCLUDE_FROM_ALL PATTERN __pycache__ EXCLUDE)

set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
  "${library_package} (>= ${PROJECT_VERSION}), python3 (>= 3.9), python3-numpy (>= 1:1.22)")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-matplotlib (>= 3.6), python3-xarray (>= 2023.01)")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-dask, python3-pint, python3-scipy, veloxd-tools")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  "${PROJECT_SOURCE_DIR}/packaging/debian/python/postinst" "${PROJECT_SOURCE_DIR}/packaging/debian/python/prerm")
