# quorlin_add_test(NAME [GUI] [LABELS label...] [LIBRARIES library...] SOURCES file...)
# One Qt test program, registered under its name. GUI programs get the forms' pictures and run on
# the offscreen platform.
function(quorlin_add_test name)
    cmake_parse_arguments(arg "GUI" "" "LABELS;LIBRARIES;SOURCES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    if(arg_GUI)
        target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/resources/icon.qrc")
        set_target_properties(${name} PROPERTIES AUTORCC ON)
        target_link_libraries(${name} PRIVATE quorlin_gui)
        list(APPEND arg_LABELS gui)
    else()
        list(APPEND arg_LABELS unit)
    endif()
    target_link_libraries(${name} PRIVATE quorlin_core Qt6::Test ${arg_LIBRARIES})
    target_compile_definitions(${name} PRIVATE
        QUORLIN_BIN_DIR="${CMAKE_BINARY_DIR}/bin"
        QUORLIN_CORPUS_DIR="${QUORLIN_CORPUS}")
    add_test(NAME ${name} COMMAND ${name})
    # The limits end what hangs; under the sanitizers on a busy machine a batch takes minutes.
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 1200
        ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QTEST_FUNCTION_TIMEOUT=1140000")
endfunction()
