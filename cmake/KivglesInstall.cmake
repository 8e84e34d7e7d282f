# What an install puts in place: the component "library" for programs that run, "development" for building them,
# and on Android "prefab", for packing into an AAR.

set(KIVGLES_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kivgles)
set(KIVGLES_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(libraries kivgles)
if(NOT ANDROID)
    list(APPEND libraries kivgles_platform)
    # The platform's log lies beside the library, wherever the prefix is moved.
    set_target_properties(kivgles PROPERTIES INSTALL_RPATH $ORIGIN)
endif()

# Libraries and headers.
install(TARGETS ${libraries} EXPORT kivglesTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT library NAMELINK_COMPONENT development)
install(DIRECTORY include/kivgles DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development FILES_MATCHING PATTERN "*.h")
if(NOT ANDROID)
    # Out of the way of a real <android/log.h>: only who links kivgles::platform gets to see it.
    install(FILES platform/include/android/log.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kivgles/platform/android COMPONENT development)
endif()

# The CMake package.
include(CMakePackageConfigHelpers)
configure_package_config_file(cmake/kivglesConfig.cmake.in ${PROJECT_BINARY_DIR}/kivglesConfig.cmake
    INSTALL_DESTINATION ${KIVGLES_CMAKE_DIR}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kivglesConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(EXPORT kivglesTargets NAMESPACE kivgles:: DESTINATION ${KIVGLES_CMAKE_DIR} COMPONENT development)
# Components of the package: who does not ask for one does not get it.
foreach(component IN ITEMS kit window)
    if(TARGET kivgles_${component})
        install(TARGETS kivgles_${component} EXPORT kivgles-${component}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
                COMPONENT library NAMELINK_COMPONENT development
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
        install(EXPORT kivgles-${component} NAMESPACE kivgles::
            DESTINATION ${KIVGLES_CMAKE_DIR} COMPONENT development)
        install(DIRECTORY ${component}/include/kivgles DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
            COMPONENT development FILES_MATCHING PATTERN "*.h")
    endif()
endforeach()
install(FILES
    ${PROJECT_BINARY_DIR}/kivglesConfig.cmake ${PROJECT_BINARY_DIR}/kivglesConfigVersion.cmake
    DESTINATION ${KIVGLES_CMAKE_DIR} COMPONENT development)

# pkg-config, with a prefix that follows the file.
if(NOT ANDROID AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    file(RELATIVE_PATH KIVGLES_PREFIX_FROM_PC "/${KIVGLES_PKGCONFIG_DIR}" /)
    string(REGEX REPLACE "/$" "" KIVGLES_PREFIX_FROM_PC "${KIVGLES_PREFIX_FROM_PC}")
    set(packages kivgles)
    foreach(component IN ITEMS kit window)
        if(TARGET kivgles_${component})
            list(APPEND packages kivgles-${component})
        endif()
    endforeach()
    foreach(package IN LISTS packages)
        configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
        install(FILES ${PROJECT_BINARY_DIR}/${package}.pc
            DESTINATION ${KIVGLES_PKGCONFIG_DIR} COMPONENT development)
    endforeach()
endif()

# Prefab: one folder an ABI; several installs into one prefix make one package.
if(ANDROID)
    foreach(number IN ITEMS ANDROID_NDK_MAJOR ANDROID_PLATFORM_LEVEL)
        if(NOT DEFINED ${number})
            set(${number} 0)  # a toolchain file other than the NDK's
        endif()
    endforeach()
    set(module prefab/modules/kivgles)
    set(made ${PROJECT_BINARY_DIR}/prefab-kivgles)
    configure_file(cmake/prefab.json.in ${PROJECT_BINARY_DIR}/prefab.json @ONLY)
    configure_file(cmake/prefab-abi.json.in ${made}/abi.json @ONLY)
    file(WRITE ${made}/module.json "{ \"export_libraries\": [] }\n")
    install(FILES ${PROJECT_BINARY_DIR}/prefab.json
        DESTINATION prefab COMPONENT prefab EXCLUDE_FROM_ALL)
    install(FILES ${made}/module.json
        DESTINATION ${module} COMPONENT prefab EXCLUDE_FROM_ALL)
    install(DIRECTORY include/kivgles
        DESTINATION ${module}/include COMPONENT prefab EXCLUDE_FROM_ALL FILES_MATCHING PATTERN "*.h")
    install(FILES $<TARGET_FILE:kivgles> ${made}/abi.json
        DESTINATION ${module}/libs/android.${ANDROID_ABI} COMPONENT prefab EXCLUDE_FROM_ALL)
endif()
