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
#include "common/census.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;

namespace {

/// Brackets are strangers to it: few texts have any.
constexpr FixedString plain_characters = "0123456789abcdefABCDEF.:-";

/// What a text is made of.
struct Shape {
    Census census{};        ///< brackets count in its length alone
    u32 brackets = 0;       ///< of either kind
    u32 outside_colons = 0; ///< not in brackets

    // What stands ahead of the second colon; if there is none, as in an IPv6 prefix.
    u32 dots_ahead = 1;
    u32 brackets_ahead = 1;

    /// Counts the characters; false if there is one that no text may have.
    bool count(const char *text)
    {
        CensusWalk<plain_characters> walk(text, 2);
        u32 colons = 0; // ahead of the last bracket
        bool inside = false;
        while (true) {
            const char stop = walk.next();
            census = walk.census();
            if (stop == ':') {
                dots_ahead = census.dots();
                brackets_ahead = brackets;
                continue;
            }
            outside_colons += inside ? 0 : census.colons() - colons;
            if (stop != '[' && stop != ']')
                return stop == '\0';
            ++brackets;
            inside = stop == '[';
            colons = census.colons();
        }
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
    if (shape.dots_ahead == 4)
        return SYSDT_Str2Es(text, value, lenient);
    if (brackets == 2 && dashes == 0)
        return (shape.brackets_ahead == 0 ? SYSDT_Str2Inclusive : SYSDT_Str2Ipv6Prefix)(text, value);
    if (brackets == 2 && dashes == 2)
        return colons < 5 ? SYSDT_ERR_FAIL : SYSDT_Str2EvnMac(text, value);
    if ((dots != 3 && dots != 4 && dots != 7) || colons > 4 || brackets != 0)
        return SYSDT_ERR_FAIL;
    if (dashes != 0 && dashes != 2)
        return SYSDT_ERR_FAIL;
    if (dashes == 0 && colons == 2 && shape.dots_ahead == 0)
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
    if (!shape.count(text) || shape.census.length() < 1 || shape.census.length() > 183)
        return SYSDT_ERR_FAIL;
    return read_by_shape(shape, text, value, lenient);
}

u32 SYSDT_Str2EvpnMcRoute(char *text, SYSDT_BolEvpn *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Shape shape;
    return shape.count(text) ? read_by_outer_colons(shape.outside_colons, text, value) : SYSDT_ERR_FAIL;
}
