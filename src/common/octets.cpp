// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "common/octets.hpp"

#include "common/census.hpp"
#include "common/scan.hpp"

namespace bgpdt {

u32 parse_ipv4_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out)
{
    u32 address = 0;
    u32 number = 0;
    if (scan<"%q:%u">(text, address, number) != 2 || number > UINT16_MAX)
        return SYSDT_ERR_FAIL;
    store_ipv4_form(out, codes, address, number);
    return SYSDT_OK;
}

u32 parse_as4dot_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out)
{
    u32 high = 0;
    u32 low = 0;
    u32 number = 0;
    if (scan<"%u.%u:%u">(text, high, low, number) != 3 || (high | low | number) > UINT16_MAX)
        return SYSDT_ERR_FAIL;
    store_as4_form(out, codes, high << 16 | low, number, VRF_RD_FORM_AS4DOT);
    return SYSDT_OK;
}

u32 parse_as_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out)
{
    u64 as = 0;
    u64 number = 0;
    if (scan<"%llu:%llu">(text, as, number) != 2)
        return SYSDT_ERR_FAIL;
    if (as <= UINT16_MAX && number <= UINT32_MAX) {
        store_as2_form(out, codes, static_cast<u32>(as), static_cast<u32>(number));
        return SYSDT_OK;
    }
    if (as > UINT16_MAX && as <= UINT32_MAX && number <= UINT16_MAX) {
        store_as4_form(out, codes, static_cast<u32>(as), static_cast<u32>(number), VRF_RD_FORM_AS4);
        return SYSDT_OK;
    }
    return SYSDT_ERR_FAIL;
}

u32 parse_octets(char *text, const OctetCodes &codes, SYSDT_Octets &out)
{
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789.:">(text);
    if (!census.admits(1, 21) || census.colons() != 1)
        return SYSDT_ERR_FAIL;
    switch (census.dots()) {
    case 0: return parse_as_form(text, codes, out);
    case 1: return parse_as4dot_form(text, codes, out);
    case 3: return parse_ipv4_form(text, codes, out);
    default: return SYSDT_ERR_FAIL;
    }
}

void print_octets(const SYSDT_Octets &value, OctetSplit split, Writer &out)
{
    switch (split) {
    case OctetSplit::unknown:
    case OctetSplit::nothing: break;
    case OctetSplit::ipv4: print<"%q:%u">(out, octets32(value, 2), octets16(value, 6)); break;
    case OctetSplit::as2: print<"%u:%u">(out, octets16(value, 2), octets32(value, 4)); break;
    case OctetSplit::as4: print<"%u:%u">(out, octets32(value, 2), octets16(value, 6)); break;
    case OctetSplit::as4dot: print<"%u.%u:%u">(out, octets16(value, 2), octets16(value, 4), octets16(value, 6)); break;
    }
}

} // namespace bgpdt
