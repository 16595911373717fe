# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the manual pages are written with."""

date = "2026-11-22"  # of the version


def roff(text):
    """A line of text: nothing in it is taken for a request."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")
    return "\\&" + text if text.startswith(".") else text


def item(head, text):
    return f".TP\n.B {roff(head)}\n{roff(text)}\n"


def shown(lines):
    """Lines as they stand."""
    return ".PP\n.RS\n.EX\n" + "".join(roff(line) + "\n" for line in lines) + ".EE\n.RE\n"


def manual_head(title, section, version, name):
    return f".TH {title} {section} \"{date}\" \"{version}\" \"BGP data types\"\n.SH NAME\n{name}\n"
