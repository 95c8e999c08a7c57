# SPDX-License-Identifier: MIT
# One line makes a kit, a part of the program or a test program. It takes every .cpp file of the folder.

# qel_library(NAME LINK target...): a static library of the .cpp files in the current folder and the folders in it.
function(qel_library name)
    cmake_parse_arguments(ARG "" "" "LINK;LINK_PRIVATE" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*/*.cpp
        ${CMAKE_CURRENT_SOURCE_DIR}/*/*/*.cpp)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_LINK_PRIVATE})
endfunction()

add_custom_target(headless_tests)

# qel_test(NAME LINK target... [FOLDERS folder...] [ENVIRONMENT VAR=VALUE...] [GUI]): a GoogleTest program of the .cpp
# files in the current folder and in the named folders inside it; every test runs in a process of its own. GUI tests run
# without a screen. Tests that link nothing of the GUI are labelled "headless", and the target headless_tests builds
# them.
function(qel_test name)
    cmake_parse_arguments(ARG "GUI" "" "FOLDERS;LINK;ENVIRONMENT" ${ARGN})
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
        if(NOT ARG_LINK MATCHES "kits_interface|qel_charts|qel_app")
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
