# Toolchain: 64-bit Windows, built with mingw-w64's GCC whose std::thread is that of POSIX threads. Further libraries for
# Windows are where scripts/windows-libraries puts them; programs are run with Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

set(build_folder "${CMAKE_CURRENT_LIST_DIR}/../build")
cmake_path(NORMAL_PATH build_folder)
set(libraries "${build_folder}/windows-libraries/root")
set(CMAKE_FIND_ROOT_PATH "${libraries}" /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ZLIB_USE_STATIC_LIBS ON)
set(PKG_CONFIG_ARGN --static)
set(ENV{PKG_CONFIG_PATH} "")
set(ENV{PKG_CONFIG_LIBDIR} "${libraries}/lib/pkgconfig:/usr/${triplet}/lib/pkgconfig")

# A Windows of the build's own, which the first program that runs sets up. File names are what they are on this side.
set(CMAKE_CROSSCOMPILING_EMULATOR
  env "WINEPREFIX=${build_folder}/wine" WINEDEBUG=-all LC_ALL=C.UTF-8 /usr/lib/wine/wine64)
