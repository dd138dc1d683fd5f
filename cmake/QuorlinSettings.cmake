# One interface target carries the language standard, warnings and sanitizers; every target links it.
add_library(quorlin_settings INTERFACE)
target_compile_features(quorlin_settings INTERFACE cxx_std_20)
target_compile_options(quorlin_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -fno-omit-frame-pointer)
target_include_directories(quorlin_settings INTERFACE "${CMAKE_SOURCE_DIR}")
if(QUORLIN_WARNINGS_AS_ERRORS)
    target_compile_options(quorlin_settings INTERFACE -Werror)
endif()
if(QUORLIN_SANITIZE)
    target_compile_options(quorlin_settings INTERFACE
        -fsanitize=${QUORLIN_SANITIZE} -fno-sanitize-recover=all -O1)
    target_link_options(quorlin_settings INTERFACE -fsanitize=${QUORLIN_SANITIZE})
endif()
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
