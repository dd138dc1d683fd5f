# The build tree's application folder (bin) and the folder "Plugins" beside it, as an installation
# has them: after start-up the program searches Qt's plug-ins in "Plugins" and nowhere else.
function(quorlin_prepare_application_folder)
    get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
    execute_process(COMMAND "${qmake}" -query QT_INSTALL_PLUGINS
        OUTPUT_VARIABLE plugins OUTPUT_STRIP_TRAILING_WHITESPACE)
    set(QUORLIN_QT_PLUGINS "${plugins}" CACHE INTERNAL "Folder of Qt's plug-ins")
    file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/Plugins")
    foreach(kind platforms imageformats tls iconengines xcbglintegrations platforminputcontexts)
        if(EXISTS "${plugins}/${kind}")
            file(CREATE_LINK "${plugins}/${kind}" "${CMAKE_BINARY_DIR}/Plugins/${kind}" SYMBOLIC)
        endif()
    endforeach()
    # The settings file belongs to the user once it exists: it is laid down, never overwritten.
    set(first "${CMAKE_BINARY_DIR}/first_settings/setting.ini")
    quorlin_write_first_settings("${first}" "${CMAKE_SOURCE_DIR}/samples")
    if(NOT EXISTS "${CMAKE_BINARY_DIR}/bin/setting.ini")
        file(COPY "${first}" DESTINATION "${CMAKE_BINARY_DIR}/bin")
    endif()
endfunction()
