// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which route type the text of an EVPN route key is of.
///
/// 1 to 183 characters: hexadecimal digits, dots, colons, hyphens, and brackets around IPv6 addresses. White space at
/// the ends is cut off.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (3) Nothing in a text names its route type: its separators are counted, and of the texts with two colons and no
///      bracket the one with a dot ahead of the second colon is an IP prefix.
#include "common/scan.hpp"
#include "common/trimmed.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;

namespace {

/// What a text is made of.
struct Shape {
    u32 dots = 0;
    u32 colons = 0;
    u32 outer_colons = 0; ///< outside brackets
    u32 dashes = 0;
    u32 brackets = 0; ///< of either kind

    // What stands ahead of the second colon.
    bool inclusive = false;  ///< no bracket
    bool ipv4_prefix = true; ///< a dot; also if there is no second colon
    bool segment = false;    ///< exactly four dots, which rules the other two out

    /// Counts the characters in one pass; false if there is one that no text may have.
    bool count(const char *text);

private:
    void note_second_colon()
    {
        segment = dots == 4;
        inclusive = brackets == 0 && !segment;
        ipv4_prefix = dots != 0 && !segment;
    }
};

bool Shape::count(const char *text)
{
    bool inside = false;
    for (; *text != '\0'; ++text) {
        switch (*text) {
        case '.': ++dots; break;
        case '-': ++dashes; break;
        case '[':
        case ']':
            ++brackets;
            inside = *text == '[';
            break;
        case ':':
            outer_colons += inside ? 0 : 1;
            if (++colons == 2)
                note_second_colon();
            break;
        default:
            if (format::digit_value<16>(*text) >= 16)
                return false;
        }
    }
    return true;
}

u32 read_by_outer_colons(u32 outer_colons, char *text, SYSDT_BolEvpn *value)
{
    switch (outer_colons) {
    case 6: return SYSDT_Str2EvpnSmetRoute(text, value);
    case 7: return SYSDT_Str2EvpnJoinRoute(text, value);
    case 8: return SYSDT_Str2EvpnLeaveRoute(text, value);
    default: return SYSDT_ERR_FAIL;
    }
}

/// The first line that fits the text decides. (3)
u32 read_by_shape(const Shape &shape, char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    if (shape.outer_colons >= 6 && shape.outer_colons <= 8)
        return read_by_outer_colons(shape.outer_colons, text, value);
    if (shape.segment)
        return SYSDT_Str2Es(text, value, lenient);
    if (shape.brackets == 2 && shape.dashes == 0)
        return (shape.inclusive ? SYSDT_Str2Inclusive : SYSDT_Str2Ipv6Prefix)(text, value);
    if (shape.brackets == 2 && shape.dashes == 2)
        return shape.colons < 5 ? SYSDT_ERR_FAIL : SYSDT_Str2EvnMac(text, value);
    if ((shape.dots != 3 && shape.dots != 4 && shape.dots != 7) || shape.colons > 4 || shape.brackets != 0)
        return SYSDT_ERR_FAIL;
    if (shape.dashes != 0 && shape.dashes != 2)
        return SYSDT_ERR_FAIL;
    if (shape.dashes == 0 && shape.colons == 2 && !shape.ipv4_prefix)
        return SYSDT_Str2Inclusive(text, value);
    if (shape.dashes == 0 && shape.colons == 2)
        return shape.dots == 3 ? SYSDT_Str2IpPrefix(text, value) : SYSDT_ERR_FAIL;
    if (shape.colons == 0 && shape.dots == 4)
        return evpn::read_segment_alone(text, value, lenient);
    if (shape.colons == 1 && shape.dots == 4)
        return SYSDT_Str2Ad(text, value, lenient);
    return shape.colons == 4 ? SYSDT_Str2EvnMac(text, value) : SYSDT_ERR_FAIL;
}

} // namespace

u32 SYSDT_Str2EvnPrefix(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = trimmed(text, 1, 183);
    Shape shape;
    return text != nullptr && shape.count(text) ? read_by_shape(shape, text, value, lenient) : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2EvpnMcRoute(char *text, SYSDT_BolEvpn *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Shape shape;
    return shape.count(text) ? read_by_outer_colons(shape.outer_colons, text, value) : SYSDT_ERR_FAIL;
}
