// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Four small helpers of the text grammars. Each has a result convention of its own, on which its callers rely.
#include "bgp_datatype/bgp_datatype.h"
#include "common/scan.hpp"

using namespace bgpdt;

i32 SYSDT_atoul(const char *text, u32 *number)
{
    if (text == nullptr || number == nullptr)
        return -1;
    *number = 0;
    return scan<"%u">(text, *number) == 1 ? 0 : -1;
}

u32 SYSDT_getStrDotNum(const char *text)
{
    u32 dots = 0;
    for (; *text != '\0'; ++text) {
        if (*text == '.')
            ++dots;
        else if (!format::is_digit(*text))
            return SYSDT_ERR_FAIL; // in the count's place: callers take anything above their limit for a failure
    }
    return dots;
}

u32 BGP_DATATYPE_IsHex(u32 character) { return format::digit_value<16>(static_cast<char>(character)) < 16 ? 1 : 0; }

u32 SYSDT_GetSectionPos(u32 section, u32 separatorPosition, u32 positions[3])
{
    if (section > 3)
        return SYSDT_ERR_FAIL;
    if (section > 0)
        positions[section - 1] = separatorPosition + 1;
    return SYSDT_OK;
}
