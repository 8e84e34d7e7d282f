# The library as programs outside meet it: its exported names, and consumers of an install and of the sources.
add_test(NAME ExportedNames
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/abi/check_exports.sh $<TARGET_FILE:kivgles>)

set(consumer ${PROJECT_SOURCE_DIR}/scripts/with_xvfb.sh ${CMAKE_CURRENT_SOURCE_DIR}/consumer)
add_test(NAME Consumer.ofAnInstall
    COMMAND ${consumer}/install.sh ${PROJECT_BINARY_DIR} ${CMAKE_CURRENT_BINARY_DIR}/consumer-install)
add_test(NAME Consumer.ofTheSources
    COMMAND ${consumer}/consume.sh ${CMAKE_CURRENT_BINARY_DIR}/consumer-sources -DKIVGLES_SOURCES=${PROJECT_SOURCE_DIR})
