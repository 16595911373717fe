// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// AS numbers, as other keys write them too.
#pragma once

#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {

inline char *put_as(char *out, u32 value, u32 type)
{
    return type != 0 ? put(put(put(out, value >> 16), '.'), value & 0xFFFF) : put(out, value);
}

inline int port_as(u32 value, u32 type, char *out, std::size_t size)
{
    return type != 0 ? std::snprintf(out, size, "%u.%u", value >> 16, value & 0xFFFF)
                     : std::snprintf(out, size, "%u", value);
}

/// Plain from 1, or dotted from 1.0.
template <class Entry>
bool floor_as(const char *&at, Entry &out)
{
    u32 high;
    if (!number(at, high))
        return false;
    out.asType = *at == '.';
    if (*at != '.') {
        out.asNumValue = high;
        return high != 0;
    }
    u32 low;
    ++at;
    if (!number(at, low, 65535) || high == 0 || high > 65535)
        return false;
    out.asNumValue = high << 16 | low;
    return true;
}

bool port_parse_as(char *text, SYSDT_AsNum &out);

} // namespace bgpdt::bench
