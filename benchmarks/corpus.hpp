// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Pieces of realistic texts, the same ones in every run.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace bgpdt::bench {

using Bytes = std::vector<std::uint8_t>;

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next(); ///< splitmix64
    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>((next() >> 32) * bound >> 32); }
    std::uint32_t between(std::uint32_t first, std::uint32_t last) { return first + below(last - first + 1); }
    /// Of 1 to 32 bits, each as likely as another.
    std::uint32_t number() { return static_cast<std::uint32_t>((next() | 1ULL << 31) & 0xFFFFFFFF) >> below(32); }
    std::string pick(std::initializer_list<const char *> words)
    {
        return words.begin()[below(static_cast<std::uint32_t>(words.size()))];
    }
    bool percent(std::uint32_t chance) { return below(100) < chance; }

    // Texts.
    std::string decimal(std::uint32_t first, std::uint32_t last) { return std::to_string(between(first, last)); }
    std::string decimal() { return std::to_string(number()); }
    std::string u16() { return decimal(0, 65535); }
    std::string as2() { return decimal(1, 65535); }
    std::string as4() { return decimal(65536, 4294967294U); }
    std::string as_dotted() { return as2() + '.' + u16(); }
    std::string ipv4(std::uint32_t first_from = 1, std::uint32_t first_to = 223);
    /// Canonical text: addresses of hosts and prefixes, from 2001:db8::/32 unless another first group is given.
    std::string ipv6(const std::string &first_groups = "2001:db8");
    std::string mac() { return hex(4) + '-' + hex(4) + '-' + hex(4); }
    /// Ten octets in groups, of type 00 or 01.
    std::string esi();
    std::string hex(int digits);

private:
    std::uint64_t state_;
};

} // namespace bgpdt::bench
