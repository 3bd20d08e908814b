# Compiler settings that every target of this project shares, in the interface target veloxd_settings.

option(VELOXD_WERROR "Treat warnings as errors" ON)
set(VELOXD_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize= (for example address,undefined)")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(veloxd_settings INTERFACE)
target_compile_options(veloxd_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<BOOL:${VELOXD_WERROR}>:-Werror>
  # Failure texts name source files: relative to the source root, so that no build path is in the binary.
  "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build"
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/="
  # Every build computes the same sample values, also where the processor could fuse multiply and add.
  -ffp-contract=off)

if(VELOXD_SANITIZE)
  target_compile_options(veloxd_settings INTERFACE
    "-fsanitize=${VELOXD_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(veloxd_settings INTERFACE "-fsanitize=${VELOXD_SANITIZE}")
endif()
