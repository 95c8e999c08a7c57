# SPDX-License-Identifier: MIT
# One line makes a room of a kit, a part of the program or a test program.

# qel_room(NAME [FOLDER folder] LINK target... [LINK_PRIVATE target...]): a static library of the .cpp files of one
# folder, the current one by default; main.cpp is left to the program. It links only what stands below it, so that a
# program that links a room finds everything that the room needs, and nothing else.
function(qel_room name)
    cmake_parse_arguments(ARG "" "FOLDER" "LINK;LINK_PRIVATE" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_FOLDER}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main[.]cpp$")
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_LINK_PRIVATE})
endfunction()

# qel_kit(NAME ROOM...): the name under which all rooms of a kit are linked: these, and what they stand on.
function(qel_kit name)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${ARGN})
endfunction()

add_custom_target(headless_tests)

# qel_test(NAME LINK target... [FOLDERS folder...] [ENVIRONMENT VAR=VALUE...] [GUI|HEADLESS]): a GoogleTest program of
# the .cpp files in the current folder and in the named folders inside it; every test runs in a process of its own. GUI
# tests run without a screen. Tests that link nothing of the GUI, or say that they need none of it, are labelled
# "headless", and the target headless_tests builds them.
function(qel_test name)
    cmake_parse_arguments(ARG "GUI;HEADLESS" "" "FOLDERS;LINK;ENVIRONMENT" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    foreach(folder ${ARG_FOLDERS})
        file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
        list(APPEND sources ${found})
    endforeach()
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_LINK})
    # The code under test is optimised; optimising the tests would take longer than running them, and twice that under
    # sanitizers. GoogleTest's assertion macros contain an if and an else, and protect themselves against a dangling
    # else.
    target_compile_options(${name} PRIVATE -O0 -Wno-dangling-else)
    # Absolute paths in command lines would keep clones from sharing the compiler's cache.
    foreach(source ${sources})
        file(READ ${source} text)
        if(text MATCHES "QEL_TEST_DATA")
            set_property(SOURCE ${source} APPEND PROPERTY
                COMPILE_DEFINITIONS QEL_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
        endif()
    endforeach()
    if(ARG_GUI)
        # The test library has a main() of its own, which sets the toolkit up before the first test.
        target_link_libraries(${name} PRIVATE GTest::gtest)
        list(APPEND ARG_ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest GTest::gtest_main)
        if(ARG_HEADLESS OR NOT ARG_LINK MATCHES "kits_(platform|core|controls|startup|shortcuts|interface)|qel_(ui|sources|prefs|chart|pages|desktop|app)")
            add_dependencies(headless_tests ${name})
            set(label LABELS headless)
        endif()
    endif()
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
    include(GoogleTest)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 120 ${label})
    # Set separately, because in a property list a value that is itself a list would lose all variables but the first.
    set(environment ${CMAKE_CURRENT_BINARY_DIR}/${name}_environment.cmake)
    file(WRITE ${environment} "set_tests_properties(\${${name}_TESTS} PROPERTIES ENVIRONMENT \"${ARG_ENVIRONMENT}\")\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${environment})
endfunction()
