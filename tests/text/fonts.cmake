# The fonts that are made for the tests and for the fuzz targets. What is linked with kivgles_test_fonts is built after
# them, and has their folder as KIVGLES_TEST_FONTS. Debian's own Python has Debian's fontTools.
find_program(KIVGLES_PYTHON python3 HINTS /usr/bin REQUIRED)
set(KIVGLES_TEST_FONTS ${CMAKE_CURRENT_BINARY_DIR}/fonts)
add_custom_command(
    OUTPUT ${KIVGLES_TEST_FONTS}/bits1.bdf
    COMMAND ${KIVGLES_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/make_fonts.py ${KIVGLES_TEST_FONTS}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/make_fonts.py
    COMMENT "Making the fonts of the tests")
add_library(kivgles_test_fonts INTERFACE ${KIVGLES_TEST_FONTS}/bits1.bdf)
target_compile_definitions(kivgles_test_fonts INTERFACE KIVGLES_TEST_FONTS="${KIVGLES_TEST_FONTS}")
