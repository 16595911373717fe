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

/// Brackets are strangers to it: few texts have any.
constexpr FixedString plain_characters = "0123456789abcdefABCDEF.:-";

/// What a text is made of.
struct Shape {
    Census census{};        ///< without the brackets
    u32 brackets = 0;       ///< of either kind
    u32 outside_colons = 0; ///< not in brackets

    // What stands ahead of the second colon.
    bool inclusive = false;  ///< no bracket
    bool ipv4_prefix = true; ///< a dot; also if there is no second colon
    bool segment = false;    ///< exactly four dots, which rules the other two out

    /// Counts the characters; false if there are too many, or one that no text may have.
    bool count(const char *text)
    {
        const char *const second_colon = find_second_colon(text);
        if (second_colon != nullptr) {
            const auto ahead = Census::of<plain_characters>(std::string_view(text, second_colon));
            segment = ahead.dots() == 4;
            inclusive = ahead.strangers() == 0 && !segment;
            ipv4_prefix = ahead.dots() != 0 && !segment;
            if (ahead.strangers() == 0) {
                census = ahead;
                outside_colons = ahead.colons();
                text = second_colon;
            }
        }
        const std::size_t length = count_rest(text) ? census.length() + brackets : 0;
        return length >= 1 && length <= 183;
    }

    /// Adds the characters of a text's rest, which begins outside brackets; false if there is one that none may have.
    bool count_rest(const char *rest)
    {
        for (bool inside = false;; ++rest) {
            const auto plain = Census::of_start<plain_characters>(rest);
            census += plain;
            outside_colons += inside ? 0 : plain.colons();
            rest += plain.length();
            if (*rest != '[' && *rest != ']')
                return *rest == '\0';
            ++brackets;
            inside = *rest == '[';
        }
    }

private:
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
    const u32 brackets = shape.brackets;
    const u32 dots = shape.census.dots();
    const u32 colons = shape.census.colons();
    const u32 dashes = shape.census.marks();
    if (shape.outside_colons >= 6 && shape.outside_colons <= 8)
        return read_by_outer_colons(shape.outside_colons, text, value);
    if (shape.segment)
        return SYSDT_Str2Es(text, value, lenient);
    if (brackets == 2 && dashes == 0)
        return (shape.inclusive ? SYSDT_Str2Inclusive : SYSDT_Str2Ipv6Prefix)(text, value);
    if (brackets == 2 && dashes == 2)
        return colons < 5 ? SYSDT_ERR_FAIL : SYSDT_Str2EvnMac(text, value);
    if ((dots != 3 && dots != 4 && dots != 7) || colons > 4 || brackets != 0)
        return SYSDT_ERR_FAIL;
    if (dashes != 0 && dashes != 2)
        return SYSDT_ERR_FAIL;
    if (dashes == 0 && colons == 2 && !shape.ipv4_prefix)
        return SYSDT_Str2Inclusive(text, value);
    if (dashes == 0 && colons == 2)
        return dots == 3 ? SYSDT_Str2IpPrefix(text, value) : SYSDT_ERR_FAIL;
    if (colons == 0 && dots == 4)
        return evpn::read_segment_alone(text, value, lenient);
    if (colons == 1 && dots == 4)
        return SYSDT_Str2Ad(text, value, lenient);
    return colons == 4 ? SYSDT_Str2EvnMac(text, value) : SYSDT_ERR_FAIL;
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
    Shape shape;
    return shape.count_rest(text) ? read_by_outer_colons(shape.outside_colons, text, value) : SYSDT_ERR_FAIL;
}
