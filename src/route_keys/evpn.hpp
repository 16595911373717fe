// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the files of the EVPN route key share.
#pragma once

#include <cstring>

#include "bgp_datatype/bgp_datatype.h"
#include "common/cut.hpp"
#include "common/scan.hpp"
#include "common/writer.hpp"

namespace bgpdt::evpn {

/// No field but the last of a text is longer, and no IPv6 address.
inline constexpr std::size_t longest_field = 49;

/// Takes a field off a text and moves to its end: up to the next colon, or all the rest if it is the last.
///
/// @param most  how many characters it may have
/// @return none if it is empty or too long, or no colon follows
Cut take_field(char *&at, bool last, std::size_t most = SIZE_MAX);

/// What a field may be.
struct Limits {
    u32 characters = 0;
    u32 lowest = 0; ///< of a number
    u32 highest = 0;
};

/// Reads a number that is a field and moves to its end; the last one is read by the host.
inline u32 take_number(char *&at, bool last, const Limits &limits, u32 &out)
{
    u32 number = 0;
    std::size_t length = 0;
    if (last) {
        length = std::strlen(at);
        if (SMP_StrToUint32(at, &number) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
    } else {
        const char *const end = format::read_digits<10>(at, nullptr, number);
        if (end == nullptr || *end != ':')
            return SYSDT_ERR_FAIL;
        length = static_cast<std::size_t>(end - at);
    }
    if (length > limits.characters || number < limits.lowest || number > limits.highest)
        return SYSDT_ERR_FAIL;
    at += length;
    out = number;
    return SYSDT_OK;
}

/// Reads an IPv4 address that is a text of its own; there may be none (null).
u32 read_ipv4(const char *text, SYSDT_EvpnAddress &out);

/// Reads an IPv6 address in brackets and moves behind them.
u32 read_bracketed(char *&at, SYSDT_EvpnAddress &out);

/// Reads an Ethernet segment route that is an ESI alone.
u32 read_segment_alone(char *text, SYSDT_BolEvpn *value, u32 lenient);

/// Prints the key as one of the route type. SYSDT_ERR_FAIL if there is no such type.
u32 print_key(u32 route_type, const SYSDT_EvpnKey &key, Writer &out);

} // namespace bgpdt::evpn
