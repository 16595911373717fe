// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text that an EVPN route key prints as, in the forms in which texts are read.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (14) An address prints with its length by its family; one of a family other than 0 and 1 prints not at all, with no
///      length either, and is no failure.
///  (15) An ESI alone prints as with length 0 and address 0.0.0.0, and one of zeros prints too.
///  (16) An IPv6 source or group, and the IPv6 originator of a leave, print in brackets, where no text may have them.
///  (17) No number is refused: lengths up to 255 everywhere, 0 for a group or an originator.
#include <cstring>

#include "common/ipv4.hpp"
#include "common/print.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;
using namespace bgpdt::evpn;

namespace {

// Characters, with what the writers may overwrite behind them.
constexpr std::size_t longest_esi = 24;
constexpr std::size_t longest_number = 1 + most_u32_digits;
constexpr std::size_t longest_address = 4 + 2 + 46 + 1; ///< length, bracket, IPv6 address, bracket
constexpr std::size_t longest_piece = longest_address;
constexpr std::size_t longest_key = longest_esi + 2 * longest_number + 3 * longest_address; ///< of a leave

bool prints(const SYSDT_EvpnAddress &address) { return address.family <= 1; } // (14)

/// A key's text, piece by piece, in a buffer with room for all of it. Pieces but the first begin with their colon.
class KeyText {
public:
    explicit KeyText(char *to) : at_(to) {}

    KeyText &esi(const u8 (&esi)[10])
    {
        at_ = write<"%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x">(at_, esi[0], esi[1], esi[2], esi[3], esi[4], esi[5],
                                                                    esi[6], esi[7], esi[8], esi[9]);
        return *this;
    }

    KeyText &first(u32 number)
    {
        at_ = write<"%u">(at_, number);
        return *this;
    }

    KeyText &number(u32 number)
    {
        at_ = write<":%u">(at_, number);
        return *this;
    }

    KeyText &octet(u8 octet)
    {
        at_ = write<":%u">(at_, octet);
        return *this;
    }

