-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Rewrites route targets by a table: lua5.4 rewrite_targets.lua TABLE <TARGETS
-- A line of TABLE is an old and a new route target. They are compared as values, however they are written.
local bgp = require "bgp"

local function target(text, where)
    local value, message = bgp.parse("VRFRT", text)
    if not value then
        io.stderr:write(where, ": ", message, "\n")
        os.exit(1)
    end
    return value
end

-- The eight octets of the extended community (RFC 4360), as a key of Lua tables.
local function octets(value)
    return string.char(table.unpack(bgp.table(value).RtValue))
end

if not arg[1] then
    io.stderr:write("usage: rewrite_targets.lua TABLE <TARGETS\n")
    os.exit(2)
end
local rewritten = {}
local number = 0
for line in io.lines(arg[1]) do
    number = number + 1
    local old, new = line:match("^%s*(%S+)%s+(%S+)%s*$")
    local where = arg[1] .. ":" .. number
    if not old then
        io.stderr:write(where, ": needs an old and a new route target\n")
        os.exit(1)
    end
    rewritten[octets(target(old, where))] = target(new, where)
end

number = 0
for line in io.lines() do
    number = number + 1
    local value = target(line, "line " .. number)
    print(rewritten[octets(value)] or value)
end
