// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "attr/label_filler.hpp"

#include "attr/line_template.hpp"
#include "attr/work_blocks.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "common/key_address.hpp"

namespace bgpdt::attr {

namespace {

/// How many bytes a value of the kind has at least.
constexpr u32 least_length(u32 kind)
{
    switch (kind) {
    case number8: return sizeof(u8);
    case number16: return sizeof(u16);
    case number32:
    case ipv4_address: return sizeof(u32);
    case ipv6_address: return sizeof(SYSDT_EvpnAddress::ipv6);
    case either_address: return sizeof(SYSDT_EvpnAddress);
    default: return 0;
    }
}

/// Writes the address of its family; false if that is none.
bool write_either(const SYSDT_EvpnAddress &address, char (&written)[ipv6_text_size])
{
    switch (address.family) {
    case family_ipv4: PAL_IpAddrToStr(address.ipv4, written); return true;
    case family_ipv6: PAL_Inet_ntoa_b_ipv6(address.ipv6, written); return true;
    default: return false;
    }
}

/// What a value prints as; false if that is nothing. An address is written to `written`.
bool printed_as(const Entry &value, char (&written)[ipv6_text_size], PieceValue &out)
{
    const u8 *const data = value.data;
    switch (value.kind) {
    case number8: out = {false, *data, {}}; return true;
    case number16: out = {false, load<u16>(data), {}}; return true;
    case number32: out = {false, load<u32>(data), {}}; return true;
    case text: out = {true, 0, value.text()}; return true;
    case ipv4_address: PAL_IpAddrToStr(load<u32>(data), written); break;
    case ipv6_address: PAL_Inet_ntoa_b_ipv6(data, written); break;
    case either_address:
        if (!write_either(*reinterpret_cast<const SYSDT_EvpnAddress *>(data), written))
            return false;
        break;
    default: return false;
    }
    out = {true, 0, written};
    return true;
}

/// Prints the value by the piece at the position, which has room for `limit` characters with their NUL.
u32 print_value(const Entry &value, const char *piece, char *position, u32 limit, u32 &characters)
{
    char written[ipv6_text_size];
    PieceValue printed{};
    if (value.length < least_length(value.kind))
        return unlistable;
    if (limit == 0 || !printed_as(value, written, printed))
        return SYSDT_OK; // (7)
    Writer out(position, limit);
    if (!print_piece(piece, printed, out))
        return unlistable;
    characters = out.finish();
    return SYSDT_OK;
}

} // namespace

u32 fill_piece(u32 handle, const Entry &value, char *line_template, char *position, u32 limit, u32 &characters)
{
    return with_two_blocks<char>(handle, text_block, [&](char *piece, char *rest) {
        SYSDT_FormatAttrIdStrFind(line_template, piece, rest, text_block);
        const u32 status = print_value(value, piece, position, limit, characters);
        copy_text(line_template, text_block, rest); // (8)
        return status;
    });
}

} // namespace bgpdt::attr

using namespace bgpdt;
using namespace bgpdt::attr;

u32 SYSDT_AttrIdDataTypeFormat(u32 handle, u32 kind, u32 length, char *position, char *lineTemplate, const void *data,
                               u32 limit)
{
    u32 characters = 0;
    if (position != nullptr && lineTemplate != nullptr && data != nullptr)
        fill_piece(handle, {kind, length, static_cast<const u8 *>(data)}, lineTemplate, position, limit, characters);
    return characters;
}

u32 SYSDT_FormatAttrIdStrFind(const char *lineTemplate, char *head, char *rest, u32 limit)
{
    if (lineTemplate == nullptr || head == nullptr || rest == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const std::string_view all = lineTemplate;
    const std::size_t second = all.find('%', all.find('%') + 1);
    std::string_view behind = all;
    if (second != all.npos)
        behind.remove_prefix(second);
    copy_text(head, limit, all.substr(0, second));
    copy_text(rest, limit, behind);
    return SYSDT_OK;
}
