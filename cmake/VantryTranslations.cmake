# vantry_add_translations(NAME RESOURCES): compiles language/NAME_de_DE.ts of this folder, and gives the resource file
# that holds it, for the sources of a target here.
function(vantry_add_translations name resources)
    get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
    get_filename_component(qt_tools ${qmake} DIRECTORY)
    find_program(VANTRY_LRELEASE lrelease HINTS ${qt_tools} REQUIRED)
    set(source ${CMAKE_CURRENT_SOURCE_DIR}/language/${name}_de_DE.ts)
    add_custom_command(
        OUTPUT ${name}_de_DE.qm
        COMMAND ${VANTRY_LRELEASE} -silent ${source} -qm ${name}_de_DE.qm
        DEPENDS ${source}
        VERBATIM)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/translations.qrc.in ${name}_translations.qrc @ONLY)
    set(${resources}
        ${CMAKE_CURRENT_BINARY_DIR}/${name}_translations.qrc
        PARENT_SCOPE)
endfunction()
