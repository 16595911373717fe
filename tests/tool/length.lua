-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Reads a table that 'bgpdt table' wrote.
local list = dofile((...)).list
print(#list .. " " .. list[#list].n)
