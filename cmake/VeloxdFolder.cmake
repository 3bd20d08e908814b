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

# Adds the objects of all folders of the product to a target.
function(veloxd_add_folders target product scope)
  get_property(folders GLOBAL PROPERTY ${product}_folders)
  foreach(folder IN LISTS folders)
    target_sources(${target} ${scope} $<TARGET_OBJECTS:${folder}>)
  endforeach()
endfunction()
