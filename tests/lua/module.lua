-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- The module in the stock interpreter.
local bgp = require "bgp"
assert(_G.bgp == nil, "a module sets no global")
assert(require "bgp" == bgp)

-- The annotations are of its functions, and Lua.
local annotated = {}
for line in io.lines(arg[1]) do
    local name, parameters = line:match("^function bgp%.(%w[%w_]*)%((.*)%) end$")
    if name then
        annotated[name] = parameters
    end
end
assert(loadfile(arg[1]))
for name in pairs(bgp) do
    assert(annotated[name], name)
end
for name in pairs(annotated) do
    assert(bgp[name], name)
end

local rd = assert(bgp.parse("VRFRD", "64496:1"))
assert(rd.type == "VRFRD" and tostring(rd) == "64496:1")
assert(bgp.value("VRFRD", bgp.table(rd)) == rd)

-- What is no value equals none.
local equals = debug.getmetatable(rd).__eq
assert(equals(rd, bgp.parse("VRFRD", "064496:1")) and not equals(rd, bgp.parse("VRFRD", "64496:2")))
assert(not equals(rd, "64496:1") and not equals("64496:1", rd) and not equals(rd, bgp.parse("ASNUM", "1")))

-- A refusal is nil, a message and, of a text, the place of the first wrong byte.
local value, message, position = bgp.parse("VRFRD", "64496:1x")
assert(value == nil and message:find("VRFRD refuses \"64496:1x\"", 1, true) and position == 8)
assert(select("#", bgp.parse("NONE", "1")) == 2)

-- Or nil alone.
assert(bgp.try_parse("VRFRD", "64496:1") == rd and bgp.try_parse("ASNUM", "1", 6).hex == "0000000100000000")
assert(bgp.try_parse("ASNUM", "1", 5) == nil and bgp.try_parse("ASNUM", "1\0") == nil)
assert(select("#", bgp.try_parse("VRFRD", "64496:1x")) == 1 and bgp.try_parse("VRFRD", "64496:1x") == nil)
assert(select("#", bgp.try_parse("SID_STRUCTURE", "1")) == 1)
assert(select(2, bgp.try_parse("NONE", "1")) == "there is no type NONE; bgp.types() lists the types")

-- In the order of their type, of which bgp.compare tells what the router knows: EVPN keys of different route types too.
local keys = {}
for _, text in ipairs { "99:192.0.2.0:24", "100:32:192.0.2.1", "100:192.0.2.0:24", "99:32:192.0.2.1" } do
    keys[#keys + 1] = assert(bgp.try_parse("EVNPREFIX", text))
end
assert(bgp.compare(keys[1], keys[2]) == nil)
table.sort(keys)
local sorted = {}
for i, key in ipairs(keys) do
    sorted[i] = tostring(key)
    assert(key <= keys[#keys] and not (key < keys[1]) and not (key < key) and key <= key)
end
assert(table.concat(sorted, " ") == "99:32:192.0.2.1 100:32:192.0.2.1 99:192.0.2.0:24 100:192.0.2.0:24")

-- What else there is to do is told in this module's words.
local function why(...)
    return select(2, ...)
end
assert(why(bgp.parse("NONE", "1")) == "there is no type NONE; bgp.types() lists the types")
assert(why(bgp.parse("SID_STRUCTURE", "1")) == "SID_STRUCTURE takes no text; bgp.from_hex() takes its values")
assert(why(bgp.print(bgp.parse("CVRFNAME", "abc"), 2)) ==
    "CVRFNAME refuses to print the value in mode 2: this mode takes a display record of another length " ..
    "(SYSDT_ERR_MISMATCH)")

-- What is of another Lua type is an argument error, and nothing else is an error.
for _, call in ipairs {
    { bgp.parse, 1 }, { bgp.parse, "ASNUM", {} }, { bgp.parse, "ASNUM", "1", "x" }, { bgp.parse, "ASNUM", "1", 256 },
    { bgp.from_hex, "ASNUM" }, { bgp.value, "ASNUM" }, { bgp.table, "ASNUM" }, { bgp.print, rd, {} }, { bgp.check },
    { bgp.try_parse, "ASNUM", {} }, { bgp.try_parse, "ASNUM", "1", 256 },
    { bgp.compare, rd, "64496:1" }, { bgp.compare, rd, bgp.parse("ASNUM", "1") },
} do
    local done, why = pcall(table.unpack(call))
    assert(not done and why:find("bad argument", 1, true), why)
end
for _, other in ipairs { "64496:1", assert(bgp.parse("ASNUM", "1")) } do
    assert(not pcall(function() return rd < other end) and not pcall(function() return other <= rd end))
end
for _, call in ipairs {
    { bgp.parse, "ASNUM", "" }, { bgp.parse, "ASNUM", "1\0" }, { bgp.parse, "ASNUM", "1", 255 },
    { bgp.parse, "ATTRIDBITMAP", "1" }, { bgp.from_hex, "ASNUM", "00" }, { bgp.from_hex, "ASNUM", "zz" },
    { bgp.value, "VRFRD", {} }, { bgp.value, "VRFRD", 1 }, { bgp.value, "VRFRD", nil },
    { bgp.value, "VRFRD", setmetatable({}, { __index = error }) },
    { bgp.table, bgp.from_hex("BOLPREFIX", ("ff"):rep(89)) },
} do
    local done, none, why = pcall(table.unpack(call, 1, 4))
    assert(done and none == nil and type(why) == "string", why)
end

-- Errors of the engine and of the types cross the boundary many times, in coroutines too.
local turns = coroutine.wrap(function()
    for i = 1, 2000 do
        assert(not pcall(bgp.print, i))
        assert(bgp.value("VRFRD", {}) == nil)
        local key = assert(bgp.parse("EVNPREFIX", "100:192.0.2.0:24"))
        assert(bgp.table(key).bolPrefixRtValue == "100:192.0.2.0:24")
        if i % 100 == 0 then
            collectgarbage()
            coroutine.yield(i)
        end
    end
end)
for i = 100, 2000, 100 do
    assert(turns() == i)
end
print("ok")
