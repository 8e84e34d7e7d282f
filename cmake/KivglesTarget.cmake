# What the project's own targets have in common.

# The language and the warnings. They stay with the project: a client's targets are not touched.
function(kivgles_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2
        $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
        $<$<BOOL:${KIVGLES_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

# The shared library `target` exports what the version script names, and leaves no symbol for its clients to
# find (a sanitized library does: the run-time part comes with the program).
function(kivgles_export_only target version_script)
    target_link_options(${target} PRIVATE LINKER:--version-script=${version_script})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${version_script})
    if(NOT KIVGLES_SANITIZER)
        target_link_options(${target} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()
