// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// TIME_RANGE: a duration of at most 10000 days, 23 hours, 59 minutes and 59 seconds, in seconds.
///
///      0         4
///     +---------+
///     | seconds |   u32 in host order
///     +---------+
///
/// Text: "1d2h3m4s", 8 to 15 characters. White space at the ends is cut off. There is no text form to print.
///
/// Irregularities, all deliberate:
///  (1) Digits behind the "s" are not looked at.
///  (2) Every unit must be there, in this order, and its number too, but a number may have any number of leading zeros.
///  (3) The letters may be capitals.
///  (4) A text that does not parse is SYSDT_ERR_PARAM.
///  (5) A script sees a bare number instead of a table, which without a field name is the value on the stack itself;
///      any number is taken, beyond the longest text's too. LuaSet does not look at the length.
#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/callbacks.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

/// A bit for each unit; 0 for another character.
constexpr u32 unit_bit(char letter)
{
    return letter == 'd' ? 1 : letter == 'h' ? 2 : letter == 'm' ? 4 : letter == 's' ? 8 : 0;
}

/// Whether the text is made of digits and of the letter of each unit, once.
bool has_each_unit_once(const char *text)
{
    u32 seen = 0;
    for (; *text != '\0'; ++text) {
        if (format::is_digit(*text))
            continue;
        const u32 unit = unit_bit(*text);
        if (unit == 0 || (seen & unit) != 0)
            return false;
        seen |= unit;
    }
    return seen == 0xF;
}

constexpr Type<SYSDT_TimeRange> time_range{
    .kind = SYSDT_TYPE_TIME_RANGE,
    .parse =
        [](u32, char *text, SYSDT_TimeRange &value) {
            u32 seconds = 0;
            const u32 status = SYSDT_Str2TimeRange(text, &seconds);
            value.seconds = seconds;
            return status;
        },
    .refusal = SYSDT_ERR_PARAM, // (4)
    .help = {"STRING<8-15>"},
};

} // namespace

u32 SYSDT_Str2TimeRange(char *text, u32 *seconds)
{
    if (text == nullptr || seconds == nullptr)
        return SYSDT_ERR_NULL_PTR;
    *seconds = 0;
    text = PAL_StrTrim(text);
    if (text == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (const std::size_t length = std::strlen(text); length < 8 || length > 15)
        return SYSDT_ERR_FAIL;
    PAL_lowercase(text); // (3)
    u32 d = 0;
    u32 h = 0;
    u32 m = 0;
    u32 s = 0;
    // Behind the fourth number stands the "s", the only letter left.
    if (!has_each_unit_once(text) || scan<"%ud%uh%um%us">(text, d, h, m, s) != 4) // (1) (2)
        return SYSDT_ERR_FAIL;
    if (d > 10000 || h > 23 || m > 59 || s > 59)
        return SYSDT_ERR_FAIL;
    *seconds = ((d * 24 + h) * 60 + m) * 60 + s;
    return SYSDT_OK;
}

BGPDT_FORMAT_IN(SYSDT_TimeRangeFormatIn, time_range)
BGPDT_HELP(SYSDT_TimeRangeHelp, time_range)

u32 SYSDT_TimeRangeLuaSet(void *state, i32 table, const char *name, u32, u32, const void *data) // (5)
{
    if (state == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (name == nullptr)
        SYSDT_SPTI_PushUInt(state, load<u32>(data));
    else
        script::Table::at(state, table).set_number(name, load<u32>(data));
    return SYSDT_OK;
}

u32 SYSDT_TimeRangeLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data) // (5)
{
    if (state == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < sizeof(SYSDT_TimeRange))
        return SYSDT_ERR_PARAM;
    if (name != nullptr)
        return script::Table::at(state, table).get_field(name, time_range_fields[0], static_cast<u8 *>(data));
    store(data, SYSDT_SPTI_ToUInt(state, table));
    return SYSDT_OK;
}
