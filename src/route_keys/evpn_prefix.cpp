// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVNPREFIX, and kind 1 of the route keys, "EVN": the key of a BGP EVPN route (RFC 7432, section 7; RFC 9136, section
/// 3; RFC 9251, section 9).
///
///      0   4   5
///     +---+---+--------------------------------------------------------------------------------------------------
///     | 1 | 1 | ESI 10 | tag                                                             Ethernet auto-discovery
///     | 1 | 2 | tag | MAC length | MAC 6 | length | address                              MAC/IP advertisement
///     | 1 | 3 | tag | length | address                                                   inclusive multicast
///     | 1 | 4 | ESI | length | address                                                   Ethernet segment
///     | 1 | 5 | tag | length | address                                                   IP prefix
///     | 1 | 6 | tag | length | source | length | group | length | originator             selective multicast
///     | 1 | 7 | ESI | tag | length | source | length | group | length | originator       join synchronisation
///     | 1 | 8 | ESI | tag | length | source | length | group | length | originator | sequence number   leave
///     +---+---+--------------------------------------------------------------------------------------------------
///
/// The sub-kind, the Ethernet tag and the sequence number are u32 in host order, lengths are bytes, and an address is
/// 21 bytes: IPv4 as u32 in host order, IPv6, family (0 or 1). What a route type does not use is zero. How each
/// is written is told in evpn_routes.cpp.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (1) What is handed back is a BOL prefix value: kind 0x0117, 89 bytes, though the type is 0x0119 with 85.
///  (2) All modes but 4 parse, and a text that does not is a wrong parameter.
///  (13) All modes but 4 print; there is no binary copy in mode 3.
///  (18) The sub-kind does not matter to printing, and a short value prints as if zeros followed it.
///  (19) A value is 89 bytes long to Check too.
///  (20) The help text knows neither IPv6 addresses nor IP prefixes nor the route types 6 to 8; a host that prepares no
///      entry for it is no failure.
///  (21) Where either is no EVPN key, or the route types differ, Compare answers a status in place of an order.
///  (22) An ESI does not count in the order of the route type 1; in route type 4, and in those that are none, nothing
///      does.
///  (23) Nor does the address in the route types 2, 3 and 5, though the host is asked for the order; in 3 about the
///      place where 2 has its address.
///  (24) In the route types 6 to 8 addresses count, in the order that the host gives them.
///  (25) A script sees the printed text, the sub-kind and the route type; a key that does not print has an empty text.
///  (26) A script's ESI has type 00 or 01, in an auto-discovery route 00 to 05; BOL prefixes read any.
///  (27) A script's text that does not parse is no failure, and what is no string is as good as an empty one; BOL
///      prefixes refuse both.
///  (28) The route type is the script's number, cut to 8 bits, whatever the text is.
///  (29) A script's sub-kind other than 1 is stored, and fails then.
///  (30) 183 bytes of a script's text are read, though what prints may be longer.
#include <cstring>

#include "common/bol_row.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;

namespace {

constexpr auto evpn_prefix = [] {
    auto type = bol_row<SYSDT_BolEvpn>(); // (1) (2) (13) (18)
    type.parse = [](u32, char *text, SYSDT_BolEvpn &value) {
        value.subKind = SYSDT_BOL_EVN;
        return SYSDT_Str2EvnPrefix(text, &value, 1);
    };
    type.print = [](const SYSDT_BolEvpn &value, u8, Writer &out) {
        return evpn::print_key(value.key.routeType, value.key, out);
    };
    type.help = {.text = "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or "
                         "xxxx.xxxx.xxxx.xxxx.xxxx",
                 .silent = true}; // (20)
    return type;
}();

// ------------------------------------------------------------------------------------------------ order

/// The order of two keys, by one field after the other: the first difference decides.
class Order {
public:
    Order &number(u32 first, u32 second)
    {
        return by([=] { return (first > second) - (first < second); });
    }

    template <std::size_t Size>
    Order &bytes(const u8 (&first)[Size], const u8 (&second)[Size])
    {
        return by([&] { return compare_bytes(Size, first, second); });
    }

    /// (24)
    Order &address(const SYSDT_EvpnSizedAddress &first, const SYSDT_EvpnSizedAddress &second)
    {
        number(first.length, second.length);
        return by([&] { return compare_addresses(first.address, second.address); });
    }

    Order &membership(const SYSDT_EvpnMembership &first, const SYSDT_EvpnMembership &second)
    {
        return number(first.tag, second.tag)
            .address(first.source, second.source)
            .address(first.group, second.group)
            .address(first.originator, second.originator);
    }

    /// Asks the host for the order of two addresses, which does not count. (23)
    Order &unheeded(const SYSDT_EvpnAddress &first, const SYSDT_EvpnAddress &second)
    {
        if (order_ == 0)
            compare_addresses(first, second);
        return *this;
    }

    operator i32() const { return order_; }

private:
    static i32 compare_addresses(const SYSDT_EvpnAddress &first, const SYSDT_EvpnAddress &second)
    {
        return SYSDT_Ipv4Ipv6Compare(sizeof first, &first, &second);
    }

    template <class Compare>
    Order &by(Compare compare)
    {
        if (order_ == 0)
            order_ = compare();
        return *this;
    }

