# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# The box of an explanation: every line has its bars where the first border has its corners. Prints each line that has
# not, and "ok" behind a box without one.
/^\+/ && corners == "" { corners = $0 }
/^[+|]/ {
    lines++
    wrong = length($0) != length(corners)
    for (i = 1; i <= length(corners); i++)
        if (substr(corners, i, 1) == "+" && substr($0, i, 1) !~ /[+|]/)
            wrong = 1
    if (wrong) {
        print
        bad = 1
    }
}
END { print (lines > 4 && !bad ? "ok" : "not lined up") }
