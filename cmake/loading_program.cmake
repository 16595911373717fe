# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# bgpdt_loading_program(VARIABLE PROGRAM): how a program is called that loads what is built here. A sanitizer's runtime must
# stand in front of all else in it.
function(bgpdt_loading_program variable program)
    if(NOT BGPDT_SANITIZE)
        set(${variable} ${program} PARENT_SCOPE)
        return()
    endif()
    string(REGEX REPLACE "^(.)[^,]*.*" "\\1san" short "${BGPDT_SANITIZE}") # address or thread
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        set(runtime libclang_rt.${short}-${CMAKE_SYSTEM_PROCESSOR}.so)
    else()
        set(runtime lib${short}.so)
    endif()
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
        OUTPUT_VARIABLE runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
    cmake_path(GET program FILENAME name)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${name})
    file(WRITE ${script} "#!/bin/sh\nLD_PRELOAD=${runtime} exec ${program} \"$@\"\n")
    file(CHMOD ${script} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(${variable} ${script} PARENT_SCOPE)
endfunction()
