-- SPDX-License-Identifier: Apache-2.0
-- The module in the stock interpreter.
local bgp = require "bgp"
assert(_G.bgp == nil, "a module sets no global")
assert(require "bgp" == bgp)

local rd = assert(bgp.parse("VRFRD", "64496:1"))
assert(rd.type == "VRFRD" and tostring(rd) == "64496:1")
assert(bgp.value("VRFRD", bgp.table(rd)) == rd)

-- A refusal is nil, a message and, of a text, the place of the first wrong byte.
local value, message, position = bgp.parse("VRFRD", "64496:1x")
assert(value == nil and message:find("VRFRD refuses \"64496:1x\"", 1, true) and position == 8)
assert(select("#", bgp.parse("NONE", "1")) == 2)

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
