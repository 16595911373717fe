# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Writes OUTPUT, an initializer for each of the grammar files in FOLDER: its name, blanks for points, and its text.
file(GLOB files "${FOLDER}/*.grammar")
list(SORT files)
set(made "")
foreach(file IN LISTS files)
    get_filename_component(name "${file}" NAME)
    string(REGEX REPLACE "\\.grammar$" "" name "${name}")
    string(REPLACE "." " " name "${name}")
    file(READ "${file}" text)
    string(APPEND made "{\"${name}\", R\"grammar(${text})grammar\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "${made}")
