# What every target of the project shares: warnings, Qt strictness, sanitizers, and one call per test.

add_library(kbx_options INTERFACE)
target_include_directories(kbx_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(kbx_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_DEPRECATED_WARNINGS)
if(MSVC)
    # Strict, with the sources read as what they are.
    target_compile_options(kbx_options INTERFACE /W3 /permissive- /Zc:__cplusplus /utf-8)
else()
    target_compile_options(kbx_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
if(KBX_WERROR)
    target_compile_options(kbx_options INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(KBX_SANITIZE)
    target_compile_options(kbx_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(kbx_options INTERFACE -fsanitize=address,undefined)
endif()
if(KBX_THREADS)
    target_compile_options(kbx_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(kbx_options INTERFACE -fsanitize=thread)
endif()
if(KBX_FUZZ)
    # All of it, so that the fuzzer sees which lines an input reaches.
    target_compile_options(kbx_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
    target_link_options(kbx_options INTERFACE -fsanitize=address,undefined)
endif()

# What differs between systems has a source file for each, with this at its name's end.
set(KBX_SYSTEM posix)
if(WIN32)
    set(KBX_SYSTEM windows)
endif()

# kbx_library(name SOURCES files... LINK libraries...): one room's static library.
function(kbx_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC kbx_options ${ARG_LINK})
endfunction()

# kbx_run(name PROGRAM file [ARGS arguments...] [NETWORK] [DISPLAY] [TIMEOUT seconds]): a test that runs a
# program, on the offscreen platform or, with DISPLAY, on a virtual display of its own with a window manager.
# NETWORK gives it a private network namespace in which every port is free and 127.0.0.2 is a second local
# address.
function(kbx_run name)
    cmake_parse_arguments(ARG "NETWORK;DISPLAY" "TIMEOUT;PROGRAM" "ARGS;SOURCES;LINK" ${ARGN})
    set(wrapper)
    if(ARG_DISPLAY)
        list(APPEND wrapper ${CMAKE_SOURCE_DIR}/scripts/in-display)
    endif()
    if(ARG_NETWORK)
        list(APPEND wrapper ${CMAKE_SOURCE_DIR}/scripts/in-network)
    endif()
    if(CMAKE_CROSSCOMPILING) # whoever runs them gives them all one display and one network
        set(wrapper ${CMAKE_CROSSCOMPILING_EMULATOR})
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    add_test(NAME ${name} COMMAND ${wrapper} ${ARG_PROGRAM} ${ARG_ARGS})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
    if(NOT ARG_DISPLAY)
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    endif()
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        QT_QUICK_BACKEND=software
        LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp
        # Qt's own libraries have no frame pointers; suppressions need whole stacks. They do not check
        # their reads either: freed memory is overwritten so that a use of it through Qt fails. The leak check
        # guesses the bounds of late libraries' thread-local variables, and now and then dies of a wrong guess.
        ASAN_OPTIONS=fast_unwind_on_malloc=0:max_free_fill_size=1000000:free_fill_byte=65:intercept_tls_get_addr=0
        UBSAN_OPTIONS=print_stacktrace=1)
endfunction()

# kbx_test(name SOURCES files... LINK libraries... [as kbx_run]): builds one Qt Test program and runs it.
function(kbx_test name)
    cmake_parse_arguments(ARG "NETWORK;DISPLAY" "TIMEOUT" "SOURCES;LINK;ARGS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE kbx_options kbx_test_support ${ARG_LINK} Qt5::Test)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    kbx_run(${name} PROGRAM $<TARGET_FILE:${name}> ${ARGN})
endfunction()
