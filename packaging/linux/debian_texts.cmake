# What Debian's policy asks of every package: copyright, change log and, with their reasons, the
# exceptions to what lintian checks.

# A licence as a paragraph: indented, with a dot on every empty line.
file(READ "${CMAKE_SOURCE_DIR}/LICENSE" QUORLIN_LICENSE_PARAGRAPHS)
string(REGEX REPLACE "[ \n]+$" "" QUORLIN_LICENSE_PARAGRAPHS "${QUORLIN_LICENSE_PARAGRAPHS}")
string(REPLACE "\n" "\n " QUORLIN_LICENSE_PARAGRAPHS " ${QUORLIN_LICENSE_PARAGRAPHS}")
string(REGEX REPLACE "\n +\n" "\n .\n" QUORLIN_LICENSE_PARAGRAPHS "${QUORLIN_LICENSE_PARAGRAPHS}")
string(REGEX REPLACE "\n +\n" "\n .\n" QUORLIN_LICENSE_PARAGRAPHS "${QUORLIN_LICENSE_PARAGRAPHS}")
string(ASCII 12 page_break)
string(REPLACE "${page_break}" "" QUORLIN_LICENSE_PARAGRAPHS "${QUORLIN_LICENSE_PARAGRAPHS}")
configure_file(linux/copyright.in copyright @ONLY)

# Installs the texts of PACKAGE with COMPONENT; OVERRIDES name further lists of exceptions.
function(quorlin_install_debian_texts component package)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/texts/${package}")
    set(CPACK_PACKAGE_NAME ${package})
    configure_file(linux/changelog.in "${folder}/changelog" @ONLY)
    file(WRITE "${folder}/overrides" "")
    foreach(list lintian-overrides ${ARGN})
        configure_file(linux/${list}.in "${folder}/${list}" @ONLY)
        file(READ "${folder}/${list}" text)
        file(APPEND "${folder}/overrides" "${text}")
    endforeach()
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/copyright" "${folder}/changelog"
        DESTINATION share/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(FILES "${folder}/overrides" DESTINATION share/lintian/overrides RENAME ${package}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(CODE "
        set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
        file(GLOB pages \"\${root}/share/man/man1/*.1\" \"\${root}/share/doc/${package}/changelog\")
        execute_process(COMMAND gzip -9nf \${pages} COMMAND_ERROR_IS_FATAL ANY)
        " COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()
