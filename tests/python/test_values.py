# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What values are to Python: immutable, hashable, ordered by their bytes, and what goes wrong where it would for int."""
import copy
import itertools
import pickle
import sys

import pytest

import bgpdt

RD = bgpdt.VRFRD("64496:1")


def samples():
    """A value of each form of each type, and that of zeros."""
    values = []
    for cls in bgpdt.types():
        info = bgpdt.describe(cls)
        values.append(cls.from_bytes(bytes(info.size)))
        if "parse" in info.operations:
            values += [cls(text) for text in info.samples]
    return values


def test_samples_are_many():
    assert len(samples()) > 100 and len({type(value) for value in samples()}) == 33


def test_equality_and_hash_over_all_pairs():
    values = samples() + samples()
    for first, second in itertools.product(values, values):
        same = type(first) is type(second) and bytes(first) == bytes(second)
        assert (first == second) is same and (first != second) is not same
        if same:
            assert hash(first) == hash(second)


def test_order_is_that_of_bytes():
    for first, second in itertools.product(samples(), samples()):
        if type(first) is not type(second):
            assert first.__lt__(second) is NotImplemented  # of which Python makes a TypeError
            continue
        one, other = bytes(first), bytes(second)
        assert (first < second, first <= second, first > second, first >= second) == (
            one < other, one <= other, one > other, one >= other)


def test_repr_evaluates_to_the_value():
    for value in samples():
        assert eval(repr(value), {"bgpdt": bgpdt}) == value


def test_pickle_and_copy():
    for value, protocol in itertools.product(samples(), range(pickle.HIGHEST_PROTOCOL + 1)):
        assert pickle.loads(pickle.dumps(value, protocol)) == value
    assert copy.copy(RD) is RD and copy.deepcopy([RD])[0] is RD


def test_never_changes():
    for name in ("administrator", "kind", "text", "something"):
        with pytest.raises(AttributeError):
            setattr(RD, name, 1)
    with pytest.raises(TypeError):
        bgpdt.Value()
    with pytest.raises(TypeError):
        class Derived(bgpdt.VRFRD):
            pass


def test_text_bytes_and_tables_go_both_ways():
    for value in samples():
        cls, info = type(value), bgpdt.describe(type(value))
        assert cls.from_bytes(bytes(value)) == value == bgpdt.from_bytes(info.name, bytearray(bytes(value)))
        assert cls.from_hex(value.hex()) == value and bytes.fromhex(value.hex()) == bytes(value)
        native = value.to_bytes(sys.byteorder)
        assert cls.from_bytes(native, sys.byteorder) == value and len(native) == info.size
        assert value.to_bytes("big") == bytes(value)
        assert cls(value) is value if "parse" in info.operations else True


def test_native_bytes_differ_where_there_are_numbers():
    assert bgpdt.ASNUM("64496").to_bytes("big") == bytes.fromhex("0000fbf000000000")
    assert bgpdt.ASNUM("64496").to_bytes(sys.byteorder)[:4] == (64496).to_bytes(4, sys.byteorder)
    other = {"little": "big", "big": "little"}[sys.byteorder]
    if other != "big":
        return
    with pytest.raises(ValueError, match="byteorder must be"):
        RD.to_bytes("middle")


def test_fields():
    assert RD.fields() == {"type code": "0x0000", "administrator": 64496, "assigned number": 1,
                           "text form": "2-octet AS and number"}
    for value in samples():
        attributes = bgpdt.describe(type(value)).attributes
        fields = value.fields()
        for attribute, name in attributes.items():
            if name in fields:
                assert getattr(value, attribute) == value[name] == fields[name]
            else:
                with pytest.raises(AttributeError):
                    getattr(value, attribute)
                with pytest.raises(KeyError):
                    value[name]


def test_kind():
    assert bgpdt.BOLPREFIX("192.0.2.1").kind == "IPV4"
    assert bgpdt.EVNPREFIX("100:32:192.0.2.1").kind == "EVN"
    assert RD.kind is None
    for value in samples():
        assert value.kind == value.explain().get("kind")


def test_explain():
    explained = bgpdt.EVNPREFIX("100:32:192.0.2.1").explain()
    assert explained["hex"] == bgpdt.EVNPREFIX("100:32:192.0.2.1").hex()
    assert sum(part["size"] for part in explained["parts"]) == 89


def test_dialects():
    told = bgpdt.dialects("VRFRD", "65551:9")
    readings = {reading["reader"]: reading for reading in told["readings"]}
    assert told["asked"] == "65551:9"
    assert readings["bgpdt"]["hex"] == bgpdt.VRFRD("65551:9").hex()[:16]
    assert readings["GoBGP"]["change"] == "clamps"
    assert bgpdt.dialects(bgpdt.VRFRD, "70000:12")["asked"] == "65551:9"
    assert bgpdt.dialects("VRFRD", "?")["readings"] == []


def test_compare_is_the_routers():
    first, second = bgpdt.VPNID("1:1"), bgpdt.VPNID("1:2")
    assert first < second and first.compare(second) == 1  # its order is the other way round
    with pytest.raises(TypeError):
        RD.compare(bgpdt.VRFRT("64496:1"))


