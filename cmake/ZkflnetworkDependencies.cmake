# What the library itself is made with: Boost's headers and ICU. Nothing is ever fetched.

include_guard(GLOBAL)

# zkflnetwork_find(TARGET package argument...)
#
# Finds a package whose target, if it is found here, is also seen by the project that added this
# one as a subfolder: its programs link what this library links.
macro(zkflnetwork_find imported)
    if(NOT TARGET ${imported})
        find_package(${ARGN})
        set_target_properties(${imported} PROPERTIES IMPORTED_GLOBAL TRUE)
    endif()
endmacro()

# Boost has brought its own package file since 1.70. The module that CMake had for older ones is
# not wanted where CMake still knows it.
if(POLICY CMP0167)
    cmake_policy(SET CMP0167 NEW)
endif()

zkflnetwork_find(Boost::headers Boost 1.74 REQUIRED)
zkflnetwork_find(ICU::uc ICU REQUIRED COMPONENTS uc)
