# Links what is shipped for other distributions of Linux than the one that builds it: from the archives of this one, so
# that the library and the tool need nothing but the C library, in its version 2.34 or later, and the compiler's libgcc_s,
# which comes with it. For Windows the compiler's options see to that.

option(VELOXD_SELF_CONTAINED "Link the C++ run-time and all other libraries into what is built" OFF)

# Makes the shared library or program `target` self-contained; the archives that follow are linked into it, those first
# that need others.
function(veloxd_link_archives target)
  foreach(name IN LISTS ARGN)
    find_library(VELOXD_ARCHIVE_${name} "lib${name}.a" REQUIRED)
    target_link_libraries(${target} PRIVATE "${VELOXD_ARCHIVE_${name}}")
  endforeach()
  target_link_options(${target} PRIVATE -static-libstdc++ LINKER:--as-needed)
  set(sources "${PROJECT_SOURCE_DIR}/packaging/python")
  target_sources(${target} PRIVATE "${sources}/OlderGlibc.c")
  get_target_property(type ${target} TYPE)
  if(type STREQUAL SHARED_LIBRARY)
    target_link_options(${target} PRIVATE LINKER:--wrap=stdout)
    target_sources(${target} PRIVATE "${sources}/StandardOutput.c")
  endif()
endfunction()

if(VELOXD_SELF_CONTAINED)
  set(Boost_USE_STATIC_LIBS ON)
endif()
