# What "cmake --install" puts where, in three components that are also the Debian packages:
#
#   runtime      the libraries under their sonames
#   development  headers, link names, package files of CMake and pkg-config, gdb printers, documents, examples
#   tools        programs with their manuals and completions, and the schema of vocabulary files; tools/ adds them
#
# Nothing that is installed names the prefix, so that the tree may be moved; only gdb, which finds printers by the path
# of a library, has to be told (docs/guide.md).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qvpreslayer)

install(
    TARGETS qvsys qvcore qvpreslayer
    EXPORT qvpreslayerTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

install(
    DIRECTORY platform/qvsys/include/qvsys platform/qvcore/include/qvcore public/qvpreslayer
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.h")

# find_package(qvpreslayer): until 1.0 a program finds the minor version that it asks for, and no other.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(compatibility SameMinorVersion)
else()
    set(compatibility SameMajorVersion)
endif()
install(EXPORT qvpreslayerTargets NAMESPACE qv:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/qvpreslayerConfig.cmake.in ${PROJECT_BINARY_DIR}/qvpreslayerConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qvpreslayerConfigVersion.cmake COMPATIBILITY ${compatibility})
install(
    FILES ${PROJECT_BINARY_DIR}/qvpreslayerConfig.cmake ${PROJECT_BINARY_DIR}/qvpreslayerConfigVersion.cmake
    DESTINATION ${package_dir}
    COMPONENT development)

# qv_pkgconfig(NAME DESCRIPTION REQUIRES): NAME.pc, which finds headers and libraries from where it lies itself.
function(qv_pkgconfig name description requires)
    set(pc_name ${name})
    set(pc_description ${description})
    set(pc_requires ${requires})
    set(pc_prefix ${CMAKE_INSTALL_PREFIX})
    set(pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
    set(pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
    if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} AND NOT IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
        file(RELATIVE_PATH to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
        string(REGEX REPLACE "/$" "" to_prefix ${to_prefix})
        set(pc_prefix "\${pcfiledir}/${to_prefix}")
        set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
        set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
    endif()
    configure_file(cmake/qv.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
            COMPONENT development)
endfunction()
qv_pkgconfig(qvsys "Reference counts, the recursive mutex and the exception base of qvpreslayer" "")
qv_pkgconfig(qvcore "Texts, typed values, names and dates of qvpreslayer" "qvsys = ${PROJECT_VERSION}")
qv_pkgconfig(qvpreslayer "${PROJECT_DESCRIPTION}" "qvcore = ${PROJECT_VERSION}")

# The printers, and for each library the file that gdb loads by itself when it loads the library: it is sought under
# auto-load by the library's full path, which is known only when installing.
install(FILES gdb/qvpreslayer_printers.py DESTINATION ${CMAKE_INSTALL_DATADIR}/qvpreslayer/gdb COMPONENT development)
foreach(library qvsys qvcore qvpreslayer)
    set(loader lib${library}.so.${PROJECT_VERSION}-gdb.py)
    install(
        CODE "
        if(IS_ABSOLUTE \"${CMAKE_INSTALL_LIBDIR}\")
            set(libdir \"${CMAKE_INSTALL_LIBDIR}\")
        else()
            get_filename_component(libdir \"${CMAKE_INSTALL_LIBDIR}\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
        endif()
        get_filename_component(datadir \"${CMAKE_INSTALL_DATADIR}\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
        file(INSTALL DESTINATION \"\${datadir}/gdb/auto-load\${libdir}\" TYPE FILE RENAME \"${loader}\"
             FILES \"${PROJECT_SOURCE_DIR}/gdb/autoload.py\")"
        COMPONENT development)
endforeach()

install(
    DIRECTORY docs
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.md"
    PATTERN "*.svg"
    PATTERN "site" EXCLUDE)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(
    DIRECTORY examples
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.cpp"
    PATTERN "*.h"
    PATTERN "*.json"
    PATTERN "*.csv"
    PATTERN "SOURCES.md")
