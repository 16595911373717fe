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
#include <cstring>

#include "common/census.hpp"
#include "common/scan.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;

namespace {

/// What is outside a text's brackets.
struct Outside {
    u32 colons = 0;
    u32 brackets = 0; ///< themselves, of either kind

    /// Counts them; false if there is a character that no text may have.
    bool count(const char *text)
    {
        bool inside = false;
        for (;; ++text) {
            if (format::digit_value<16>(*text) < 16)
                continue;
            switch (*text) {
            case ':': colons += inside ? 0 : 1; break;
            case '[':
            case ']':
                ++brackets;
                inside = *text == '[';
                break;
            case '.':
            case '-': break;
            default: return *text == '\0';
            }
        }
    }
};

/// What a text is made of.
struct Shape {
    u32 dots = 0;
    u32 colons = 0;
    u32 dashes = 0;
    Outside outside{};

    // What stands ahead of the second colon.
    bool inclusive = false;  ///< no bracket
    bool ipv4_prefix = true; ///< a dot; also if there is no second colon
    bool segment = false;    ///< exactly four dots, which rules the other two out

    /// Counts the characters; false if there are too many, or one that no text may have.
    bool count(const char *text)
    {
        const char *const second_colon = find_second_colon(text);
        Census census = second_colon == nullptr ? census_of(text) : census_of(std::string_view(text, second_colon));
        if (second_colon != nullptr) {
            segment = census.dots() == 4;
            inclusive = census.strangers() == 0 && !segment;
            ipv4_prefix = census.dots() != 0 && !segment;
            census += census_of(second_colon);
        }
        if (census.length() < 1 || census.length() > 183)
            return false;
        dots = census.dots();
        colons = census.colons();
        dashes = census.marks();
        outside.colons = colons;
        if (census.strangers() == 0)
            return true;
        outside = {};
        return outside.count(text);
    }

private:
    /// Brackets are strangers to it: few texts have any.
    static Census census_of(auto text) { return Census::of<"0123456789abcdefABCDEF.:-">(text); }

    static const char *find_second_colon(const char *text)
    {
        const char *const first = std::strchr(text, ':');
        return first == nullptr ? nullptr : std::strchr(first + 1, ':');
    }
};

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
    const u32 brackets = shape.outside.brackets;
    if (shape.outside.colons >= 6 && shape.outside.colons <= 8)
        return read_by_outer_colons(shape.outside.colons, text, value);
    if (shape.segment)
        return SYSDT_Str2Es(text, value, lenient);
    if (brackets == 2 && shape.dashes == 0)
        return (shape.inclusive ? SYSDT_Str2Inclusive : SYSDT_Str2Ipv6Prefix)(text, value);
    if (brackets == 2 && shape.dashes == 2)
        return shape.colons < 5 ? SYSDT_ERR_FAIL : SYSDT_Str2EvnMac(text, value);
    if ((shape.dots != 3 && shape.dots != 4 && shape.dots != 7) || shape.colons > 4 || brackets != 0)
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
    text = SYSDT_BTrim(text);
    Shape shape;
    return shape.count(text) ? read_by_shape(shape, text, value, lenient) : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2EvpnMcRoute(char *text, SYSDT_BolEvpn *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Outside outside;
    return outside.count(text) ? read_by_outer_colons(outside.colons, text, value) : SYSDT_ERR_FAIL;
}