def test_patterns():
    match RD:
        case bgpdt.VRFRD(administrator=64496, assigned_number=number):
            assert number == 1
        case _:
            pytest.fail("no pattern fits")
    match bgpdt.EVNPREFIX("100:32:192.0.2.1"):
        case bgpdt.EVNPREFIX(mac_address=_):
            pytest.fail("an inclusive multicast route has no MAC address")
        case bgpdt.EVNPREFIX(originator=address):
            assert address == "192.0.2.1"
    match bgpdt.VPNID("10:20"):
        case bgpdt.VPNID(oui, index):
            assert (oui, index) == (0x10, 0x20)


def test_modes():
    assert RD.text(1) == "64496:1" and isinstance(RD.text(3), bytes)
    with pytest.raises(bgpdt.Refusal):
        bgpdt.VRFRD("64496:1", mode=4)
    for mode in (-1, 256, 10**30):
        with pytest.raises((ValueError, OverflowError)):
            bgpdt.parse("VRFRD", "64496:1", mode=mode)
    with pytest.raises(TypeError):
        bgpdt.parse("VRFRD", "64496:1", mode="2")


def test_names(tmp_path):
    names = tmp_path / "names"
    names.write_text("7 red\n")
    bgpdt.load_names(names)
    assert str(bgpdt.PDID2PDNAME("7")) == "red" and bgpdt.PDID2PDNAME("red").index == 7
    names.write_text("7 red green\n")
    with pytest.raises(OSError, match="stands behind the name"):
        bgpdt.load_names(str(names))
    assert str(bgpdt.PDID2PDNAME("7")) == "red"


@pytest.mark.parametrize("call, error", [
    (lambda: bgpdt.parse("VRFRX", "1:1"), KeyError),
    (lambda: bgpdt.parse(7, "1:1"), TypeError),
    (lambda: bgpdt.parse(int, "1:1"), TypeError),
    (lambda: bgpdt.parse("VRFRD", b"1:1"), TypeError),
    (lambda: bgpdt.parse("VRFRD", None), TypeError),
    (lambda: bgpdt.parse("VRFRD"), TypeError),
    (lambda: bgpdt.parse("VRFRD", "1:1", None, None), TypeError),
    (lambda: bgpdt.parse("VRFRD", "1:1", text="1:1"), TypeError),
    (lambda: bgpdt.parse("VRFRD", "1:1", nonsense=1), TypeError),
    (lambda: bgpdt.VRFRD(), TypeError),
    (lambda: bgpdt.VRFRD(1), TypeError),
    (lambda: bgpdt.VRFRD(bgpdt.VRFRT("1:1")), TypeError),
    (lambda: bgpdt.SID_STRUCTURE("1"), TypeError),
    (lambda: bgpdt.TIME_RANGE.from_bytes(bytes(4)).compare(bgpdt.TIME_RANGE.from_bytes(bytes(4))), TypeError),
    (lambda: bgpdt.VRFRD.from_bytes("1" * 12), TypeError),
    (lambda: bgpdt.VRFRD.from_bytes(12), TypeError),
    (lambda: bgpdt.VRFRD.from_bytes(b""), ValueError),
    (lambda: bgpdt.VRFRD.from_hex("0g"), ValueError),
    (lambda: bgpdt.VRFRD.from_hex(b"00"), TypeError),
    (lambda: bgpdt.VRFRD.from_dict({1, 2}), TypeError),
    (lambda: bgpdt.VRFRD.from_dict({}), ValueError),
    (lambda: RD["nothing"], KeyError),
    (lambda: RD[0], TypeError),
    (lambda: RD.nothing, AttributeError),
    (lambda: RD < 1, TypeError),
    (lambda: bgpdt.describe("VRFRX"), KeyError),
])
def test_errors_are_those_of_python(call, error):
    with pytest.raises(error):
        call()


def test_names_of_types_in_any_case():
    assert bgpdt.parse("vrfrd", "64496:1") == bgpdt.parse(bgpdt.VRFRD, "64496:1") == RD
    with pytest.raises(KeyError, match="did you mean VRFRT, VRFRD"):
        bgpdt.parse("VRFRB", "64496:1")


def test_what_is_known_of_types():
    assert len(bgpdt.types()) == 33
    info = bgpdt.describe("VRFRD")
    assert (info.name, info.size, info.samples[0]) == ("VRFRD", 12, "64496:1")
    assert "parse" in info.operations and info.attributes["assigned_number"] == "assigned number"
    assert bgpdt.describe(bgpdt.BOLPREFIX).kinds[0].takes_text is True
    assert "route distinguisher" in bgpdt.VRFRD.__doc__


def test_text_and_format():
    assert str(RD) == f"{RD}" == "64496:1" and f"{RD:>10}" == "   64496:1"
    zeros = bgpdt.SID_STRUCTURE.from_bytes(bytes(7))
    assert str(zeros) == zeros.text()
    broken = bgpdt.VRFRT.from_bytes(b"\xff" * 12)
    assert str(broken) == "0x" + "ff" * 12
    with pytest.raises(bgpdt.Refusal):
        broken.text()
    with pytest.raises(bgpdt.Refusal):
        bgpdt.ASNUM.from_bytes(bytes(8)).check()
