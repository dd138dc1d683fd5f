# The Debian package keeps the programs in a folder that nobody may write, so its commands are
# launchers that give every user an application folder of his own (see linux/launcher.in).
include(linux/debian_texts.cmake)
set(home lib/quorlin-cleaver)
configure_file(linux/launcher.in launcher @ONLY)
install(TARGETS ${QUORLIN_PROGRAMS} RUNTIME DESTINATION ${home}/bin
    COMPONENT debian EXCLUDE_FROM_ALL)
# Apart from the programs: what lies beside them are settings, and these belong to a user.
set(settings "${CMAKE_CURRENT_BINARY_DIR}/texts/debian/setting.ini")
quorlin_write_first_settings("${settings}" /usr/share/doc/quorlin-cleaver/samples)
install(FILES "${settings}" DESTINATION ${home} COMPONENT debian EXCLUDE_FROM_ALL)
if(QUORLIN_CATALOGUES)
    install(FILES ${QUORLIN_CATALOGUES} DESTINATION ${home}/bin/translations
        COMPONENT debian EXCLUDE_FROM_ALL)
endif()
install(PROGRAMS "${CMAKE_CURRENT_BINARY_DIR}/launcher" DESTINATION ${home}
    COMPONENT debian EXCLUDE_FROM_ALL)
quorlin_install_desktop(debian "" EXCLUDE_FROM_ALL)
quorlin_install_runner_extras(debian "" EXCLUDE_FROM_ALL)
quorlin_install_documents(debian share/doc/quorlin-cleaver EXCLUDE_FROM_ALL)
quorlin_install_manual_pages(debian "" "${QUORLIN_PROGRAMS}" EXCLUDE_FROM_ALL)
quorlin_install_debian_texts(debian quorlin-cleaver lintian-overrides-window)

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
    " COMPONENT debian EXCLUDE_FROM_ALL)
quorlin_install_materials(debian quorlin-cleaver share/doc/quorlin-cleaver EXCLUDE_FROM_ALL)

# The package for servers: the runner and the tools, on Qt Core alone. It keeps nothing in a home,
# so its programs are plain commands; the rules of the machine are a file that dpkg never overwrites.
set(server_programs ${QUORLIN_PROGRAMS})
list(REMOVE_ITEM server_programs quorlin-cleaver)
install(TARGETS ${server_programs} RUNTIME DESTINATION bin COMPONENT server EXCLUDE_FROM_ALL)
install(FILES "${CMAKE_SOURCE_DIR}/samples/setting.ini" DESTINATION ../etc/quorlin
    COMPONENT server EXCLUDE_FROM_ALL)
install(PROGRAMS cluster/split_part cluster/gather_reports cluster/slurm_array cluster/parallel_ssh
    DESTINATION share/quorlin-batch/cluster COMPONENT server EXCLUDE_FROM_ALL)
install(FILES cluster/kubernetes_job.yaml DESTINATION share/quorlin-batch/cluster
    COMPONENT server EXCLUDE_FROM_ALL)
quorlin_install_documents(server share/doc/quorlin-batch EXCLUDE_FROM_ALL)
quorlin_install_runner_extras(server "" EXCLUDE_FROM_ALL)
quorlin_install_manual_pages(server "" "${server_programs}" EXCLUDE_FROM_ALL)
quorlin_install_debian_texts(server quorlin-batch)
install(CODE "
    file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/quorlin-batch\")
    " COMPONENT server EXCLUDE_FROM_ALL)
quorlin_install_materials(server quorlin-batch share/doc/quorlin-batch EXCLUDE_FROM_ALL)

list(APPEND CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_DEBIAN_PACKAGE_NAME quorlin-cleaver)
set(CPACK_DEBIAN_DEBIAN_PACKAGE_SECTION text)
# The plug-ins are loaded by name at run time; these packages hold them, whatever the scan finds.
set(CPACK_DEBIAN_DEBIAN_PACKAGE_DEPENDS "libqt6gui6, libqt6network6, libqt6widgets6")
set(CPACK_DEBIAN_SERVER_PACKAGE_NAME quorlin-batch)
set(CPACK_DEBIAN_SERVER_PACKAGE_SECTION utils)
# Both hold the same commands. Either takes the other's place.
set(CPACK_DEBIAN_DEBIAN_PACKAGE_CONFLICTS quorlin-batch)
set(CPACK_DEBIAN_DEBIAN_PACKAGE_REPLACES quorlin-batch)
set(CPACK_DEBIAN_DEBIAN_PACKAGE_PROVIDES quorlin-batch)
set(CPACK_DEBIAN_SERVER_PACKAGE_CONFLICTS quorlin-cleaver)
set(CPACK_DEBIAN_SERVER_PACKAGE_REPLACES quorlin-cleaver)
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/conffiles" "/etc/quorlin/setting.ini\n")
set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_BINARY_DIR}/conffiles")
