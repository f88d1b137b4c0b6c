# What every target of this project has in common, whether it is installed or not.

include_guard(GLOBAL)

set(ZKFLNETWORK_GNU_WARNINGS
    -Wall
    -Wextra
    -Wpedantic
    -Wcast-align
    -Wcast-qual
    -Wconversion
    -Wdouble-promotion
    -Wextra-semi
    -Wformat=2
    -Wimplicit-fallthrough
    -Wmissing-declarations
    -Wnon-virtual-dtor
    -Wold-style-cast
    -Woverloaded-virtual
    -Wshadow
    -Wsign-conversion
    -Wundef
    -Wunused
    -Wvla)
# -Wnull-dereference is left out: with optimisation g++ 12 reports it inside std::string and
# std::vector, where it cannot be answered from here.
set(ZKFLNETWORK_GCC_WARNINGS
    -Wduplicated-branches
    -Wduplicated-cond
    -Wlogical-op
    -Wredundant-decls
    -Wsuggest-override)
# 4251 and 4275 are of classes that are exported and have members or bases which are not: those of
# the standard library, which a program shares with the DLL.
set(ZKFLNETWORK_MSVC_WARNINGS /W4 /permissive- /utf-8 /wd4251 /wd4275)

# zkflnetwork_set_up(TARGET) - language, warnings and where programs look for the library.
#
# All of it is private to the target: a consumer of the library sees nothing of it.
function(zkflnetwork_set_up target)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_features(${target} PRIVATE cxx_std_20)

    if(MSVC)
        target_compile_options(${target} PRIVATE ${ZKFLNETWORK_MSVC_WARNINGS})
    else()
        target_compile_options(${target} PRIVATE ${ZKFLNETWORK_GNU_WARNINGS})
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(${target} PRIVATE ${ZKFLNETWORK_GCC_WARNINGS})
        endif()
    endif()
    if(ZKFLNETWORK_WARNINGS_AS_ERRORS)
        if(MSVC)
            target_compile_options(${target} PRIVATE /WX)
        else()
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
endfunction()
