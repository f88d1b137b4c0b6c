# Install rules, and the two ways in which other projects find the library: a CMake package and a
# pkg-config file. Both work from wherever the tree is moved to.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zkflnetwork")

install(TARGETS zkflnetwork EXPORT zkflnetwork
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT zkflnetwork_runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT zkflnetwork_runtime
            NAMELINK_COMPONENT zkflnetwork_development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT zkflnetwork_development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/foundation"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT zkflnetwork_development
    FILES_MATCHING PATTERN "*.hpp")

# gdb looks for a script below its own folder under the whole name of the library. Only the
# installation knows that name: it may be given another prefix.
if(UNIX AND NOT APPLE)
    set(library_dir "${CMAKE_INSTALL_LIBDIR}")
    if(NOT IS_ABSOLUTE "${library_dir}")
        set(library_dir "\${CMAKE_INSTALL_PREFIX}/${library_dir}")
    endif()
    set(data_dir "${CMAKE_INSTALL_DATADIR}")
    if(NOT IS_ABSOLUTE "${data_dir}")
        set(data_dir "\${CMAKE_INSTALL_PREFIX}/${data_dir}")
    endif()
    install(CODE "file(INSTALL \"${PROJECT_SOURCE_DIR}/debuggers/zkflnetwork-gdb.py\"
        DESTINATION \"${data_dir}/gdb/auto-load/${library_dir}\"
        RENAME \"$<TARGET_FILE_NAME:zkflnetwork>-gdb.py\")"
        COMPONENT zkflnetwork_development)
endif()
install(FILES "${PROJECT_SOURCE_DIR}/debuggers/zkflnetwork.natvis"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zkflnetwork" COMPONENT zkflnetwork_development)

install(EXPORT zkflnetwork
    FILE zkflnetworkTargets.cmake
    NAMESPACE zkflnetwork::
    DESTINATION "${package_dir}" COMPONENT zkflnetwork_development)
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/zkflnetworkConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/zkflnetworkConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
    NO_SET_AND_CHECK_MACRO)
# Before 1.0 the second number of the version counts changes that old programs do not survive.
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/zkflnetworkConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/zkflnetworkConfig.cmake"
    "${PROJECT_BINARY_DIR}/zkflnetworkConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT zkflnetwork_development)

# pkg-config replaces ${pcfiledir} by the folder of the file, so the prefix is told as the way from
# there, unless somebody chose a library folder outside the prefix.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pc_prefix "${CMAKE_INSTALL_PREFIX}")
    set(pc_libdir "${CMAKE_INSTALL_LIBDIR}")
else()
    file(RELATIVE_PATH way_up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" way_up "${way_up}")
    set(pc_prefix "\${pcfiledir}/${way_up}")
    set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    set(pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
else()
    set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(
    "${CMAKE_CURRENT_LIST_DIR}/zkflnetwork.pc.in"
    "${PROJECT_BINARY_DIR}/zkflnetwork.pc" @ONLY)
# ICU is not named in that file: no public header shows it, and the shared library finds it itself.
install(FILES "${PROJECT_BINARY_DIR}/zkflnetwork.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT zkflnetwork_development)
