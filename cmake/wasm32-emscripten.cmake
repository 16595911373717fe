# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# WebAssembly, by Debian's emscripten: small rather than fast, with the exceptions that engines themselves know.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions -sSUPPORT_LONGJMP=wasm -Wno-unused-command-line-argument -include ${CMAKE_CURRENT_LIST_DIR}/../web/older_ranges.hpp")
set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE "LINKER:--whole-archive" "<LINK_ITEM>" "LINKER:--no-whole-archive")
set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE_SUPPORTED TRUE)
