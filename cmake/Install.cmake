# What a host gets: headers, the library, and a package that find_package(dotweave CONFIG) finds. KelCommon and
# BoostLogWrapper install packages of their own, so that a host can put its own in their place.

set(dotweave_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/dotweave)
install(
    TARGETS dotweave
    EXPORT dotweaveTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(
    EXPORT dotweaveTargets
    NAMESPACE dotweave::
    DESTINATION ${dotweave_package_dir})
configure_package_config_file(cmake/dotweaveConfig.cmake.in ${PROJECT_BINARY_DIR}/dotweaveConfig.cmake
                              INSTALL_DESTINATION ${dotweave_package_dir})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/dotweaveConfigVersion.cmake
    VERSION ${PROJECT_VERSION}
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/dotweaveConfig.cmake ${PROJECT_BINARY_DIR}/dotweaveConfigVersion.cmake
        DESTINATION ${dotweave_package_dir})
