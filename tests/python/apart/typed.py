# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What type checkers know: they read this, nothing runs it."""
from typing_extensions import assert_type

import bgpdt

rd = bgpdt.VRFRD("64496:1")
assert_type(rd.administrator, int | str)
assert_type(rd.assigned_number, int)
assert_type(rd.to_dict()["RdValue"], list[int])
assert_type(bgpdt.VRFRD.from_bytes(bytes(rd), "little"), bgpdt.VRFRD)
assert_type(bgpdt.parse(bgpdt.VRFRD, "64496:1"), bgpdt.VRFRD)
assert_type(bgpdt.parse("VRFRD", "64496:1"), bgpdt.Value)
assert_type(bgpdt.LARGECOMMUNITY("64496:1:2").type, int)

key = bgpdt.EVNPREFIX("100:32:192.0.2.1")
assert_type(key.kind, str | None)
match key:
    case bgpdt.EVNPREFIX(originator=address):
        assert_type(address, str)

for value in bgpdt.parse_many(bgpdt.VRFRD, ["64496:1", None]):
    assert_type(value, bgpdt.VRFRD | None)
assert_type(bgpdt.print_many("VRFRD", [rd])[0], str | None)
assert_type(bgpdt.explain_many("VRFRD", [rd], fields=["administrator"])[0], dict[str, int | str] | None)

try:
    bgpdt.VRFRD("x")
except bgpdt.Refusal as refused:
    assert_type(refused.position, int | None)
    assert_type(refused.reason, str)
    assert_type([form.example for form in refused.forms], list[str])
assert_type(bgpdt.describe("VRFRD").samples, tuple[str, ...])

rd.nothing  # type: ignore[attr-defined]  # pyright: ignore
bgpdt.VRFRD(b"64496:1")  # type: ignore[arg-type]  # pyright: ignore
rd.compare(bgpdt.VRFRT("64496:1"))  # type: ignore[arg-type]  # pyright: ignore
