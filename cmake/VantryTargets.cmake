# What all targets have in common, in one place: warnings, Qt's strict switches, sanitizers, visibility.
# Each add_ function takes a target name and lists of facts; nothing else sets flags.

add_library(vantry_common INTERFACE)
target_include_directories(vantry_common INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(
    vantry_common INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                            QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
target_compile_options(vantry_common INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)

# A symbol that the linker must keep unique over the whole process would keep an unloaded module mapped.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(vantry_common INTERFACE -fno-gnu-unique)
endif()

if(VANTRY_SANITIZE)
    target_compile_options(
        vantry_common INTERFACE -fsanitize=${VANTRY_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vantry_common INTERFACE -fsanitize=${VANTRY_SANITIZE})
else()
    # A missing symbol is found when a library is loaded, not when a person reaches the code that needs it.
    target_link_options(vantry_common INTERFACE -Wl,-z,now -Wl,--no-undefined)
endif()

if(VANTRY_FUZZ)
    target_compile_options(vantry_common INTERFACE -fsanitize=fuzzer-no-link)
endif()

# vantry_add_library(NAME KIND SOURCES ... LINKS ... PRIVATE_LINKS ...): a library of the house; KIND is SHARED, STATIC,
# OBJECT or MODULE. PRIVATE_LINKS are no part of what whoever links the library gets.
# A shared library is compiled with <NAME>_LIBRARY defined, by which its export header tells its two sides.
function(vantry_add_library name kind)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;LINKS;PRIVATE_LINKS")
    add_library(${name} ${kind} ${arg_SOURCES})
    string(TOUPPER ${name} upper)
    target_compile_definitions(${name} PRIVATE ${upper}_LIBRARY)
    target_link_libraries(
        ${name}
        PUBLIC $<BUILD_INTERFACE:vantry_common> ${arg_LINKS}
        PRIVATE ${arg_PRIVATE_LINKS})
    if(kind STREQUAL SHARED)
        set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${VANTRY_SOVERSION})
    endif()
endfunction()

# vantry_add_program(NAME SOURCES ... LINKS ...)
function(vantry_add_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE vantry_common ${arg_LINKS})
endfunction()

# vantry_add_manual(PROGRAM ARGUMENTS...): has the program print its manual page, which is made as the file that its
# property VANTRY_MANUAL names, and the German one, VANTRY_MANUAL_DE.
function(vantry_add_manual program)
    set(manuals)
    foreach(language en de)
        set(manual ${CMAKE_CURRENT_BINARY_DIR}/${language}/${program}.1)
        add_custom_command(
            OUTPUT ${manual}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${language}
            COMMAND ${program} --language ${language} ${ARGN} > ${manual}
            DEPENDS ${program}
            VERBATIM)
        list(APPEND manuals ${manual})
    endforeach()
    add_custom_target(${program}_manual ALL DEPENDS ${manuals})
    list(GET manuals 0 english)
    list(GET manuals 1 german)
    set_target_properties(${program} PROPERTIES VANTRY_MANUAL ${english} VANTRY_MANUAL_DE ${german})
endfunction()

# vantry_add_test(SUBJECT [LINKS ...] [DESKTOP] [LONG]): builds SUBJECT_test from SUBJECT_test.cpp in this folder
# and registers it under the name FOLDER/SUBJECT. A DESKTOP test has the X server's own windows, one test at a time;
# all others draw offscreen. These, and LONG ones, begin first, so that none is left alone at the end.
function(vantry_add_test subject)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DESKTOP;LONG" "" "LINKS")
    get_filename_component(room ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    add_executable(${subject}_test ${subject}_test.cpp)
    target_link_libraries(${subject}_test PRIVATE vantry_common test_support ${arg_LINKS})
    set_target_properties(${subject}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    set(name ${room}/${subject})
    set(seconds 600)
    if(VANTRY_SANITIZE)
        set(seconds 3600)
    endif()
    add_test(NAME ${name} COMMAND ${subject}_test)
    set(environment
        QT_QPA_PLATFORM=$<IF:$<BOOL:${arg_DESKTOP}>,xcb,offscreen>
        LC_ALL=C.UTF-8 # in English, on whatever machine
        LANGUAGE=
        QTEST_FUNCTION_TIMEOUT=${seconds}000 # in milliseconds; it would end a function after five minutes
        LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizers/leaks.supp:print_suppressions=0
        TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizers/threads.supp:halt_on_error=1
        ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1)
    if(VANTRY_SANITIZE)
        # No window of ours needs the GL driver, whose own locks and leaks would be reported.
        list(APPEND environment QT_XCB_GL_INTEGRATION=none)
    endif()
    if(VANTRY_SANITIZE STREQUAL "thread")
        # It does not see how glib's event loop hands data to another thread.
        list(APPEND environment QT_NO_GLIB=1)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${seconds} ENVIRONMENT "${environment}")
    if(arg_DESKTOP)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK display)
    endif()
    if(arg_DESKTOP OR arg_LONG)
        set_tests_properties(${name} PROPERTIES COST 100)
    endif()
endfunction()
