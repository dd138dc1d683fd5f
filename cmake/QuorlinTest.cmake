# quorlin_add_test_room(ROOM [WINDOW | OUTSIDE] TESTS name... [SOURCES file...] [LIBRARIES library...]
#                       [NEEDS program...] [LABELS label...])
# One program for the tests of a room: "ROOM_tests NAME" runs test_NAME.cpp, and ctest knows it as
# "ROOM.NAME". WINDOW tests link the window's classes and their pictures, run on the offscreen
# platform and stand in a program of their own, "ROOM_window_tests". OUTSIDE tests only start programs and
# look at what these write: they link nothing of the product, so no sanitizer slows them down, and stand
# in "ROOM_outside_tests". SOURCES are what the tests share.
# NEEDS are the programs that they start, all of them: a test that passed is not run again until its own
# program or one of these changes (tests/house/run_tests).
function(quorlin_add_test_room room)
    cmake_parse_arguments(arg "WINDOW;OUTSIDE" "" "TESTS;SOURCES;LIBRARIES;NEEDS;LABELS" ${ARGN})
    if(arg_WINDOW)
        set(program "${room}_window_tests")
        set(main quorlin_window_room)
        list(APPEND arg_NEEDS fake_tool)
        list(APPEND arg_LIBRARIES ${main} quorlin_test_support quorlin_icons)
        list(APPEND arg_LABELS gui)
    else()
        set(program "${room}_tests")
        if(arg_OUTSIDE)
            set(program "${room}_outside_tests")
        endif()
        set(main quorlin_room)
        list(APPEND arg_LIBRARIES ${main})
        list(APPEND arg_LABELS unit)
    endif()
    add_executable(${program} ${arg_SOURCES})
    set_target_properties(${program} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    if(arg_OUTSIDE)
        set_target_properties(${program} PROPERTIES QUORLIN_STAND_IN ON)
    else()
        list(PREPEND arg_LIBRARIES quorlin_core)
    endif()
    target_link_libraries(${program} PRIVATE ${arg_LIBRARIES})
    # Headers that were read without Qt's painting are of no use to a program that has it.
    if(Qt6::Gui IN_LIST arg_LIBRARIES)
        quorlin_precompile(${program} test)
    else()
        target_precompile_headers(${program} REUSE_FROM ${main})
    endif()
    target_include_directories(${program} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    target_compile_definitions(${program} PRIVATE
        QUORLIN_BIN_DIR="${CMAKE_BINARY_DIR}/bin"
        QUORLIN_CORPUS_DIR="${QUORLIN_CORPUS}")
    if(arg_NEEDS)
        add_dependencies(${program} ${arg_NEEDS})
    endif()
    foreach(name ${arg_TESTS})
        quorlin_add_test_source(${program} test_${name}.cpp)
        quorlin_name_test(${room} ${name} ${program} "${arg_LABELS}" ${arg_NEEDS})
    endforeach()
endfunction()

# Adds FILE to PROGRAM and runs Qt's meta-object compiler on it: a rule of its own instead of
# AUTOMOC, which would read every file of every program before each build.
function(quorlin_add_test_source program file)
    get_filename_component(name "${file}" NAME_WE)
    set(moc "${CMAKE_CURRENT_BINARY_DIR}/${name}.moc")
    qt_generate_moc("${file}" "${moc}" TARGET ${program})
    set_property(SOURCE "${file}" APPEND PROPERTY OBJECT_DEPENDS "${moc}")
    target_sources(${program} PRIVATE "${file}")
endfunction()

# Lets ctest run test NAME of PROGRAM, which starts the programs named last.
function(quorlin_name_test room name program labels)
    add_test(NAME ${room}.${name} COMMAND ${program} ${name})
    set(needed ${program} ${ARGN})
    list(TRANSFORM needed REPLACE "(.+)" "$<TARGET_FILE:\\1>")
    # The limits end what hangs; under the sanitizers on a busy machine a batch takes minutes.
    set_tests_properties(${room}.${name} PROPERTIES LABELS "${labels}" TIMEOUT 1200
        REQUIRED_FILES "${needed}"
        ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QTEST_FUNCTION_TIMEOUT=1140000")
endfunction()

# Names programs that only TEST ("ROOM.NAME") of PROGRAM starts.
function(quorlin_test_needs program test)
    add_dependencies(${program} ${ARGN})
    set(needed ${ARGN})
    list(TRANSFORM needed REPLACE "(.+)" "$<TARGET_FILE:\\1>")
    set_property(TEST ${test} APPEND PROPERTY REQUIRED_FILES ${needed})
endfunction()

# Gives tests ("ROOM.NAME") of this folder one more label. Those that are "long" start first, so that
# the others keep all processors busy to the end. Those of the "tree" read sources or documents and
# always run.
function(quorlin_label label)
    foreach(test ${ARGN})
        set_property(TEST ${test} APPEND PROPERTY LABELS ${label})
        if(label STREQUAL long)
            set_property(TEST ${test} PROPERTY COST 100)
        endif()
    endforeach()
endfunction()
