# One interface target carries the language standard, warnings and sanitizers; every target links it.
add_library(quorlin_settings INTERFACE)
target_compile_features(quorlin_settings INTERFACE cxx_std_20)
target_compile_options(quorlin_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fno-omit-frame-pointer)
target_include_directories(quorlin_settings INTERFACE "${CMAKE_SOURCE_DIR}")
if(QUORLIN_WARNINGS_AS_ERRORS)
    target_compile_options(quorlin_settings INTERFACE -Werror)
endif()
# Files that are compiled as one are included, and what a file includes should not use its own names.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(quorlin_settings INTERFACE -Wno-subobject-linkage)
endif()
# A fault that writes where it should not is caught early, or finds nothing it can use. The checks of
# the C library need optimisation; the sanitizers bring better ones of their own.
if(NOT QUORLIN_SANITIZE)
    target_compile_options(quorlin_settings INTERFACE -fstack-protector-strong
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    target_link_options(quorlin_settings INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
if(QUORLIN_SANITIZE)
    # The product is looked at, not the code that tests it: without it half of a build is faster.
    set(instrumented "$<NOT:$<BOOL:$<TARGET_PROPERTY:QUORLIN_TEST_CODE>>>")
    set(flags "-fsanitize=${QUORLIN_SANITIZE};-fno-sanitize-recover=all;-Og")
    target_compile_options(quorlin_settings INTERFACE "$<${instrumented}:${flags}>")
    # GCC lays out a description of every place that the sanitizer of undefined behaviour looks at, 33,000
    # in the tools alone, and the address sanitizer registers each of them at every start. Without them a
    # program ends by an illegal instruction, whose place is reported just as well. Wrong casts between
    # classes with virtual functions cannot be found that way, but only the window has such casts.
    if(QUORLIN_SANITIZE MATCHES undefined AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        set(traps "$<AND:${instrumented},$<BOOL:$<TARGET_PROPERTY:QUORLIN_STARTED_OFTEN>>>")
        target_compile_options(quorlin_settings INTERFACE
            "$<${traps}:-fsanitize-undefined-trap-on-error>")
    endif()
    set(watched "$<NOT:$<BOOL:$<TARGET_PROPERTY:QUORLIN_STAND_IN>>>")
    target_link_options(quorlin_settings INTERFACE "$<${watched}:-fsanitize=${QUORLIN_SANITIZE}>")
endif()

# Sets the property MARK of every target of FOLDER and below.
function(quorlin_mark folder mark)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        set_target_properties(${target} PROPERTIES ${mark} ON)
    endforeach()
    get_property(below DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(subfolder ${below})
        quorlin_mark("${subfolder}" ${mark})
    endforeach()
endfunction()

# LLVM's linker links a test program several times faster; what users run is the platform's work.
find_program(QUORLIN_FAST_LINKER ld.lld)
mark_as_advanced(QUORLIN_FAST_LINKER)
if(QUORLIN_FAST_LINKER AND NOT APPLE AND CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_link_options(quorlin_settings INTERFACE -fuse-ld=lld)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
