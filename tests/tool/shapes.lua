-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- Types whose operations are missing, silent or refuse.
local function refused(part, first, message)
    assert(first == nil and message:find(part, 1, true), message)
end

local silent = assert(bgp.from_hex("SILENT", "02"))
assert(tostring(silent) == "0x02")
refused("prints nothing", bgp.print(silent))
refused("SYSDT_ERR_FAIL", bgp.compare(silent, silent))
assert(#bgp.table(silent).list == 2)
refused("SYSDT_ERR_TOO_LONG", bgp.value("SILENT", {}))
refused("makes no value", bgp.parse("SILENT", "x"))
assert(tostring(bgp.from_hex("COPY", "0102")) == "0x0102")
refused("has no script table", bgp.table(bgp.from_hex("PRINTED", "00")))
refused("reads no script table", bgp.value("PRINTED", {}))

-- Longer than any of the router's.
local long = assert(bgp.from_hex("LONG", ("0"):rep(4000)))
assert(long.size == 2000 and #long.hex == 4000 and #tostring(long) == 5000 and #bgp.print(long) == 5000)
print("ok")
