# Debian packages: the library, and what building against it takes. scripts/package.sh makes and tries them.
if(NOT KIVGLES_TOP_LEVEL)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL library development)
set(KIVGLES_PACKAGE_MAINTAINER "libkivgles developers <kivgles@example.org>" CACHE STRING
    "Who answers for the Debian packages: NAME <ADDRESS>")
set(CPACK_PACKAGE_CONTACT ${KIVGLES_PACKAGE_MAINTAINER})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The library's package has the SOVERSION in its name, so that two of them can be installed side by side.
set(runtime libkivgles${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
# Programs need this version or a later one, and the loader's cache follows by a trigger.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkivgles-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime} (= ${PROJECT_VERSION}), libegl-dev, libgles-dev, libfreetype-dev (>= 2.10)")

# The first line of each is the project's own description.
set(about "Panels, bars, bitmaps and text on a native window, from any thread,
without a line of OpenGL in the program.")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${about} This package has
the library, and the log that it writes to on a desktop.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about} This package has
the headers, the CMake package and the file for pkg-config.")

# The papers that Debian wants of each package, and an ordinary install does without.
string(TIMESTAMP KIVGLES_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian-changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
find_program(KIVGLES_GZIP gzip)
if(KIVGLES_GZIP)
    execute_process(COMMAND ${KIVGLES_GZIP} -9nf changelog WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/debian
        COMMAND_ERROR_IS_FATAL ANY)
    foreach(pair IN ITEMS library:${runtime} development:libkivgles-dev)
        string(REPLACE ":" ";" pair ${pair})
        list(GET pair 0 component)
        list(GET pair 1 package)
        install(FILES ${PROJECT_BINARY_DIR}/debian/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
        install(FILES cmake/debian-copyright RENAME copyright
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    endforeach()
endif()

include(CPack)
