# Cross build for 64-bit Windows with mingw-w64 GCC (posix thread model); programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Libraries that Debian does not package for mingw are cross-built once; `./dev` makes this folder.
if(DEFINED ENV{TVL_WINDOWS_DEPS})
    set(TVL_WINDOWS_DEPS "$ENV{TVL_WINDOWS_DEPS}")
else()
    set(TVL_WINDOWS_DEPS "${CMAKE_CURRENT_LIST_DIR}/../build/windows-deps")
endif()
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${TVL_WINDOWS_DEPS}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
