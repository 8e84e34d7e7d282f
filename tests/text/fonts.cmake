# The fonts that are made for the tests and for the fuzz targets: KIVGLES_TEST_FONTS is their folder,
# kivgles_test_fonts the target that makes them. Debian's own Python has Debian's fontTools.
find_program(KIVGLES_PYTHON python3 HINTS /usr/bin REQUIRED)
set(KIVGLES_TEST_FONTS ${CMAKE_CURRENT_BINARY_DIR}/fonts)
add_custom_command(
    OUTPUT ${KIVGLES_TEST_FONTS}/bits1.bdf
    COMMAND ${KIVGLES_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/make_fonts.py ${KIVGLES_TEST_FONTS}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/make_fonts.py
    COMMENT "Making the fonts of the tests")
add_custom_target(kivgles_test_fonts DEPENDS ${KIVGLES_TEST_FONTS}/bits1.bdf)
