-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Passes on the EVPN route keys of one route type and one Ethernet tag: lua5.4 filter_keys.lua TYPE TAG <KEYS
-- Refused lines are told on standard error, with the place of the first wrong byte.
local bgp = require "bgp"

local route_type, tag = math.tointeger(tonumber(arg[1])), math.tointeger(tonumber(arg[2]))
if not (route_type and tag) then
    io.stderr:write("usage: filter_keys.lua TYPE TAG <KEYS\n")
    os.exit(2)
end

-- The tag stands first in the text of a key, behind the Ethernet segment identifier if there is one; a key of an
-- Ethernet segment itself has none (RFC 7432).
local ethernet_segment <const> = 4
local function tag_of(fields)
    if fields.bolPrefixRtType == ethernet_segment then
        return nil
    end
    local text = fields.bolPrefixRtValue
    local segment = "^%x%x%x%x%.%x%x%x%x%.%x%x%x%x%.%x%x%x%x%.%x%x%x%x:?"
    return math.tointeger(tonumber(text:gsub(segment, ""):match("^%d+")))
end

local refused = 0
for line in io.lines() do
    local key, message, position = bgp.parse("EVNPREFIX", line)
    if not key then
        refused = refused + 1
        io.stderr:write(position and position .. ": " or "", message, "\n")
    else
        local fields = bgp.table(key)
        if fields.bolPrefixRtType == route_type and tag_of(fields) == tag then
            print(key)
        end
    end
end
os.exit(refused == 0 and 0 or 1)
