// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "floor.hpp"

namespace bgpdt::bench {

bool ipv6(const char *&at, u8 *out)
{
    u8 groups[16]{};
    int filled = 0;
    int gap = -1; // where "::" stands
    if (*at == ':') {
        if (at[1] != ':')
            return false;
        at += 2;
        gap = 0;
    }
    while (filled < 16) {
        const char *const start = at;
        u32 number;
        if (!group(at, number)) {
            if (gap != filled)
                return false;
            break;
        }
        if (*at == '.' && filled <= 12) {
            u32 tail;
            const char *const dot = at;
            at = start;
            if (ipv4(at, tail)) {
                put(groups + filled, tail);
                filled += 4;
                break;
            }
            at = dot;
        }
        put(groups + filled, static_cast<u16>(number));
        filled += 2;
        if (*at != ':' || filled == 16)
            break;
        if (at[1] == ':') {
            if (gap >= 0)
                return false;
            gap = filled;
            ++at;
        }
        ++at;
    }
    std::memcpy(out, groups, sizeof groups);
    if (gap < 0)
        return filled == 16;
    const int shift = 16 - filled;
    if (shift == 0)
        return false;
    for (int i = filled - 2; i >= gap; i -= 2) // what stands behind the gap belongs to the end
        std::memcpy(out + i + shift, groups + i, 2);
    for (int i = gap; i < filled && i < gap + shift; i += 2)
        std::memset(out + i, 0, 2);
    return true;
}

char *put_ipv6(char *out, const u8 *address)
{
    u16 groups[8];
    int best = 0;
    int longest = 1; // a lone zero group is written
    int run = 0;
    for (int i = 0; i < 8; ++i) {
        groups[i] = get<u16>(address + 2 * i);
        run = groups[i] == 0 ? run + 1 : 0;
        if (run > longest) {
            longest = run;
            best = i + 1 - run;
        }
    }
    const int end = longest == 1 ? 8 : best;
    int i = 0;
    for (; i < end; ++i) {
        if (i != 0)
            out = put(out, ':');
        out = put_hex(out, groups[i]);
    }
    if (longest == 1)
        return out;
    out = put(out, "::");
    if (best == 0 && (longest == 6 || (longest == 5 && groups[5] == 0xFFFF))) {
        if (longest == 5)
            out = put(out, "ffff:");
        return put_ipv4(out, get<u32>(address + 12));
    }
    for (i = best + longest; i < 8; ++i) {
        out = put_hex(out, groups[i]);
        if (i != 7)
            out = put(out, ':');
    }
    return out;
}

} // namespace bgpdt::bench
