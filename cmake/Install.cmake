# Headers, libraries and the package files through which find_package(qvpreslayer) finds the targets qv::*.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qvpreslayer)

install(TARGETS qvsys qvcore qvpreslayer EXPORT qvpreslayerTargets)
install(DIRECTORY platform/qvsys/include/qvsys platform/qvcore/include/qvcore public/qvpreslayer
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
install(EXPORT qvpreslayerTargets NAMESPACE qv:: DESTINATION ${package_dir})
configure_package_config_file(cmake/qvpreslayerConfig.cmake.in ${PROJECT_BINARY_DIR}/qvpreslayerConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qvpreslayerConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qvpreslayerConfig.cmake ${PROJECT_BINARY_DIR}/qvpreslayerConfigVersion.cmake
        DESTINATION ${package_dir})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
