# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the patterns of RFC 8294 say of a text."""

from ours import Tool

PATTERNS = {
    "VRFRD": "route-distinguisher",
    "VRFRT": "route-target",
    "SOO": "route-origin",
    "VRFRTV6": "ipv6-route-target",
}


def cells(tool: Tool, kind: str, texts: list[str]) -> list[str]:
    """The raw form is a type and a value in hexadecimal."""
    if kind not in PATTERNS:
        return [""] * len(texts)
    found = []
    for text, taken, is_raw in zip(texts, tool.matches(PATTERNS[kind], texts), tool.matches("raw", texts)):
        code, _, value = text.partition(":")
        read = f"type 0x{code}, value 0x{value}" if is_raw and kind != "VRFRTV6" else "taken"
        found.append(read if taken else "refused")
    return found
