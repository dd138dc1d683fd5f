# What every package brings beside the programs: the manual with its pictures, samples, manual pages,
# what users of the runner want, and an account of the libraries in the package with their notices.

function(quorlin_install_documents component folder)
    file(GLOB pages "${CMAKE_SOURCE_DIR}/docs/*.md")
    file(GLOB samples "${CMAKE_SOURCE_DIR}/samples/*.pdf")
    install(FILES ${pages} "${CMAKE_SOURCE_DIR}/docs/report.schema.json"
        "${CMAKE_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${folder}"
        COMPONENT ${component} ${ARGN})
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs/images" DESTINATION "${folder}"
        COMPONENT ${component} ${ARGN})
    install(FILES ${samples} DESTINATION "${folder}/samples" COMPONENT ${component} ${ARGN})
endfunction()

function(quorlin_install_manual_pages component prefix programs)
    foreach(program ${programs})
        install(FILES man/${program}.1 DESTINATION "${prefix}share/man/man1"
            COMPONENT ${component} ${ARGN})
    endforeach()
endfunction()

# What users of the runner want: completions for their shell and units for a watched folder.
function(quorlin_install_runner_extras component prefix)
    install(FILES completions/quorlin-batch.bash RENAME quorlin-batch
        DESTINATION "${prefix}share/bash-completion/completions" COMPONENT ${component} ${ARGN})
    # Debian's zsh looks for what packages bring in a folder of its own.
    if(component STREQUAL "portable")
        set(zsh_folder site-functions)
    else()
        set(zsh_folder vendor-completions)
    endif()
    install(FILES completions/_quorlin-batch DESTINATION "${prefix}share/zsh/${zsh_folder}"
        COMPONENT ${component} ${ARGN})
    install(FILES systemd/quorlin-inbox.path systemd/quorlin-inbox.service
        DESTINATION "${prefix}share/systemd/user" COMPONENT ${component} ${ARGN})
endfunction()

find_package(Python3 QUIET COMPONENTS Interpreter)

# Writes sbom.spdx.json and notices/ into FOLDER once the rest of COMPONENT is installed. Call it
# last: files installed later are missing from the account.
function(quorlin_install_materials component package folder)
    if(NOT Python3_Interpreter_FOUND)
        message(STATUS "Python 3 is missing: ${package} gets no bill of materials and no notices")
        return()
    endif()
    set(archives)
    if(TARGET quorlin::mupdf_static)
        get_target_property(archives quorlin::mupdf_static INTERFACE_LINK_LIBRARIES)
        list(TRANSFORM archives REPLACE "^m$" "${QUORLIN_ARCHIVE_m}")
    endif()
    install(CODE "
        # An installation may share its folder with others; a package is all that lies in its folder.
        set(installed)
        if(\"${component}\" STREQUAL portable)
            string(REPLACE \";\" \"\\n\" installed \"\${CMAKE_INSTALL_MANIFEST_FILES}\")
            file(WRITE \"${CMAKE_CURRENT_BINARY_DIR}/installed.txt\" \"\${installed}\\n\")
            set(installed --files \"${CMAKE_CURRENT_BINARY_DIR}/installed.txt\"
                --prefix \"\${CMAKE_INSTALL_PREFIX}\")
        endif()
        execute_process(COMMAND \"${Python3_EXECUTABLE}\"
            \"${CMAKE_CURRENT_SOURCE_DIR}/materials\"
            --name ${package} --version ${PROJECT_VERSION} --supplier \"${makerName}\"
            --home-page ${homePageAddress} --root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\"
            --documents ${folder} --compiler \"${CMAKE_CXX_COMPILER}\"
            --plugins \"${QUORLIN_QT_PLUGINS}\" --static-libraries \"${archives}\"
            \${installed} COMMAND_ERROR_IS_FATAL ANY)
        " COMPONENT ${component} ${ARGN})
endfunction()
