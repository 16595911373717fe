# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# The bytes that od -tu1 tells, as the vectors write a text: one byte many times is "x"*300.
function character(byte) {
    if (byte == 10)
        return "\\n"
    if (byte == 34 || byte == 92) # quote and backslash
        return sprintf("\\%c", byte)
    return sprintf(byte >= 32 && byte < 127 ? "%c" : "\\x%02x", byte)
}

function end_run() {
    if (count >= 8) {
        text = text (quoted ? "\"" : "") "\"" character(last) "\"*" count
        quoted = 0
    } else if (count > 0) {
        text = text (quoted ? "" : "\"")
        quoted = 1
        while (count-- > 0)
            text = text character(last)
    }
    count = 0
}

{
    for (i = 1; i <= NF; ++i) {
        if ($i != last)
            end_run()
        last = $i
        ++count
    }
}

END {
    end_run()
    print text == "" ? "\"\"" : text (quoted ? "\"" : "")
}
