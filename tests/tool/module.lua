-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Every function of the module, and what it answers when a type refuses.
print(...)
assert(arg[0] == "module.lua" and arg[1] == "a" and arg[2] == "--json" and #arg == 2)
assert(require("bgp") == bgp)

local function refused(part, first, message)
    assert(first == nil and message:find(part, 1, true), message)
end

local as = assert(bgp.parse("ASNUM", "1.10"))
assert(as.type == "ASNUM" and as.size == 8 and #as.bytes == 8)
assert(as.hex == "0001000a00000001")
assert(string.unpack("=I4", as.bytes) == 65546)
assert(as.anything == nil)
assert(tostring(as) == "1.10")
assert(as == bgp.from_hex("ASNUM", "0x0001000a 00000001"))
assert(as ~= bgp.parse("ASNUM", "65546"))
assert(as ~= "1.10" and as ~= io.stdout)

assert(bgp.from_hex("PDID2PDNAME", "00000001") ~= bgp.from_hex("SETID2SETNAME", "00000001"))

assert(bgp.print(as) == "1.10")
assert(bgp.print(as, 3) == as.bytes)
refused("in mode 0: it cannot be shown, or not in this mode (SYSDT_ERR_FAIL)", bgp.print(as, 0))
assert(bgp.parse("ASNUM", "1", 6).hex == "0000000100000000")
refused("in mode 5: it takes no text in this mode (SYSDT_ERR_FAIL)", bgp.parse("ASNUM", "1", 5))
refused('refuses "65536.1": 65536 is too large here: at most 65535', bgp.parse("ASNUM", "65536.1"))
assert(select(3, bgp.parse("VRFRD", "64496:1x")) == 8)
assert(select(3, bgp.parse("VRFRD", "64496")) == 6)
assert(select("#", bgp.parse("ASNUM", "?!")) == 2 and select("#", bgp.parse("ASNUN", "1")) == 2)
refused("NUL", bgp.parse("ASNUM", "1\0002"))
refused("did you mean ASNUM", bgp.parse("asnun", "1"))
refused("at character 2", bgp.from_hex("ASNUM", "0?"))
refused("1 byte, must be 8", bgp.from_hex("ASNUM", "00"))

assert(bgp.check(as) == true)
local none = assert(bgp.from_hex("ASNUM", "0000000000000000"))
assert(tostring(none) == "")
refused("SYSDT_ERR_INVALID_VALUE", bgp.check(none))
refused("checks no values", bgp.check(bgp.from_hex("PDID2PDNAME", "00000001")))

assert(bgp.compare(as, none) == 1)
assert(bgp.compare(none, as) == -1)
assert(bgp.compare(as, as) == 0)
assert(not pcall(bgp.compare, as, bgp.from_hex("PDID2PDNAME", "00000001")))

local fields = bgp.table(as)
assert(fields.asNumValue == 65546 and fields.asType == 1)
assert(bgp.value("ASNUM", fields) == as)
assert(bgp.value("PDID2PDNAME", 7).hex == "00000007")
refused("SYSDT_ERR_PARAM", bgp.value("ASNUM", { asNumValue = 1 }))
refused("SYSDT_ERR_PARAM", bgp.value("ASNUM", 1))
refused("did you mean ASNUM", bgp.value("ASNUN", fields))

local sizes = {}
for _, type in ipairs(bgp.types()) do
    sizes[type.name] = type.size
    assert(math.type(type.id) == "integer" and type.operations[1])
end
assert(sizes.ASNUM == 8 and sizes.PDID2PDNAME == 4)

assert(not pcall(bgp.print, "ASNUM"))
assert(not pcall(bgp.print, as, 256))
assert(not pcall(bgp.value, "ASNUM"))
for _ = 1, 500 do
    bgp.parse("ASNUM", "x")
end
for _ = 1, 10000 do
    assert(bgp.value("ASNUM", bgp.table(as)) == as)
end
print("ok")
