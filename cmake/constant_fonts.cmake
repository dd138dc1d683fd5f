# Copies the fonts in the archive LIBRARY to the archive OUTPUT, in a section of constants.
# Called as a script with AR and OBJCOPY.
execute_process(COMMAND "${AR}" t "${LIBRARY}" OUTPUT_VARIABLE members COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+\\.(ttf|ttc|otf|cff)\\.o" fonts "${members}")
set(folder "${OUTPUT}.d")
file(REMOVE_RECURSE "${folder}")
file(REMOVE "${OUTPUT}")
file(MAKE_DIRECTORY "${folder}")
execute_process(COMMAND "${AR}" x "${LIBRARY}" ${fonts}
    WORKING_DIRECTORY "${folder}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${AR}" cr "${OUTPUT}" ${fonts}
    WORKING_DIRECTORY "${folder}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${OBJCOPY}" --rename-section .data=.rodata,alloc,load,readonly,data,contents
    "${OUTPUT}" COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE "${folder}")
