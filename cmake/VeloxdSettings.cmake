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
  # Conversions between signed and unsigned, which -Wconversion of C++ means to clang only.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  # Where more files are compiled as one than the preset dev takes, names of a file shadow those of another.
  $<$<AND:$<BOOL:${CMAKE_UNITY_BUILD}>,$<NOT:$<STREQUAL:${CMAKE_UNITY_BUILD_BATCH_SIZE},8>>>:-Wno-shadow>
  # GCC 12 sees overlaps in its own std::string at -O3 that cannot be.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  # Failure texts name source files: relative to the source root, so that no build path is in the binary.
  "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build"
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/="
  # Every build computes the same sample values, also where the processor could fuse multiply and add.
  -ffp-contract=off)

# What is shipped stops a program that overwrote its stack or a buffer of known size, before somebody makes use of that,
# and nothing that it calls can be replaced once it is loaded. Sanitizers see more, in other ways. On Windows the linker
# does what it can by itself: the run-time that the rest would take is another program's there.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VELOXD_SANITIZE)
  set(hardened $<CONFIG:Release>)
  target_compile_options(veloxd_settings INTERFACE
    $<${hardened}:-fstack-protector-strong> $<${hardened}:-fstack-clash-protection>
    $<${hardened}:-U_FORTIFY_SOURCE> $<${hardened}:-D_FORTIFY_SOURCE=2>)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    target_compile_options(veloxd_settings INTERFACE $<${hardened}:-fcf-protection>)
  endif()
  target_link_options(veloxd_settings INTERFACE $<${hardened}:LINKER:-z,relro,-z,now,-z,noexecstack>)
endif()

# Every folder uses some of Boost's headers; when building for another system they are not where compilers look.
find_path(VELOXD_BOOST_HEADERS boost/version.hpp REQUIRED)
target_include_directories(veloxd_settings SYSTEM INTERFACE "${VELOXD_BOOST_HEADERS}")

# What is shipped for Windows needs nothing but Windows: the compiler's run-time is linked in. Nor does it say when it was
# built, as the same sources give the same bytes; and as it would if names were taken out later, they are here.
if(MINGW)
  target_link_options(veloxd_settings INTERFACE -static -s LINKER:--no-insert-timestamp)
endif()

if(VELOXD_SANITIZE)
  target_compile_options(veloxd_settings INTERFACE
    "-fsanitize=${VELOXD_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(veloxd_settings INTERFACE "-fsanitize=${VELOXD_SANITIZE}")
endif()
