-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Audits communities: lua5.4 audit_communities.lua AS... <LISTS
-- A line is a list of communities. Told is what is no list, and each community of an AS that is not among those given;
-- the well-known ones (RFC 1997: 65535:x) pass. The status is 1 if anything was told.
local bgp = require "bgp"

local allowed = { [0xffff] = true }
for _, number in ipairs(arg) do
    local as, message = bgp.parse("ASNUM", number)
    if not as then
        io.stderr:write(message, "\n")
        os.exit(2)
    end
    allowed[bgp.table(as).asNumValue] = true
end

local unused <const> = 2 -- the notation of an entry that holds no community
local number, told = 0, 0
local function tell(...)
    told = told + 1
    print(number .. ": " .. table.concat({ ... }))
end
for line in io.lines() do
    number = number + 1
    local list, message, position = bgp.parse("CMNTY_ENHANCE", line)
    if not list then
        tell(message, position and " at byte " .. position or "")
    else
        for _, entry in ipairs(bgp.table(list).stCmnty) do
            if entry.type ~= unused and not allowed[entry.community >> 16] then
                tell(("%d:%d is of AS %d"):format(entry.community >> 16, entry.community & 0xffff,
                                                  entry.community >> 16))
            end
        end
    end
end
os.exit(told == 0 and 0 or 1)
