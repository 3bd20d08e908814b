# What a Python wheel takes along, in the component python: the libraries and the tool, side by side, and a font for the
# tool's pictures if the wheel is for machines that may have none. Wheels hold no links: each library is one file.

foreach(library VELOxdDll VELOxdCurves VELOxdBlocks)
  set_property(TARGET ${library} PROPERTY VERSION)
  set_property(TARGET ${library} PROPERTY SOVERSION)
  install(TARGETS ${library} RUNTIME DESTINATION . LIBRARY DESTINATION . COMPONENT python)
endforeach()
set_target_properties(VELOxdBlocks PROPERTIES INSTALL_RPATH "$ORIGIN")
if(VELOXD_TOOLS)
  set_target_properties(oxd PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS oxd RUNTIME DESTINATION . COMPONENT python)
  if(VELOXD_SELF_CONTAINED)
    find_file(VELOXD_FONT DejaVuSans.ttf REQUIRED PATHS /usr/share/fonts/truetype/dejavu)
    install(FILES "${VELOXD_FONT}" DESTINATION fonts COMPONENT python)
  endif()
endif()
