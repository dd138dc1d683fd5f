# Run at installation: puts beside the programs every library that they and the plug-ins load. The
# C and C++ runtimes stay the machine's own, as they must fit its kernel and its graphics drivers.
set(runtime "^ld-linux" "^lib(c|m|dl|rt|pthread|resolv|util|stdc\\+\\+|gcc_s)\\.so")
file(GET_RUNTIME_DEPENDENCIES
    EXECUTABLES ${executables}
    MODULES ${plugins}
    RESOLVED_DEPENDENCIES_VAR libraries
    UNRESOLVED_DEPENDENCIES_VAR missing
    PRE_EXCLUDE_REGEXES ${runtime})
if(missing)
    message(FATAL_ERROR "Libraries not found: ${missing}")
endif()
file(INSTALL ${libraries} DESTINATION "${CMAKE_INSTALL_PREFIX}/lib"
    TYPE SHARED_LIBRARY FOLLOW_SYMLINK_CHAIN)
