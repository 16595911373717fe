// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the files of the BGP-LS key share: the words of its texts, the bits by which a text's groups are marked as
/// seen, its printers.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "bgp_datatype/bgp_datatype.h"
#include "common/writer.hpp"

namespace bgpdt::bgpls {

/// A word of the texts, in a place of fixed size that is copied whole.
struct Word {
    char text[16]{}; ///< filled up with NULs, one at least
    u8 length = 0;

    consteval Word(std::string_view word) : length(static_cast<u8>(word.size()))
    {
        std::copy_n(word.data(), word.size(), text);
    }
    constexpr operator std::string_view() const { return {text, length}; }
};

inline constexpr Word no_word{""};

/// By the number of the route type.
inline constexpr Word route_type_words[SYSDT_LS_ROUTE_TYPES] = {
    no_word, {"NODE"}, {"LINK"}, {"IPV4-PREFIX"}, {"IPV6-PREFIX"}, {"TEPOLICY"}, {"SRV6-SID"},
};

/// By the number of the protocol.
inline constexpr Word protocol_words[] = {
    no_word,    {"ISIS-LEVEL-1"}, {"ISIS-LEVEL-2"}, {"OSPFv2"}, {"DIRECT"},
    {"STATIC"}, {"OSPFv3"},       {"BGP"},          no_word,    {"SEGMENT-ROUTING"},
};

constexpr const Word &word_of(std::span<const Word> words, u32 number) // print (4)
{
    return number < words.size() ? words[number] : no_word;
}

// The bits by which groups are marked as seen.

/// Of a key.
namespace key_bit {
enum : u32 {
    route_type = 0x001,
    protocol = 0x002,
    identifier = 0x004,
    local = 0x008,
    remote = 0x010,
    link = 0x020,
    unknown = 0x040,
    index = 0x080,
    prefix = 0x100,
    te = 0x200,
    sid = 0x400,
};
} // namespace key_bit

/// Within LOCAL and REMOTE.
namespace node_bit {
enum : u32 {
    as = 0x01,
    bgp_ls_id = 0x02,
    ospf_area = 0x04,
    igp_router_id = 0x08,
    bgp_router_id = 0x10,
    member_as = 0x20,
    ipv4_router_id = 0x40,
    ipv6_router_id = 0x80,
};
} // namespace node_bit

/// Within LINK.
namespace link_bit {
enum : u32 {
    identifier = 0x01,
    local = 0x02,
    remote = 0x04,
    link_local_id = 0x08,
    link_remote_id = 0x10,
    if_address = 0x20,
    peer_address = 0x40,
    mt_id = 0x80,
};
} // namespace link_bit

/// Within PREFIX.
namespace prefix_bit {
enum : u32 {
    mt_id = 0x1,
    ospf_route_type = 0x2,
    prefix = 0x4,
};
} // namespace prefix_bit

/// Within TE.
namespace te_bit {
enum : u32 {
    protocol_origin = 0x01,
    flag = 0x02,
    endpoint = 0x04,
    color = 0x08,
    originator_as = 0x10,
    originator_address = 0x20,
    discriminator = 0x40,
};
} // namespace te_bit

/// Within SID.
namespace sid_bit {
enum : u32 {
    mt_id = 0x1,
    sid = 0x2,
};
} // namespace sid_bit

using ParseContext = LsPrefixParseContext;

inline constexpr u16 text_size = 513; ///< of the longest printed text, its NUL included

using Printer = void(const SYSDT_LsPrefix &key, Writer &out);

Printer print_node, print_link, print_ipv4_prefix, print_ipv6_prefix, print_te_policy, print_srv6_sid;
Printer print_te; ///< the TE group of a TE policy by itself

/// The printer for the low 8 bits of the key's route type; null for a type that has no form.
Printer *printer_of(const SYSDT_LsPrefix &key);

} // namespace bgpdt::bgpls
