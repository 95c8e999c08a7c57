# SPDX-License-Identifier: MIT
# The language, the warnings, ccache and the sanitizers, for every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
# Only debug builds keep asserts; release builds keep symbols small.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(CMAKE_CXX_FLAGS_DEBUG "-O1 -g1")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wno-multichar -Werror)

# A program loads only the libraries that it uses, whatever its rooms were linked with.
add_link_options(-Wl,--as-needed)

set(QEL_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined or thread")
if(QEL_SANITIZE)
    add_compile_options(-fsanitize=${QEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QEL_SANITIZE})
endif()

find_program(QEL_CCACHE ccache)
if(QEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Precompiled headers need the first two settings; the others let build folders and clones share cached results.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${QEL_CCACHE})
endif()