    i32 order_ = 0;
};

i32 compare_keys(const SYSDT_EvpnKey &a, const SYSDT_EvpnKey &b)
{
    switch (a.routeType) {
    case SYSDT_EVPN_AUTO_DISCOVERY: return Order().number(a.autoDiscovery.tag, b.autoDiscovery.tag); // (22)
    case SYSDT_EVPN_MAC_IP:
        return Order()
            .number(a.macIp.tag, b.macIp.tag)
            .number(a.macIp.macLength, b.macIp.macLength)
            .bytes(a.macIp.mac, b.macIp.mac)
            .number(a.macIp.ip.length, b.macIp.ip.length)
            .unheeded(a.macIp.ip.address, b.macIp.ip.address);
    case SYSDT_EVPN_INCLUSIVE:
        return Order()
            .number(a.inclusive.tag, b.inclusive.tag)
            .number(a.inclusive.ip.length, b.inclusive.ip.length)
            .unheeded(a.macIp.ip.address, b.macIp.ip.address); // (23)
    case SYSDT_EVPN_IP_PREFIX:
        return Order()
            .number(a.prefix.tag, b.prefix.tag)
            .number(a.prefix.ip.length, b.prefix.ip.length)
            .unheeded(a.prefix.ip.address, b.prefix.ip.address);
    case SYSDT_EVPN_SELECTIVE: return SYSDT_EVPN_SmetCompare(&a, &b);
    case SYSDT_EVPN_JOIN: return SYSDT_EVPN_JoinCompare(&a, &b);
    case SYSDT_EVPN_LEAVE: return SYSDT_EVPN_LeaveCompare(&a, &b);
    default: return 0; // (22)
    }
}

// ------------------------------------------------------------------------------------------------ scripts

constexpr char text_key[] = "bolPrefixRtValue";
constexpr std::span<const Field> numbers = evpn_fields; // the sub-kind and the route type

using ScriptText = char[184]; // (30)

} // namespace

i32 SYSDT_EVPN_SmetCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    return first == nullptr || second == nullptr ? 0 : i32{Order().membership(first->selective, second->selective)};
}

i32 SYSDT_EVPN_JoinCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    if (first == nullptr || second == nullptr)
        return 0;
    const auto &a = first->sync;
    const auto &b = second->sync;
    return Order().bytes(a.esi, b.esi).membership(a.membership, b.membership);
}

i32 SYSDT_EVPN_LeaveCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    if (first == nullptr || second == nullptr)
        return 0;
    const i32 order = SYSDT_EVPN_JoinCompare(first, second);
    return order != 0 ? order : i32{Order().number(first->sync.sequence, second->sync.sequence)};
}

BGPDT_FORMAT_IN(SYSDT_EVNPrefixFormatIn, evpn_prefix)
BGPDT_FORMAT_OUT(SYSDT_EVNPrefixFormatOut, evpn_prefix)
BGPDT_CHECK(SYSDT_EVNPrefixCheck, evpn_prefix) // (19)
BGPDT_HELP(SYSDT_EVNPrefixHelp, evpn_prefix)

i32 SYSDT_EVNPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const auto a = read_value<evpn_prefix>(length, first);
    const auto b = read_value<evpn_prefix>(length, second);
    if (a.subKind != SYSDT_BOL_EVN || b.subKind != SYSDT_BOL_EVN || a.key.routeType != b.key.routeType)
        return SYSDT_ERR_FAIL; // (21)
    return compare_keys(a.key, b.key);
}

u32 SYSDT_EVNPrefixLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < SYSDT_BOL_SIZE)
        return SYSDT_ERR_PARAM;
    const auto *const value = static_cast<const SYSDT_BolEvpn *>(data);
    char text[256];
    Writer out(text, sizeof text);
    evpn::print_key(value->key.routeType, value->key, out); // (25)
    out.finish();
    const auto parent = script::Table::at(state, table);
    const auto key = script::Table::create(state, 0, 3);
    key.set_text(text_key, text);
    key.set_fields(numbers, static_cast<const u8 *>(data));
    parent.set(name);
    return SYSDT_OK;
}

u32 SYSDT_EVNPrefixLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < SYSDT_BOL_SIZE)
        return SYSDT_ERR_PARAM;
    const auto source = table == -1 ? script::Table::at(state, -2) : script::Table::field(state, table, name);
    if (!source.is_table())
        return SYSDT_ERR_PARAM;
    const i32 height = SYSDT_SPTI_GetTop(state);
    ScriptText text{};
    if (source.get_text(text_key, text) == SYSDT_ERR_TOO_LONG) // (30)
        return SYSDT_ERR_TOO_LONG;
    auto *const value = static_cast<SYSDT_BolEvpn *>(data);
    SYSDT_Str2EvnPrefix(text, value, 0); // (26) (27)
    if (const u32 status = source.get_fields(numbers.first(1), static_cast<u8 *>(data)); status != SYSDT_OK)
        return status;
    if (value->subKind != SYSDT_BOL_EVN)
        return SYSDT_ERR_FAIL;                                                         // (29)
    const u32 status = source.get_fields(numbers.subspan(1), static_cast<u8 *>(data)); // (28)
    if (status == SYSDT_OK)
        script::pop_to(state, height);
    return status;
}

u32 SYSDT_EVNPrefixNewLuaGet(void *state, void *value, i32 table)
{
    if (state == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const i32 height = SYSDT_SPTI_GetTop(state);
    const auto source = script::Table::at(state, table);
    ScriptText text{};
    if (const u32 status = source.get_text(text_key, text); status != SYSDT_OK)
        return status; // (27) (30)
    if (const u32 status = SYSDT_Str2EvnPrefix(text, static_cast<SYSDT_BolEvpn *>(value), 1); status != SYSDT_OK)
        return status;                                                                  // (26) (27)
    const u32 status = source.get_fields(numbers.subspan(1), static_cast<u8 *>(value)); // (28)
    if (status == SYSDT_OK)
        script::pop_to(state, height);
    return status;
}
