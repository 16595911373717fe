// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Two octets of code and six of value, as route distinguishers, route targets and extended communities have them.
#pragma once

#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {

struct Codes {
    u16 ipv4;
    u16 as2;
    u16 as4;
};
inline constexpr Codes rd_codes{1, 0, 2};
inline constexpr Codes target_codes{0x0102, 0x0002, 0x0202};
inline constexpr Codes soo_codes{0x0103, 0x0003, 0x0203};

struct OctetForm {
    const char *name;
    std::string (*text)(Random &);
};
inline constexpr OctetForm octet_forms[] = {
    {"IPv4", [](Random &random) { return random.ipv4() + ':' + random.u16(); }},
    {"AS2", [](Random &random) { return random.as2() + ':' + random.decimal(); }},
    {"AS4", [](Random &random) { return random.as4() + ':' + random.u16(); }},
    {"AS4 dotted", [](Random &random) { return random.as_dotted() + ':' + random.u16(); }},
};

/// The forms, ending where `value` does; `zero_too`: 0:0 and 0.0:0 are taken.
template <Codes codes, bool zero_too>
bool floor_octets_at(const char *at, u8 *octets, u32 &form)
{
    u32 first;
    u32 second;
    u32 last;
    if (!number(at, first))
        return false;
    if (*at == ':') {
        ++at;
        const bool small = first <= 65535;
        if (!last_number(at, last, small ? UINT32_MAX : 65535) || (!zero_too && (first | last) == 0))
            return false;
        form = small ? VRF_RD_FORM_AS2 : VRF_RD_FORM_AS4;
        put(octets, static_cast<u16>(small ? codes.as2 : codes.as4));
        if (small) {
            put(octets + 2, static_cast<u16>(first));
            put(octets + 4, last);
        } else {
            put(octets + 2, first);
            put(octets + 6, static_cast<u16>(last));
        }
        return true;
    }
    if (!skip(at, '.') || !number(at, second))
        return false;
    if (*at == ':') {
        ++at;
        if (!last_number(at, last, 65535) || first > 65535 || second > 65535 ||
            (!zero_too && (first | second | last) == 0))
            return false;
        form = VRF_RD_FORM_AS4DOT;
        put(octets, codes.as4);
        put(octets + 2, first << 16 | second);
        put(octets + 6, static_cast<u16>(last));
        return true;
    }
    u32 third;
    u32 fourth;
    if (first > 255 || second > 255 || !skip(at, '.') || !octet(at, third) || !skip(at, '.') || !octet(at, fourth) ||
        !skip(at, ':') || !last_number(at, last, 65535))
        return false;
    form = VRF_RD_FORM_IPV4;
    put(octets, codes.ipv4);
    put(octets + 2, first << 24 | second << 16 | third << 8 | fourth);
    put(octets + 6, static_cast<u16>(last));
    return true;
}

template <Codes codes, bool zero_too>
bool floor_octets(char *text, SYSDT_Octets &out)
{
    u32 form;
    const char *const at = SYSDT_BTrim(text);
    if (!floor_octets_at<codes, zero_too>(at, out.octets, form))
        return false;
    out.form = form;
    return true;
}

inline char *put_2_4(char *out, const u8 *at)
{
    return put(put(put(out, static_cast<u32>(get<u16>(at + 2))), ':'), get<u32>(at + 4));
}

inline char *put_4_2(char *out, const u8 *at)
{
    return put(put(put(out, get<u32>(at + 2)), ':'), static_cast<u32>(get<u16>(at + 6)));
}

inline char *put_2_2_2(char *out, const u8 *at)
{
    out = put(put(out, static_cast<u32>(get<u16>(at + 2))), '.');
    return put(put(put(out, static_cast<u32>(get<u16>(at + 4))), ':'), static_cast<u32>(get<u16>(at + 6)));
}

inline char *put_ipv4_2(char *out, const u8 *at)
{
    return put(put(put_ipv4(out, get<u32>(at + 2)), ':'), static_cast<u32>(get<u16>(at + 6)));
}

inline bool port_octets(char *text, const Codes &codes, bool zero_too, SYSDT_Octets &out)
{
    text = port::look(text, 1, 21);
    if (text == nullptr)
        return false;
    const port::Counts counts = port::count(text);
    if (counts.hyphens + counts.others != 0 || counts.colons != 1)
        return false;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    unsigned n = 0;
    unsigned long long admin = 0;
    unsigned long long assigned = 0;
    const auto store = [&out](unsigned code, unsigned x, unsigned y, unsigned z, u32 form) {
        const unsigned words[] = {code, x, y, z};
        for (int i = 0; i < 4; ++i) {
            out.octets[2 * i] = static_cast<u8>(words[i] >> 8);
            out.octets[2 * i + 1] = static_cast<u8>(words[i]);
        }
        out.form = form;
        return true;
    };
    if (counts.dots == 3) {
        if (std::sscanf(text, "%u.%u.%u.%u:%u", &a, &b, &c, &d, &n) != 5 || a > 255 || b > 255 || c > 255 || d > 255 ||
            n > 65535)
            return false;
        return store(codes.ipv4, a << 8 | b, c << 8 | d, n, VRF_RD_FORM_IPV4);
    }
    if (counts.dots == 1) {
        if (std::sscanf(text, "%u.%u:%u", &a, &b, &n) != 3 || a > 65535 || b > 65535 || n > 65535 ||
            (!zero_too && a == 0 && b == 0 && n == 0))
            return false;
        return store(codes.as4, a, b, n, VRF_RD_FORM_AS4DOT);
    }
    if (counts.dots != 0 || std::sscanf(text, "%llu:%llu", &admin, &assigned) != 2)
        return false;
    const auto number = static_cast<unsigned>(assigned);
    if (admin <= 65535) {
        return assigned <= UINT32_MAX && (zero_too || admin != 0 || assigned != 0) &&
               store(codes.as2, static_cast<unsigned>(admin), number >> 16, number, VRF_RD_FORM_AS2);
    }
    return admin <= UINT32_MAX && assigned <= 65535 &&
           store(codes.as4, static_cast<unsigned>(admin >> 16), static_cast<unsigned>(admin), number, VRF_RD_FORM_AS4);
}

} // namespace bgpdt::bench
