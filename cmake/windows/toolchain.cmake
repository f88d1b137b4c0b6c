# From Linux to 64-bit Windows, with MinGW-w64 and the threads of its runtime; what is built is run
# with Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# What prepare.sh has built. The consumer projects of the tests say where their library is besides.
get_filename_component(prefix "${CMAKE_CURRENT_LIST_DIR}/../../build/windows-packages/prefix" ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH "${prefix}" ${CMAKE_PREFIX_PATH} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/wine.sh")

# Programs and the libraries that they load lie side by side, as Windows looks for them.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
