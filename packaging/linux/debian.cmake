# The Debian package keeps the programs in a folder that nobody may write, so its commands are
# launchers that give every user an application folder of his own (see linux/launcher).
set(home lib/quorlin-cleaver)
install(TARGETS ${QUORLIN_PROGRAMS} RUNTIME DESTINATION ${home}/bin
    COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES "${QUORLIN_SETTINGS}" DESTINATION ${home}/bin COMPONENT debian EXCLUDE_FROM_ALL)
install(PROGRAMS linux/launcher DESTINATION ${home} COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES linux/copyright DESTINATION share/doc/quorlin-cleaver
    COMPONENT debian EXCLUDE_FROM_ALL)
quorlin_install_shared(debian "" EXCLUDE_FROM_ALL)

install(CODE "
    set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    set(home \"\${root}/${home}\")
    # The system's Qt lies where the loader looks anyway.
    foreach(program ${QUORLIN_DYNAMIC_PROGRAMS})
        file(RPATH_REMOVE FILE \"\${home}/bin/\${program}\")
    endforeach()
    file(CREATE_LINK \"${QUORLIN_QT_PLUGINS}\" \"\${home}/Plugins\" SYMBOLIC)
    file(MAKE_DIRECTORY \"\${root}/bin\")
    foreach(program ${QUORLIN_PROGRAMS})
        # The tools, too: CPack would count what a link leads to in the package's size again.
        file(CREATE_LINK ../${home}/launcher \"\${root}/bin/\${program}\" SYMBOLIC)
    endforeach()
    file(GLOB pages \"\${root}/share/man/man1/*.1\")
    execute_process(COMMAND gzip -9nf \${pages} COMMAND_ERROR_IS_FATAL ANY)
    " COMPONENT debian EXCLUDE_FROM_ALL)

list(APPEND CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The plug-ins are loaded by name at run time; these packages hold them, whatever the scan finds.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6gui6, libqt6network6, libqt6widgets6")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE zstd)
