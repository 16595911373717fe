// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// ASNUM: one AS number (RFC 6793) that prints back in the notation it was written in (RFC 5396).
/// ASNUMEXT: the same, but 0 is a number like any other.
///
///      0        4          8
///     +--------+----------+
///     | number | notation |   both u32 in host order
///     +--------+----------+
///
/// Text: asplain "65536", from 1 (ASNUMEXT: from 0); asdot+ "1.0", high part from 1. White space at the ends is cut.
///
/// Irregularities, all deliberate:
///  (1) ASNUM: number 0 means "none": no text gives it, it prints as nothing whatever its notation, and Check rejects
///      it. ASNUMEXT: 0 is read when plain, prints, and passes Check.
///  (2) Every notation but 0 prints dotted; nothing but the printer looks at it, so scripts may store what they like.
///  (3) A dotted text needs a high part from 1, though a small number stored as dotted prints with high part 0.
///  (4) The order is that of the numbers alone (the host's SYSDT_Uint32Compare); the notation does not count.
///  (5) ASNUMEXT has no Help, script and Endian callbacks of its own: its record names those of ASNUM.
///  (6) The notation is stored before the parts of a dotted number are tested, so a refused text may leave it behind.
#include "asn_community/as_number.hpp"

#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

u32 parse_plain(const char *text, u64 lowest, SYSDT_AsNum &out)
{
    u64 number = 0;
    scan<"%llu">(text, number); // no more digits come here than fit
    if (number < lowest || number > UINT32_MAX)
        return SYSDT_ERR_FAIL;
    out = {static_cast<u32>(number), SYSDT_AS_PLAIN};
    return SYSDT_OK;
}

u32 parse_dotted(const char *text, SYSDT_AsNum &out)
{
    u32 high = 0;
    u64 low = 0;
    if (scan<"%u.%llu">(text, high, low) != 2 || high == 0) // (3)
        return SYSDT_ERR_FAIL;
    out.asType = SYSDT_AS_DOTTED; // (6)
    if (high > UINT16_MAX || low > UINT16_MAX)
        return SYSDT_ERR_FAIL;
    out.asNumValue = high << 16 | static_cast<u32>(low);
    return SYSDT_OK;
}

template <auto read>
u32 parse_as_number(char *text, SYSDT_AsNum *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789.">(text);
    return census.admits(1, 11) ? read(text, census.dots(), *out) : u32{SYSDT_ERR_FAIL};
}

u32 print_any(const SYSDT_AsNum &value, u8, Writer &out)
{
    print_as_number(value.asNumValue, value.asType, out);
    return SYSDT_OK;
}

u32 print_unless_zero(const SYSDT_AsNum &value, u8 mode, Writer &out)
{
    return value.asNumValue == 0 ? SYSDT_OK : print_any(value, mode, out); // (1)
}

u32 check_not_zero(const SYSDT_AsNum &value)
{
    return value.asNumValue == 0 ? SYSDT_ERR_INVALID_VALUE : SYSDT_OK; // (1)
}

constexpr Type<SYSDT_AsNum> as_number{
    .kind = SYSDT_TYPE_ASNUM,
    .parse = [](u32, char *text, SYSDT_AsNum &value) { return SYSDT_Str2AsNum(text, &value); },
    .block = 33,
    .limit = 32,
    .print = print_unless_zero,
    .check = check_not_zero,
    .help = {"STRING<1-11>"},
    .layout = as_number_layout,
};

constexpr Type<SYSDT_AsNum> as_number_or_zero{
    .kind = SYSDT_TYPE_ASNUMEXT,
    .parse = [](u32, char *text, SYSDT_AsNum &value) { return SYSDT_Str2AsNumExt(text, &value); },
    .block = 33,
    .limit = 32,
    .print = print_any,
};

} // namespace

u32 bgpdt::read_as_number(const char *text, u32 dots, u64 lowest, SYSDT_AsNum &out)
{
    switch (dots) {
    case 0: return parse_plain(text, lowest, out);
    case 1: return parse_dotted(text, out);
    default: return SYSDT_ERR_FAIL;
    }
}

u32 SYSDT_Str2AsNum(char *text, SYSDT_AsNum *out) { return parse_as_number<SYSDT_Str2AsNumSetAsType>(text, out); }
u32 SYSDT_Str2AsNumExt(char *text, SYSDT_AsNum *out) { return parse_as_number<SYSDT_Str2AsNumToAsType>(text, out); }

BGPDT_FORMAT_IN(SYSDT_AsNumFormatIn, as_number)
BGPDT_FORMAT_OUT(SYSDT_AsNumFormatOut, as_number)
BGPDT_CHECK(SYSDT_AsNumCheck, as_number)
BGPDT_HELP(SYSDT_AsNumHelp, as_number)
BGPDT_LUA_SET(SYSDT_AsNumLuaSet, as_number)
BGPDT_LUA_GET(SYSDT_AsNumLuaGet, as_number)
BGPDT_ENDIAN(SYSDT_AsNumLuaEndian, as_number)

BGPDT_FORMAT_IN(SYSDT_AsNumExtFormatIn, as_number_or_zero)
BGPDT_FORMAT_OUT(SYSDT_AsNumExtFormatOut, as_number_or_zero)
BGPDT_CHECK(SYSDT_AsNumExtCheck, as_number_or_zero)
