# One interface target carries the language standard, warnings and sanitizers; every target links it.
add_library(quorlin_settings INTERFACE)
target_compile_features(quorlin_settings INTERFACE cxx_std_20)
target_compile_options(quorlin_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fno-omit-frame-pointer)
target_include_directories(quorlin_settings INTERFACE "${CMAKE_SOURCE_DIR}")
if(QUORLIN_WARNINGS_AS_ERRORS)
    target_compile_options(quorlin_settings INTERFACE -Werror)
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
    target_compile_options(quorlin_settings INTERFACE
        -fsanitize=${QUORLIN_SANITIZE} -fno-sanitize-recover=all -O1)
    target_link_options(quorlin_settings INTERFACE -fsanitize=${QUORLIN_SANITIZE})
endif()
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
