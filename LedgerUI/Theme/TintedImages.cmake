# Writes the images of the style sheet in the colours of both schemes, and the list of everything that is compiled in.
# The style sheet cannot tint: each image is a glyph with "currentColor" replaced by a token of Token.cpp.

set(TALLYFOLD_GLYPHS /usr/share/bootstrap-icons/svg CACHE PATH "Folder of the icon set's SVG files")
if(NOT EXISTS ${TALLYFOLD_GLYPHS}/chevron-down.svg)
    message(FATAL_ERROR "The icon set is missing: install the package bootstrap-icons, or set TALLYFOLD_GLYPHS.")
endif()

# Name in the style sheet, glyph, token.
set(tallyfold_tinted
    chevron-down     chevron-down text2
    chevron-down-off chevron-down disabled
    check            check-lg     text2
    check-on         check-lg     onAccent
    check-off        check-lg     disabled)

function(tallyfold_tint_images folder)
    set(table ${CMAKE_CURRENT_SOURCE_DIR}/Theme/Token.cpp)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${table})
    set(rest ${tallyfold_tinted})
    while(rest)
        list(POP_FRONT rest name glyph token)
        file(STRINGS ${table} row REGEX "\"${token}\"")
        if(NOT row MATCHES "0x([0-9A-F]+), 0x([0-9A-F]+)")
            message(FATAL_ERROR "Token.cpp has no colour for ${token}")
        endif()
        set(light ${CMAKE_MATCH_1})
        set(dark ${CMAKE_MATCH_2})
        file(READ ${TALLYFOLD_GLYPHS}/${glyph}.svg drawing)
        foreach(scheme light dark)
            string(REPLACE currentColor "#${${scheme}}" tinted "${drawing}")
            file(CONFIGURE OUTPUT ${folder}/${scheme}/${name}.svg CONTENT "${tinted}" @ONLY)
        endforeach()
    endwhile()
endfunction()

# A resource collection of every SVG below `folder`, under `prefix`.
function(tallyfold_collect_svgs collection prefix folder)
    file(GLOB_RECURSE drawings RELATIVE ${folder} ${folder}/*.svg)
    set(lines "")
    foreach(drawing ${drawings})
        string(APPEND lines "<file alias=\"${drawing}\">${folder}/${drawing}</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${collection} CONTENT "<RCC><qresource prefix=\"${prefix}\">\n${lines}</qresource></RCC>\n" @ONLY)
endfunction()
