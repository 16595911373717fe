-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Reads an AS number, turns it into 1.10 by way of its script table, writes it back.
local as = assert(bgp.parse("ASNUM", (...)))
print(as)
print(as.hex)

local fields = assert(bgp.table(as))
fields.asNumValue = 65536 + 10
fields.asType = 1
local edited = assert(bgp.value("ASNUM", fields))
print(bgp.print(edited))
print(edited.hex)
