// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "corpus.hpp"

#include "bgp_datatype/host.h"

namespace bgpdt::bench {

std::uint64_t Random::next()
{
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
    return mixed ^ mixed >> 31;
}

std::string Random::ipv4(std::uint32_t first_from, std::uint32_t first_to)
{
    return decimal(first_from, first_to) + '.' + decimal(0, 255) + '.' + decimal(0, 255) + '.' + decimal(0, 255);
}

std::string Random::ipv6(const std::string &first_groups)
{
    std::uint8_t address[16]{};
    SYSDT_Str2Ipv6((first_groups + "::").c_str(), address);
    const std::uint32_t zeros_from = between(4, 12); // what a prefix or the middle of a host's address is
    const std::uint32_t zeros_to = percent(50) ? 16 : between(zeros_from, 15);
    for (std::uint32_t i = 4; i < 16; ++i)
        if (i < zeros_from || i >= zeros_to)
            address[i] = static_cast<std::uint8_t>(next() >> 40);
    char text[46];
    return PAL_Inet_ntoa_b_ipv6(address, text);
}

std::string Random::hex(int digits)
{
    std::string text;
    while (digits-- != 0)
        text += "0123456789abcdef"[below(16)];
    return text;
}

std::string Random::esi()
{
    return pick({"00", "01"}) + hex(2) + '.' + hex(4) + '.' + hex(4) + '.' + hex(4) + '.' + hex(4);
}

} // namespace bgpdt::bench
