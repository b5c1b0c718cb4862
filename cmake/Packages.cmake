# Debian packages, made by cpack in a build tree whose prefix is /usr (the preset "package" of CMakePresets.json):
#
#   libqvpreslayer0     runtime
#   libqvpreslayer-dev  development
#   qvpreslayer-tools   tools, where there are any
#   *-dbgsym            debug information of the first and the last
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qvpreslayer)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "qvpreslayer maintainers <maintainers@qvpreslayer.example>")
set(CPACK_VERBATIM_VARIABLES ON)

# Files are told where they will be, not where they are put together.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET qvpres)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(about "Bags of typed parameters are copied, walked, and turned into text and
JSON and back, by one registry of their names, kinds and serializers.
.
")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "typed parameter bags over one registry of names")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}This package holds the shared libraries.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about}This package holds headers, link names, files for CMake and
pkg-config, printers for gdb, documents and examples.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "${about}This package holds qvpres, a command line that looks into JSON
texts of parameter bags, checks, converts and compares them.")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libqvpreslayer${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqvpreslayer-dev)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME qvpreslayer-tools)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)

# Dependencies on other packages come from what the files link to; those of the packages on each other are exact.
set(same_version "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Debian prefers the trigger to the calls of ldconfig that cpack adds; together they do no harm.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}, libboost1.81-dev | libboost-dev (>= 1.81)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "gdb, pkg-config")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE qvpreslayer)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_TOOLS_DEBUGINFO_PACKAGE ON)

# What Debian wants of every package: copyright and changelog, compressed pages, no search paths in libraries.
string(TIMESTAMP package_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
configure_file(cmake/debian/copyright ${PROJECT_BINARY_DIR}/debian/copyright COPYONLY)
configure_file(cmake/debian/FinishPackages.cmake.in ${PROJECT_BINARY_DIR}/debian/FinishPackages.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/debian/FinishPackages.cmake)

include(CPack)
