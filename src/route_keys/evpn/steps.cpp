// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Steps of reading and printing that are exported for others: a field at a cursor, the end of a text, a key printed as
/// one of a given route type, a piece at a position.
#include <cstring>
#include <string_view>

#include "bgp_datatype/bgp_datatype.h"
#include "route_keys/evpn/print.hpp"
#include "route_keys/evpn/readers.hpp"

using namespace bgpdt;

// ------------------------------------------------------------------------------------------------ reading

namespace {

u32 status_of(bool read) { return read ? SYSDT_OK : SYSDT_ERR_FAIL; }

/// Moves a cursor to where its field has ended, if it was read.
u32 move_to(char *&cursor, char *end)
{
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    cursor = end;
    return SYSDT_OK;
}

char *end_if(bool read, char *at) { return read ? at + std::strlen(at) : nullptr; }

} // namespace

u32 SYSDT_Str2EvpnUintNum(char **cursor, u32 *out, u32 maxDigits, u32 min, u32 max, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char *const at = *cursor;
    u32 number = 0;
    char *const end = isLast != 0 ? end_if(evpn::read_last_number(at, maxDigits, number), at)
                                  : evpn::read_number(at, maxDigits, number);
    if (number < min || number > max || move_to(*cursor, end) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    *out = number;
    return SYSDT_OK;
}

u32 SYSDT_Str2EvpnIpAddr(char **cursor, SYSDT_EvpnAddress *field, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char *const at = *cursor;
    if (*at == '[') {
        char *const end = evpn::read_bracketed(at, *field);
        return end != nullptr && isLast == 0 && *end == ':' ? SYSDT_ERR_FAIL : move_to(*cursor, end); // (10)
    }
    return move_to(*cursor, isLast != 0 ? end_if(evpn::read_last_address(at, *field), at)
                                        : evpn::read_inner_address(at, *field));
}

u32 SYSDT_Str2EvpnEsi(char **cursor, u8 out[10], u32 isLast, u32)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char *const at = *cursor;
    constexpr auto types = evpn::EsiTypes::to_01;
    return move_to(*cursor, isLast != 0 ? end_if(evpn::read_esi(at, std::strlen(at), types, out), at)
                                        : evpn::read_segment(at, types, out));
}

u32 SYSDT_Str2EvpnIpv6(char *text, u8 out[16], u32 *outLength)
{
    if (text == nullptr || out == nullptr || outLength == nullptr)
        return SYSDT_ERR_NULL_PTR;
    SYSDT_EvpnSizedAddress ip{};
    if (!evpn::read_ip(text, evpn::Families::ipv6, ip))
        return SYSDT_ERR_FAIL;
    std::memcpy(out, ip.address.ipv6, sizeof ip.address.ipv6);
    *outLength = ip.length;
    return SYSDT_OK;
}

u32 SYSDT_Str2Ipv6EvnMacFillPrefix(char *text, SYSDT_BolEvpn *value)
{
    return text == nullptr || value == nullptr
               ? SYSDT_ERR_NULL_PTR
               : status_of(evpn::read_ip(text, evpn::Families::ipv6, value->key.macIp.ip));
}

u32 SYSDT_Str2EsDetail(char *text, SYSDT_BolEvpn *value)
{
    return text == nullptr || value == nullptr
               ? SYSDT_ERR_NULL_PTR
               : status_of(evpn::read_ip(text, evpn::Families::ipv4, value->key.segment.ip));
}

// ------------------------------------------------------------------------------------------------ printing

namespace {

/// Prints a key as one of the route type.
[[gnu::noinline]] u32 print_as(u32 route_type, const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    if (value == nullptr || buffer == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(buffer, size);
    const u32 status = evpn::print_key(route_type, value->key, out);
    if (status == SYSDT_OK)
        *length += out.finish();
    return status;
}

/// Puts a piece at the caller's position and moves that on.
u32 put_piece(char **position, u32 *size, u32 *length, const char *piece, const char *end)
{
    if (position == nullptr || *position == nullptr || size == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (*size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(*position, *size);
    out.put({piece, static_cast<std::size_t>(end - piece)});
    const u32 printed = out.finish();
    *position += printed;
    *size -= printed;
    *length += printed;
    return SYSDT_OK;
}

} // namespace

u32 SYSDT_EvnPrefix2Str(const SYSDT_BolEvpn *value, char *buffer, u32 *length)
{
    return value == nullptr ? SYSDT_ERR_NULL_PTR : print_as(value->key.routeType, value, buffer, 256, length);
}

#define BGPDT_EVPN_PRINTER(name, route_type)                                                                           \
    u32 name(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)                                          \
    {                                                                                                                  \
        return print_as(route_type, value, buffer, size, length);                                                      \
    }

BGPDT_EVPN_PRINTER(SYSDT_EVN_AdKeyToStr, SYSDT_EVPN_AUTO_DISCOVERY)
BGPDT_EVPN_PRINTER(SYSDT_EVN_MacKeyToStr, SYSDT_EVPN_MAC_IP)
BGPDT_EVPN_PRINTER(SYSDT_EVN_IncKeyToStr, SYSDT_EVPN_INCLUSIVE)
BGPDT_EVPN_PRINTER(SYSDT_EVN_EsKeyToStr, SYSDT_EVPN_SEGMENT)
BGPDT_EVPN_PRINTER(SYSDT_EVN_IpPrefixKeyToStr, SYSDT_EVPN_IP_PREFIX)
BGPDT_EVPN_PRINTER(SYSDT_EVPN_SmetKeyToStr, SYSDT_EVPN_SELECTIVE)
BGPDT_EVPN_PRINTER(SYSDT_EVPN_JoinKeyToStr, SYSDT_EVPN_JOIN)
BGPDT_EVPN_PRINTER(SYSDT_EVPN_LeaveKeyToStr, SYSDT_EVPN_LEAVE)

u32 SYSDT_EVPN_EsiToStr(char **position, u32 *size, u32 *length, const u8 esi[10])
{
    if (esi == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char piece[evpn::esi_text_length];
    return put_piece(position, size, length, piece, evpn::write_esi(piece, esi));
}

u32 SYSDT_EVPN_NumToStr(char **position, u32 *size, u32 *length, u32 number, u32 first)
{
    char piece[evpn::most_number_characters];
    return put_piece(position, size, length, piece, evpn::write_number(piece, number, first != 0));
}

u32 SYSDT_EVPN_IpAddrToStr(char **position, u32 *size, u32 *length, const SYSDT_EvpnAddress *field, u32 lengthByte)
{
    if (field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char piece[evpn::most_ip_characters];
    const char *const end = evpn::write_ip(piece, static_cast<u8>(lengthByte), *field);
    return end == piece ? SYSDT_OK : put_piece(position, size, length, piece, end); // (14)
}

u32 SYSDT_EVPN_OriginIpToStr(const SYSDT_EvpnAddress *field, char *buffer, u32 size, u32 *length, u32 lengthByte)
{
    return SYSDT_EVPN_IpAddrToStr(&buffer, &size, length, field, lengthByte);
}