    KeyText &mac(const u8 (&mac)[6])
    {
        at_ = write<":%.2x%.2x-%.2x%.2x-%.2x%.2x">(at_, mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
        return *this;
    }

    KeyText &address(const SYSDT_EvpnAddress &address)
    {
        *at_++ = ':';
        if (address.family == 0) {
            at_ = write_ipv4_address(at_, address.ipv4);
            return *this;
        }
        *at_++ = '[';
        PAL_Inet_ntoa_b_ipv6(address.ipv6, at_);
        at_ += std::strlen(at_);
        *at_++ = ']';
        return *this;
    }

    KeyText &sized(const SYSDT_EvpnSizedAddress &ip)
    {
        return prints(ip.address) ? octet(ip.length).address(ip.address) : *this;
    }

    KeyText &prefix(const SYSDT_EvpnSizedAddress &ip)
    {
        return prints(ip.address) ? address(ip.address).octet(ip.length) : *this;
    }

    KeyText &addresses(const SYSDT_EvpnMembership &route)
    {
        return sized(route.source).sized(route.group).sized(route.originator);
    }

    char *end() const { return at_; }

private:
    char *at_;
};

/// Writes the key as one of the route type and returns the end; null if there is no such type.
char *write_key(char *to, u32 route_type, const SYSDT_EvpnKey &key)
{
    KeyText text(to);
    const auto &sync = key.sync;
    switch (route_type) {
    case SYSDT_EVPN_AUTO_DISCOVERY: return text.esi(key.autoDiscovery.esi).number(key.autoDiscovery.tag).end();
    case SYSDT_EVPN_MAC_IP:
        return text.first(key.macIp.tag).octet(key.macIp.macLength).mac(key.macIp.mac).sized(key.macIp.ip).end();
    case SYSDT_EVPN_INCLUSIVE: return text.first(key.inclusive.tag).sized(key.inclusive.ip).end();
    case SYSDT_EVPN_SEGMENT: return text.esi(key.segment.esi).sized(key.segment.ip).end(); // (15)
    case SYSDT_EVPN_IP_PREFIX: return text.first(key.prefix.tag).prefix(key.prefix.ip).end();
    case SYSDT_EVPN_SELECTIVE: return text.first(key.selective.tag).addresses(key.selective).end(); // (16)
    case SYSDT_EVPN_JOIN: return text.esi(sync.esi).number(sync.membership.tag).addresses(sync.membership).end();
    case SYSDT_EVPN_LEAVE:
        return text.esi(sync.esi).number(sync.membership.tag).addresses(sync.membership).number(sync.sequence).end();
    default: return nullptr;
    }
}

/// An exported printer of one route type.
u32 print_as(u32 route_type, const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    if (value == nullptr || buffer == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(buffer, size);
    const u32 status = print_key(route_type, value->key, out);
    if (status == SYSDT_OK)
        *length += out.finish();
    return status;
}

/// An exported printer of one piece: it moves the caller's position on.
template <class Write>
u32 print_piece(char **position, u32 *size, u32 *length, Write write_piece)
{
    if (position == nullptr || *position == nullptr || size == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (*size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(*position, *size);
    out.put_at_most<longest_piece>([&](char *to) { return write_piece(KeyText(to)).end(); });
    const u32 printed = out.finish();
    *position += printed;
    *size -= printed;
    *length += printed;
    return SYSDT_OK;
}

} // namespace

namespace bgpdt::evpn {

u32 print_key(u32 route_type, const SYSDT_EvpnKey &key, Writer &out)
{
    u32 status = SYSDT_OK;
    out.put_at_most<longest_key>([&](char *to) {
        char *const end = write_key(to, route_type, key);
        status = end == nullptr ? SYSDT_ERR_FAIL : SYSDT_OK;
        return end == nullptr ? to : end;
    });
    return status;
}

} // namespace bgpdt::evpn

u32 SYSDT_EvnPrefix2Str(const SYSDT_BolEvpn *value, char *buffer, u32 *length)
{
    return value == nullptr ? SYSDT_ERR_NULL_PTR : print_as(value->key.routeType, value, buffer, 256, length);
}

u32 SYSDT_EVN_AdKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_AUTO_DISCOVERY, value, buffer, size, length);
}

u32 SYSDT_EVN_MacKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_MAC_IP, value, buffer, size, length);
}

u32 SYSDT_EVN_IncKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_INCLUSIVE, value, buffer, size, length);
}

u32 SYSDT_EVN_EsKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_SEGMENT, value, buffer, size, length);
}

u32 SYSDT_EVN_IpPrefixKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_IP_PREFIX, value, buffer, size, length);
}

u32 SYSDT_EVPN_SmetKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_SELECTIVE, value, buffer, size, length);
}

u32 SYSDT_EVPN_JoinKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_JOIN, value, buffer, size, length);
}

u32 SYSDT_EVPN_LeaveKeyToStr(const SYSDT_BolEvpn *value, char *buffer, u32 size, u32 *length)
{
    return print_as(SYSDT_EVPN_LEAVE, value, buffer, size, length);
}

u32 SYSDT_EVPN_EsiToStr(char **position, u32 *size, u32 *length, const u8 esi[10])
{
    if (esi == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return print_piece(position, size, length,
                       [&octets = reinterpret_cast<const u8(&)[10]>(*esi)](KeyText text) { return text.esi(octets); });
}

u32 SYSDT_EVPN_NumToStr(char **position, u32 *size, u32 *length, u32 number, u32 first)
{
    return print_piece(position, size, length,
                       [=](KeyText text) { return first != 0 ? text.first(number) : text.number(number); });
}

u32 SYSDT_EVPN_IpAddrToStr(char **position, u32 *size, u32 *length, const SYSDT_EvpnAddress *field, u32 lengthByte)
{
    if (field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (!prints(*field))
        return SYSDT_OK;
    return print_piece(position, size, length,
                       [=](KeyText text) { return text.octet(static_cast<u8>(lengthByte)).address(*field); });
}

u32 SYSDT_EVPN_OriginIpToStr(const SYSDT_EvpnAddress *field, char *buffer, u32 size, u32 *length, u32 lengthByte)
{
    return SYSDT_EVPN_IpAddrToStr(&buffer, &size, length, field, lengthByte);
}
