# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Options, and the warnings and code generation that every component shares.
include(CMakeDependentOption)

option(BGPDT_HOST "Build the stand-alone host (needs Lua 5.4)" OFF)
cmake_dependent_option(BGPDT_LIBRARY "Build libbgpdt (needs nlohmann-json)" OFF BGPDT_HOST OFF)
cmake_dependent_option(BGPDT_LINKED "Build bgpdt_linked, libbgpdt with the plug-in and the host in one archive" OFF
    BGPDT_LIBRARY OFF)
cmake_dependent_option(BGPDT_WEB "Build libbgpdt as WebAssembly (needs emscripten)" OFF "BGPDT_LINKED;EMSCRIPTEN" OFF)
cmake_dependent_option(BGPDT_TOOL "Build the command-line tool (needs CLI11, nlohmann-json)" OFF BGPDT_HOST OFF)
cmake_dependent_option(BGPDT_TESTS "Build the tests (needs GoogleTest)" OFF BGPDT_HOST OFF)
cmake_dependent_option(BGPDT_BENCHMARKS "Build the benchmark (needs Google Benchmark, callgrind)" OFF BGPDT_HOST OFF)
option(BGPDT_CALL_GRAPH "Let g++ tell the plug-in's call graph and stack, and test their limits (for powerpc)" OFF)
cmake_dependent_option(BGPDT_FUZZING "Build the fuzzers, and instrument for them (needs clang)" OFF BGPDT_HOST OFF)
set(BGPDT_FUZZING_ENGINE "" CACHE STRING "What fuzzers are linked to, if not libFuzzer; the flags then instrument")
option(BGPDT_COVERAGE "Instrument for coverage of lines, branches and conditions (needs clang 18)" OFF)
option(BGPDT_WERROR "Let no warning pass; another compiler may have more of them" OFF)
option(BGPDT_VALGRIND "Test the vectors under valgrind's memcheck too" OFF)
set(BGPDT_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them")
cmake_dependent_option(BGPDT_LUA_MODULE "Build the module for stock Lua 5.4 (needs nlohmann-json)" OFF BGPDT_HOST OFF)
cmake_dependent_option(BGPDT_LUA_ALONE "Let the Lua module be one file with the libraries it needs in it" OFF
    "BGPDT_LUA_MODULE;BGPDT_LINKED" OFF)
cmake_dependent_option(BGPDT_SQLITE "Build the extension for SQLite (needs its header, nlohmann-json)" OFF BGPDT_HOST OFF)
cmake_dependent_option(BGPDT_PYTHON "Build the package for Python (needs nlohmann-json)" OFF BGPDT_HOST OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(NOT EMSCRIPTEN) # where nothing is loaded
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(BGPDT_WERROR)
    add_compile_options(-Werror)
endif()
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(bgpdt_system ON) # the loader finds what is installed by itself, and one copy of it serves all
endif()
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON) # the build's folder is not part of what is linked
if(BGPDT_SANITIZE)
    add_compile_options(-fsanitize=${BGPDT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options($<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>) # tests call all parsers through one type
    add_link_options(-fsanitize=${BGPDT_SANITIZE})
endif()
if(BGPDT_SANITIZE STREQUAL "memory")
    # The standard library is not instrumented, but for the templates that its users make. What it, the host and the tests
    # write counts as written; only the plug-in is looked at.
    add_compile_options(-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/written.txt)
    add_compile_definitions(_GLIBCXX_EXTERN_TEMPLATE=0)
endif()
if(BGPDT_FUZZING AND NOT BGPDT_FUZZING_ENGINE)
    # Comparisons are not traced: the dictionary has the words that this would find, at half the speed.
    add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
if(BGPDT_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc -fprofile-update=atomic)
    add_link_options(-fprofile-instr-generate)
endif()
