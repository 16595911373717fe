# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What a refusal tells, of which text, in characters."""
import pickle

import pytest

import bgpdt


def refusal(type_, text, **options):
    with pytest.raises(ValueError) as caught:
        bgpdt.parse(type_, text, **options)
    assert type(caught.value) is bgpdt.Refusal
    return caught.value


def test_a_text_and_its_place():
    refused = refusal("VRFRD", "192.0.2.1:70000")
    assert refused.type is bgpdt.VRFRD and refused.text == "192.0.2.1:70000"
    assert (refused.position, refused.length) == (10, 5)
    assert refused.text[refused.position:][:refused.length] == "70000"
    assert refused.reason == "70000 is too large here: at most 65535"
    assert (refused.repair, refused.change) == ("192.0.2.1:65535", "value")
    assert refused.other_types == () and refused.other_form is None and refused.forms == ()
    assert str(refused) == (
        'VRFRD refuses "192.0.2.1:70000": 70000 is too large here: at most 65535 (SYSDT_ERR_INVALID_VALUE)\n'
        "  192.0.2.1:70000\n"
        "            ^~~~~\n"
        "  would be accepted, but is another value: 192.0.2.1:65535")


def test_other_types_and_forms():
    refused = refusal("VRFRD", "64496:1:1")
    assert "LARGECOMMUNITY" in refused.other_types and "is a text of" in str(refused)
    forms = refusal("BOLPREFIX", "64496:1:1:1").forms
    assert forms and refusal("BOLPREFIX", "64496:1:1:1").other_form == forms[0]
    assert forms[0].kind and bgpdt.BOLPREFIX(forms[0].example)


def test_repairs_are_accepted():
    spelling = refusal("COMMUNITY", "blackhole")
    assert (spelling.repair, spelling.change) == ("65535:666", "spelling")
    assert bgpdt.COMMUNITY(spelling.repair).community == 65535 << 16 | 666
    assert refusal("MDTPREFIX", "192.0.2.0").change == "example"


def test_places_are_counted_in_characters():
    for front, length in (("\u00e9", 1), ("\U0001f600\u00e9", 2), ("\u4e00", 1)):
        refused = refusal("VRFRD", front + "64496:1")
        assert (refused.position, refused.length) == (0, length), refused
        refused = refusal("VRFRD", "64496:1" + front)
        assert (refused.position, refused.length) == (7, length), refused


def test_of_other_things_than_texts():
    with pytest.raises(bgpdt.Refusal) as caught:
        bgpdt.VRFRD.from_bytes(b"1")
    refused = caught.value
    assert str(refused) == refused.reason == refused.message == "VRFRD has 12 bytes, not 1"
    assert (refused.text, refused.position, refused.repair, refused.type) == (None, None, None, None)


def test_why():
    assert bgpdt.why("VRFRD", "64496:1") is None
    assert bgpdt.why("VRFRD", "64496:x").text == "64496:x"
    with pytest.raises(TypeError):
        bgpdt.why("SID_STRUCTURE", "1")


def test_pickles_and_reprs():
    refused = refusal("VRFRD", "64496:x", mode=1)
    again = pickle.loads(pickle.dumps(refused))
    assert (str(again), again.position) == (str(refused), refused.position)
    assert eval(repr(refused), {"Refusal": bgpdt.Refusal}).reason == refused.reason
    assert str(bgpdt.Refusal()) == "" and str(bgpdt.Refusal("a sentence")) == "a sentence"
    with pytest.raises(KeyError):
        str(bgpdt.Refusal("NOTYPE", "x"))
    assert "takes the text" in str(bgpdt.Refusal("VRFRD", "64496:1"))


def test_a_mode_has_its_own_reason():
    assert "mode 4" in str(refusal("VRFRD", "64496:1", mode=4))


def test_enormous_and_strange_texts():
    for text in ("", " ", "1" * 100_000, "\u4e00" * 50_000, "64496:1\0", "\0", "\ud800", "64496:1\udcff", "\udc80:1",
                 "\U0010ffff", "\n", "64496:1\n\n:", "1:1 " * 20_000):
        refused = refusal("VRFRD", text)
        assert refused.text == text and str(refused)
        if refused.position is not None:
            assert 0 <= refused.position <= refused.position + refused.length <= len(text)
