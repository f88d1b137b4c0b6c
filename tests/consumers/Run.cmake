# cmake -D MODE=... -D ... -P Run.cmake
#
# Builds consumer.cpp as a user of the library would and compares what it prints.
#
# MODE       install: put the library where the next two take it; not a consumer itself
#            package: through find_package
#            pkg-config: with pkg-config and the bare compiler
#            subfolder: through add_subdirectory
# PLACE      installed: where it was installed, or moved: installed in one place and moved to another
# VERSION    the library's version
# SOURCE     the folder of the library
# BUILD      its build folder
# WORK       a folder to work in
# COMPILER   the C++ compiler; where that is not installed the test is skipped, and with
#            ZKFLNETWORK_REQUIRE_COMPILERS in the environment it fails
# TOOLCHAIN  the toolchain file, where another machine or system is compiled for
# MACHINE    that machine, where its system is Linux
# EMULATOR   the command that runs what was compiled, a list; empty on the machine itself
# SUFFIX     what the names of programs end with

cmake_minimum_required(VERSION 3.22)

set(expected "example.org 8080 http://example.org:8080/a%20b?q\nIRI parsing failed\n")

set(installed "${WORK}/installed")
set(prefix "${WORK}/${PLACE}")
get_filename_component(compiler_name "${COMPILER}" NAME)
set(folder "${WORK}/${MODE}-${PLACE}-${compiler_name}")

find_program(found_compiler NAMES "${COMPILER}")
if(NOT found_compiler)
    if("$ENV{ZKFLNETWORK_REQUIRE_COMPILERS}")
        message(FATAL_ERROR "There is no ${COMPILER}")
    endif()
    message("SKIPPED: there is no ${COMPILER}")
    return()
endif()

set(compiler_choice "-DCMAKE_CXX_COMPILER=${COMPILER}")
set(compiler_flags "")
if(TOOLCHAIN)
    set(compiler_choice "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
endif()
# Boost is not where the compiler looks, and the library's own needs are not on the command line.
if(MACHINE)
    list(APPEND compiler_choice "-DZKFLNETWORK_MACHINE=${MACHINE}"
        "-DCMAKE_CXX_COMPILER=${COMPILER}")
    set(sysroot "${SOURCE}/build/sysroot/${MACHINE}")
    set(compiler_flags -isystem "${sysroot}/usr/include"
        "-Wl,-rpath-link,${sysroot}/usr/lib/${MACHINE}-linux-gnu")
    if(compiler_name MATCHES "clang")
        list(APPEND compiler_flags "--target=${MACHINE}-linux-gnu")
    endif()
elseif(SUFFIX STREQUAL ".exe")
    set(compiler_flags -isystem "${SOURCE}/build/windows-packages/prefix/include")
    # Windows knows no paths in programs.
    set(ENV{WINEPATH} "Z:${prefix}/bin")
endif()

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message("${output}")
        message(FATAL_ERROR "status ${result}: ${command}")
    endif()
endfunction()

function(expect_output)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output)
    string(REPLACE "\r\n" "\n" output "${output}") # as the streams of C++ end lines on Windows
    if(NOT result EQUAL 0 OR NOT output STREQUAL expected)
        message("printed:\n${output}expected:\n${expected}")
        message(FATAL_ERROR "status ${result}: ${ARGV0}")
    endif()
endfunction()

function(build_with_cmake)
    file(REMOVE_RECURSE "${folder}")
    run("${CMAKE_COMMAND}" -S "${SOURCE}/tests/consumers" -B "${folder}" -G Ninja
        ${compiler_choice} ${ARGN})
    run("${CMAKE_COMMAND}" --build "${folder}")
    if(SUFFIX STREQUAL ".exe")
        set(folder "${folder}/bin")
    endif()
    expect_output(${EMULATOR} "${folder}/consumer${SUFFIX}")
endfunction()

if(MODE STREQUAL "install")
    # The second tree is used from another place: nothing in it may know where it was.
    set(prefix "${WORK}/moved")
    file(REMOVE_RECURSE "${installed}" "${prefix}")
    run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${installed}")
    file(RENAME "${installed}" "${prefix}")
    run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${installed}")
    # gdb looks under the whole name that the library had where it was put.
    file(GLOB_RECURSE library RELATIVE "${prefix}" "${prefix}/*/libzkflnetwork.so.*.*.*")
    list(FILTER library EXCLUDE REGEX "-gdb\\.py$")
    if(NOT SUFFIX STREQUAL ".exe" AND NOT EXISTS "${prefix}/share/gdb/auto-load/${installed}/${library}-gdb.py")
        message(FATAL_ERROR "There is no script for gdb that goes with ${library}")
    endif()
    # The tool, if it was built, brings along its manual page and what shells read.
    if(EXISTS "${prefix}/bin/iri${SUFFIX}")
        foreach(pair IN ITEMS "bash:bash-completion/completions/iri" "zsh:zsh/site-functions/_iri"
                              "fish:fish/vendor_completions.d/iri.fish")
            string(REGEX MATCH "^([a-z]+):(.*)$" pair "${pair}")
            file(READ "${prefix}/share/${CMAKE_MATCH_2}" expected)
            expect_output(${EMULATOR} "${prefix}/bin/iri${SUFFIX}" completion "${CMAKE_MATCH_1}")
        endforeach()
        file(READ "${SOURCE}/docs/man/iri.1" page)
        file(READ "${prefix}/share/man/man1/iri.1" installed_page)
        if(NOT page STREQUAL installed_page)
            message(FATAL_ERROR "share/man/man1/iri.1 is not docs/man/iri.1")
        endif()
    endif()
elseif(MODE STREQUAL "package")
    build_with_cmake("-DCMAKE_PREFIX_PATH=${prefix}" "-DLIBRARY_VERSION=${VERSION}")
elseif(MODE STREQUAL "subfolder")
    build_with_cmake("-DLIBRARY_SOURCE=${SOURCE}")
elseif(MODE STREQUAL "pkg-config")
    file(GLOB_RECURSE pc_file "${prefix}/*/zkflnetwork.pc")
    get_filename_component(pc_folder "${pc_file}" DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
    execute_process(COMMAND pkg-config --cflags --libs zkflnetwork
        RESULT_VARIABLE result OUTPUT_VARIABLE flags ERROR_VARIABLE complaint)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "pkg-config: ${complaint}")
    endif()
    separate_arguments(flags UNIX_COMMAND "${flags}")
    file(MAKE_DIRECTORY "${folder}")
    run("${COMPILER}" -std=c++20 -Wall -Wextra -Wpedantic -Wconversion -Werror
        "${SOURCE}/tests/consumers/consumer.cpp" -o "${folder}/consumer${SUFFIX}"
        ${compiler_flags} ${flags})
    file(GLOB_RECURSE library "${prefix}/*/libzkflnetwork.so" "${prefix}/*/zkflnetwork.dll")
    get_filename_component(library_folder "${library}" DIRECTORY)
    if(EMULATOR)
        # It names the folders of the libraries itself, and takes one more.
        list(TRANSFORM EMULATOR APPEND ":${library_folder}" REGEX "^LD_LIBRARY_PATH=")
    endif()
    expect_output("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${library_folder}"
        ${EMULATOR} "${folder}/consumer${SUFFIX}")
else()
    message(FATAL_ERROR "MODE=${MODE} is not known")
endif()
