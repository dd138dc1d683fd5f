# A folder that can be moved anywhere and runs on a machine without Qt:
#   quorlin-cleaver  starts the window
#   bin/             the application folder: programs, setting.ini
#   Plugins/  lib/   Qt's plug-ins, the libraries of both
#   share/           manual and manual pages, icons, samples, notices of the libraries

# Qt's libraries would otherwise come to lie among the machine's own.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
    set(CMAKE_INSTALL_PREFIX "/opt/quorlin-cleaver" CACHE PATH "Where to install" FORCE)
endif()

# A run path of the old kind also serves the plug-ins and the libraries that libraries need, none of
# which know where they lie. A fully static program has none.
foreach(program ${QUORLIN_PROGRAMS})
    get_target_property(options ${program} LINK_OPTIONS)
    if(NOT "-static" IN_LIST options)
        set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/../lib")
        target_link_options(${program} PRIVATE LINKER:--disable-new-dtags)
        list(APPEND QUORLIN_DYNAMIC_PROGRAMS ${program})
    endif()
endforeach()

install(TARGETS ${QUORLIN_PROGRAMS} RUNTIME DESTINATION bin COMPONENT portable)
if(QUORLIN_CATALOGUES)
    install(FILES ${QUORLIN_CATALOGUES} DESTINATION bin/translations COMPONENT portable)
endif()
install(FILES linux/qt.conf DESTINATION bin COMPONENT portable)
file(READ linux/window_help.txt QUORLIN_WINDOW_HELP)
configure_file(linux/quorlin-cleaver.in quorlin-cleaver @ONLY)
install(PROGRAMS "${CMAKE_CURRENT_BINARY_DIR}/quorlin-cleaver" DESTINATION . COMPONENT portable)
install(FILES "${CMAKE_SOURCE_DIR}/LICENSE" DESTINATION . COMPONENT portable)

# The settings belong to the user once they exist: laid down, never overwritten.
set(settings "${CMAKE_CURRENT_BINARY_DIR}/texts/portable/setting.ini")
quorlin_write_first_settings("${settings}" ../share/doc/quorlin-cleaver/samples)
install(CODE "
    set(folder \"\${CMAKE_INSTALL_PREFIX}/bin\")
    if(NOT EXISTS \"\$ENV{DESTDIR}\${folder}/setting.ini\")
        file(INSTALL \"${settings}\" DESTINATION \"\${folder}\")
    endif()" COMPONENT portable)

# Only what a window needs: the platforms, the pictures' formats, text input, and TLS for Network.
set(plugins)
foreach(name
        platforms/libqxcb platforms/libqoffscreen platforms/libqwayland-generic
        imageformats/libqjpeg imageformats/libqico imageformats/libqgif
        tls/libqopensslbackend tls/libqcertonlybackend
        platforminputcontexts/libcomposeplatforminputcontextplugin
        platforminputcontexts/libibusplatforminputcontextplugin)
    set(file "${QUORLIN_QT_PLUGINS}/${name}.so")
    if(EXISTS "${file}")
        get_filename_component(kind "${name}" DIRECTORY)
        install(PROGRAMS "${file}" DESTINATION "Plugins/${kind}" COMPONENT portable)
        list(APPEND plugins "${file}")
    endif()
endforeach()

set(executables)
foreach(program ${QUORLIN_DYNAMIC_PROGRAMS})
    list(APPEND executables "$<TARGET_FILE:${program}>")
endforeach()
install(CODE "
    set(executables \"${executables}\")
    set(plugins \"${plugins}\")
    include(\"${CMAKE_CURRENT_LIST_DIR}/libraries.cmake\")" COMPONENT portable)

# What a desktop wants: menu entry, metainfo, icons.
function(quorlin_install_desktop component prefix)
    install(FILES linux/quorlin-cleaver.desktop DESTINATION "${prefix}share/applications"
        COMPONENT ${component} ${ARGN})
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/com.example.cleaver.metainfo.xml"
        DESTINATION "${prefix}share/metainfo" COMPONENT ${component} ${ARGN})
    foreach(size 16 24 32 48 64 128 256 512)
        install(FILES "icons/quorlin-cleaver-${size}.png" RENAME quorlin-cleaver.png
            DESTINATION "${prefix}share/icons/hicolor/${size}x${size}/apps"
            COMPONENT ${component} ${ARGN})
    endforeach()
    install(FILES icons/quorlin-cleaver.svg DESTINATION "${prefix}share/icons/hicolor/scalable/apps"
        COMPONENT ${component} ${ARGN})
endfunction()

configure_file(linux/metainfo.xml.in com.example.cleaver.metainfo.xml @ONLY)
quorlin_install_desktop(portable "")
quorlin_install_runner_extras(portable "")
quorlin_install_documents(portable share/doc/quorlin-cleaver)
quorlin_install_manual_pages(portable "" "${QUORLIN_PROGRAMS}")
# Last, because it looks at everything that is installed.
quorlin_install_materials(portable quorlin-cleaver share/doc/quorlin-cleaver)
list(APPEND CPACK_GENERATOR TGZ)
