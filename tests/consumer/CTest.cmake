# The library as programs outside meet it: its exported names, and consumers built in three ways.
# A sanitized library asks for sanitized programs, so it is left to the ordinary builds.
if(KIVGLES_SANITIZER)
    return()
endif()

add_test(NAME ExportedNames
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/abi/check_exports.sh $<TARGET_FILE:kivgles>)

if(NOT KIVGLES_INSTALL)
    return()
endif()
set(stage ${CMAKE_CURRENT_BINARY_DIR}/stage)
add_test(NAME Consumer.install
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/consumer/stage.sh ${PROJECT_BINARY_DIR} ${stage})
set_tests_properties(Consumer.install PROPERTIES FIXTURES_SETUP kivgles_stage)

# Each has an X server of its own, on which nothing hides the window that it looks at.
foreach(way IN ITEMS find_package pkg-config add_subdirectory)
    if(way STREQUAL "add_subdirectory")
        set(from ${PROJECT_SOURCE_DIR})
    else()
        set(from ${stage})
    endif()
    add_test(NAME Consumer.${way}
        COMMAND ${PROJECT_SOURCE_DIR}/scripts/with_xvfb.sh ${CMAKE_CURRENT_SOURCE_DIR}/consumer/consume.sh
            ${way} ${from} ${CMAKE_CURRENT_BINARY_DIR}/consumer-${way})
    set_tests_properties(Consumer.${way} PROPERTIES
        ENVIRONMENT CXX=${CMAKE_CXX_COMPILER} FIXTURES_REQUIRED kivgles_stage)
endforeach()
set_tests_properties(Consumer.add_subdirectory PROPERTIES FIXTURES_REQUIRED "")
