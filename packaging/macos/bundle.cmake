# The application bundle: its Contents hold the application folder ("MacOS", with the tools and
# setting.ini) and "Plugins" beside each other. Written with care, but not tried on a Mac yet.
set(contents "Quorlin Cleaver.app/Contents")
configure_file(macos/Info.plist.in Info.plist @ONLY)
install(TARGETS ${QUORLIN_PROGRAMS} RUNTIME DESTINATION "${contents}/MacOS" COMPONENT macos)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/Info.plist" DESTINATION "${contents}" COMPONENT macos)
install(FILES icons/quorlin-cleaver.icns DESTINATION "${contents}/Resources" COMPONENT macos)
if(QUORLIN_CATALOGUES)
    install(FILES ${QUORLIN_CATALOGUES} DESTINATION "${contents}/MacOS/translations" COMPONENT macos)
endif()
install(FILES "${CMAKE_SOURCE_DIR}/LICENSE" DESTINATION "${contents}/Resources" COMPONENT macos)
install(FILES "${CMAKE_SOURCE_DIR}/samples/setting.ini" DESTINATION "${contents}/MacOS"
    COMPONENT macos)

# macdeployqt fetches Qt's frameworks and corrects the programs' references to them. It puts the
# plug-ins into "PlugIns", which the program knows as "Plugins"; on a volume that tells upper from
# lower case that is another folder, so the name is made right.
get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
get_filename_component(qt_tools "${qmake}" DIRECTORY)
find_program(QUORLIN_MACDEPLOYQT macdeployqt HINTS "${qt_tools}" REQUIRED)
set(others ${QUORLIN_PROGRAMS})
list(REMOVE_ITEM others quorlin-cleaver)
install(CODE "
    set(bundle \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Quorlin Cleaver.app\")
    set(others)
    foreach(program ${others})
        list(APPEND others \"-executable=\${bundle}/Contents/MacOS/\${program}\")
    endforeach()
    execute_process(COMMAND \"${QUORLIN_MACDEPLOYQT}\" \"\${bundle}\" \${others}
        COMMAND_ERROR_IS_FATAL ANY)
    file(RENAME \"\${bundle}/Contents/PlugIns\" \"\${bundle}/Contents/Plugins.new\")
    file(RENAME \"\${bundle}/Contents/Plugins.new\" \"\${bundle}/Contents/Plugins\")
    file(WRITE \"\${bundle}/Contents/Resources/qt.conf\" \"[Paths]\\nPlugins = Plugins\\n\")
    # The corrections above break the signatures that arm64 asks for; an own one needs no certificate.
    execute_process(COMMAND codesign --force --deep --sign - \"\${bundle}\"
        COMMAND_ERROR_IS_FATAL ANY)" COMPONENT macos)

list(APPEND CPACK_GENERATOR DragNDrop)
set(CPACK_DMG_VOLUME_NAME "Quorlin Cleaver ${PROJECT_VERSION}")
