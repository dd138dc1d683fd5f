# Writes to TARGET the settings that a first start finds: the sample rules, and SAMPLES as the folder
# that the Add dialog opens in. A relative one is taken from the application folder.
function(quorlin_write_first_settings target samples)
    file(READ "${CMAKE_SOURCE_DIR}/samples/setting.ini" settings)
    # In quotes, because a comma or semicolon in the path would divide it.
    string(REGEX REPLACE "([\"\\\\])" "\\\\\\1" quoted "${samples}")
    file(WRITE "${target}" "[dir]\ninput=\"${quoted}\"\n\n${settings}")
    set_property(DIRECTORY APPEND PROPERTY
        CMAKE_CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/samples/setting.ini")
endfunction()
