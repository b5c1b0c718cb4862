# qv_library(NAME sys OUTPUT qvsys INCLUDE dir SOURCES ...): one of the project's shared libraries, as target qv::NAME.
#
# The folder is the list of sources, so that a new file needs no entry; CONFIGURE_DEPENDS makes the build look again.
# Symbols are hidden unless their header marks them (what the headers of others mark is hidden by exports.map); warnings
# are the project's own business and do not reach hosts.
function(qv_library)
    cmake_parse_arguments(ARG "" "NAME;OUTPUT;INCLUDE;SOURCE_DIR" "LINK_PUBLIC;LINK_PRIVATE" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${ARG_SOURCE_DIR}/*.cpp ${ARG_SOURCE_DIR}/*.h)
    add_library(${ARG_OUTPUT} SHARED ${sources})
    add_library(qv::${ARG_NAME} ALIAS ${ARG_OUTPUT})
    set_target_properties(
        ${ARG_OUTPUT}
        PROPERTIES EXPORT_NAME ${ARG_NAME}
                   VERSION ${PROJECT_VERSION}
                   SOVERSION ${PROJECT_VERSION_MAJOR}
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   CXX_EXTENSIONS OFF
                   INSTALL_RPATH $ORIGIN)
    target_compile_features(${ARG_OUTPUT} PUBLIC cxx_std_20)
    target_include_directories(
        ${ARG_OUTPUT}
        PUBLIC $<BUILD_INTERFACE:${ARG_INCLUDE}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${ARG_OUTPUT} PUBLIC ${ARG_LINK_PUBLIC} PRIVATE ${ARG_LINK_PRIVATE})
    if(NOT PROJECT_IS_TOP_LEVEL)  # a host's own warnings are not for these headers
        set_target_properties(${ARG_OUTPUT} PROPERTIES SYSTEM ON)
    endif()
    if(QVPRESLAYER_SANITIZER)
        # Such builds are made from nothing most of the time. All others show whether files include what they need.
        target_precompile_headers(${ARG_OUTPUT} PRIVATE <${ARG_OUTPUT}/${ARG_OUTPUT}.h>)
    else()  # their run-time libraries come with the program
        target_link_options(${ARG_OUTPUT} PRIVATE -Wl,-z,defs)
    endif()
    set(export_map ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/exports.map)
    target_link_options(${ARG_OUTPUT} PRIVATE -Wl,--version-script=${export_map})
    set_property(TARGET ${ARG_OUTPUT} APPEND PROPERTY LINK_DEPENDS ${export_map})
    # Unique symbols of a library keep it from ever being unloaded.
    target_compile_options(${ARG_OUTPUT} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    qv_warnings(${ARG_OUTPUT})
    # The rounding of reals is defined operation by operation: no fused multiply-add.
    target_compile_options(${ARG_OUTPUT} PRIVATE -ffp-contract=off)
    # Thread-local data is reached without a call. Libraries that are loaded late share a small reserve of such memory;
    # these three take about two hundred bytes of it together.
    target_compile_options(${ARG_OUTPUT} PRIVATE -ftls-model=initial-exec)
    # Shared objects are hardly ever exactly of their base class, which g++ would ask about before each virtual call.
    target_compile_options(${ARG_OUTPUT} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-devirtualize-speculatively>)
    # Nobody replaces single functions of these libraries: calls inside one need no detour.
    target_compile_options(${ARG_OUTPUT} PRIVATE -fno-semantic-interposition)
    target_link_options(${ARG_OUTPUT} PRIVATE -Wl,-Bsymbolic-functions)
endfunction()

# The project's own warnings for a target, as errors where the project is built for itself. Not under sanitizers: what
# they add to the code makes g++ warn of members that are never read unset.
function(qv_warnings target)
    set(werror)
    if(PROJECT_IS_TOP_LEVEL AND NOT QVPRESLAYER_SANITIZER)
        set(werror -Werror)
    endif()
    target_compile_options(
        ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
                          ${werror})
endfunction()

# QVPRESLAYER_SANITIZER: "address,undefined" or "thread"; empty for none.
set(QVPRESLAYER_SANITIZER "" CACHE STRING "Sanitizers to build everything with")
if(QVPRESLAYER_SANITIZER)
    add_compile_options(-fsanitize=${QVPRESLAYER_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QVPRESLAYER_SANITIZER})
endif()

# QVPRESLAYER_COVERAGE: counts which lines and branches of the libraries run, also of their headers in other programs.
# What belongs to nobody's report is not counted: it would make the tests several times slower.
option(QVPRESLAYER_COVERAGE "Count which lines and branches run" OFF)
if(QVPRESLAYER_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic
                        "-fprofile-filter-files=^${PROJECT_SOURCE_DIR}/(main|platform)/")
    add_link_options(--coverage)
endif()

# Fuzzers see which branches the libraries take.
if(QVPRESLAYER_BUILD_FUZZERS)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
