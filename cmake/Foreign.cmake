# Compiles for another machine with Debian's cross compiler, and runs what it made with qemu-user.
#
# ZKFLNETWORK_MACHINE is the machine's name in Debian's triplets: s390x, aarch64. The libraries that
# are used lie in build/sysroot/MACHINE, where ./dev test --arch puts them; the C and C++ libraries
# come with the compiler.

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZKFLNETWORK_MACHINE)
if(NOT ZKFLNETWORK_MACHINE)
    message(FATAL_ERROR "ZKFLNETWORK_MACHINE is to be set")
endif()

set(triplet "${ZKFLNETWORK_MACHINE}-linux-gnu")
get_filename_component(sysroot "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${ZKFLNETWORK_MACHINE}"
    ABSOLUTE)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR "${ZKFLNETWORK_MACHINE}")
# Another compiler can be named, such as clang++, which is told what it compiles for.
if(NOT CMAKE_CXX_COMPILER)
    set(CMAKE_CXX_COMPILER "${triplet}-g++")
endif()
set(CMAKE_CXX_COMPILER_TARGET "${triplet}")
set(CMAKE_LIBRARY_ARCHITECTURE "${triplet}")

set(CMAKE_FIND_ROOT_PATH "${sysroot}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# One library of ICU needs another, which nobody names.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${sysroot}/usr/lib/${triplet}")

# Where the emulated loader looks besides the folders that a program names.
set(CMAKE_CROSSCOMPILING_EMULATOR
    "qemu-${ZKFLNETWORK_MACHINE};-L;/usr/${triplet};-E;LD_LIBRARY_PATH=${sysroot}/usr/lib/${triplet}")
