# One object library per folder, so that tests can link what a product hides. What a folder LINKS decides what it may
# include: scripts/hygiene compares both.
#
# The folders of a product are below one that sets
#   VELOXD_PRODUCT        its name: the property <name>_folders lists its object libraries, from the bottom up
#   VELOXD_INCLUDE_ROOT   where the names of its headers begin

# Makes the object library `name` from the SOURCES in the current folder.
function(veloxd_folder name)
  cmake_parse_arguments(PARSE_ARGV 1 folder "" "" "SOURCES;LINKS")
  add_library(${name} OBJECT ${folder_SOURCES})
  target_include_directories(${name} PUBLIC "${VELOXD_INCLUDE_ROOT}")
  target_link_libraries(${name} PUBLIC ${folder_LINKS} PRIVATE veloxd_settings)
  set_property(GLOBAL APPEND PROPERTY ${VELOXD_PRODUCT}_folders ${name})
endfunction()

# Adds to a folder the loops that are compiled once for each width of vectors: <prefix>Baseline.cpp, <prefix>Avx2.cpp and
# <prefix>Avx512.cpp. Those with wider instructions are chosen at run time. Not on Windows: there GCC keeps wide vectors
# on a stack that need not be aligned for them, and the program crashes.
function(veloxd_kernels name prefix)
  # Vectors that are wider than a processor's are passed in a way that depends on compiler options: within one source only.
  target_sources(${name} PRIVATE ${prefix}Baseline.cpp)
  set_source_files_properties(${prefix}Baseline.cpp PROPERTIES COMPILE_OPTIONS "-O3;-Wno-psabi")
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    target_sources(${name} PRIVATE ${prefix}Avx2.cpp ${prefix}Avx512.cpp)
    target_compile_definitions(${name} PRIVATE VELOXD_WIDE_KERNELS)
    set_source_files_properties(${prefix}Avx2.cpp PROPERTIES COMPILE_OPTIONS "-O3;-Wno-psabi;-mavx2;-mfma")
    set_source_files_properties(${prefix}Avx512.cpp PROPERTIES COMPILE_OPTIONS
      "-O3;-Wno-psabi;-mfma;-mavx512f;-mavx512bw;-mavx512dq;-mavx512vl;-mprefer-vector-width=512")
  endif()
endfunction()

# Adds the objects of all folders of the product to a target.
function(veloxd_add_folders target product scope)
  get_property(folders GLOBAL PROPERTY ${product}_folders)
  foreach(folder IN LISTS folders)
    target_sources(${target} ${scope} $<TARGET_OBJECTS:${folder}>)
  endforeach()
endfunction()
