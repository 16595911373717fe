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
#include "common/ipv4.hpp"
#include "common/print.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;
using namespace bgpdt::evpn;

namespace {

void print_esi(const u8 *esi, Writer &out)
{
    print<"%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x">(out, esi[0], esi[1], esi[2], esi[3], esi[4], esi[5], esi[6],
                                                          esi[7], esi[8], esi[9]);
}

void print_number(u32 number, bool first, Writer &out)
{
    if (!first)
        out.put(':');
    print<"%u">(out, number);
}

bool prints(const SYSDT_EvpnAddress &address) { return address.family <= 1; } // (14)

void print_address(const SYSDT_EvpnAddress &address, Writer &out)
{
    if (address.family == 0) {
        print_ipv4_address(address.ipv4, out);
        return;
    }
    char text[64];
    PAL_Inet_ntoa_b_ipv6(address.ipv6, text);
    text[sizeof text - 1] = '\0';
    print<"[%s]">(out, text);
}

void print_sized_address(const SYSDT_EvpnAddress &address, u8 length, Writer &out)
{
    print<":%hhu:">(out, length);
    print_address(address, out);
}

/// A key's text, piece by piece.
class KeyText {
public:
    explicit KeyText(Writer &out) : out_(out) {}

    KeyText &esi(const u8 (&esi)[10])
    {
        print_esi(esi, out_);
        first_ = false;
        return *this;
    }

    KeyText &number(u32 number)
    {
        print_number(number, first_, out_);
        first_ = false;
        return *this;
    }

    KeyText &mac(const u8 (&mac)[6])
    {
        print<":%.2x%.2x-%.2x%.2x-%.2x%.2x">(out_, mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
        return *this;
    }

    KeyText &address(const SYSDT_EvpnSizedAddress &ip)
    {
        if (prints(ip.address))
            print_sized_address(ip.address, ip.length, out_);
        return *this;
    }

    KeyText &prefix(const SYSDT_EvpnSizedAddress &ip)
    {
        if (!prints(ip.address))
            return *this;
        out_.put(':');
        print_address(ip.address, out_);
        print<":%hhu">(out_, ip.length);
        return *this;
    }

    KeyText &membership(const SYSDT_EvpnMembership &route)
    {
        return number(route.tag).address(route.source).address(route.group).address(route.originator);
    }

private:
    Writer &out_;
    bool first_ = true; ///< nothing stands before the next piece
};

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
template <class Print>
u32 print_piece(char **position, u32 *size, u32 *length, Print print)
{
    if (position == nullptr || *position == nullptr || size == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (*size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(*position, *size);
    print(out);
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
    KeyText text(out);
    switch (route_type) {
    case SYSDT_EVPN_AUTO_DISCOVERY: text.esi(key.autoDiscovery.esi).number(key.autoDiscovery.tag); break;
    case SYSDT_EVPN_MAC_IP:
        text.number(key.macIp.tag).number(key.macIp.macLength).mac(key.macIp.mac).address(key.macIp.ip);
        break;
    case SYSDT_EVPN_INCLUSIVE: text.number(key.inclusive.tag).address(key.inclusive.ip); break;
    case SYSDT_EVPN_SEGMENT: text.esi(key.segment.esi).address(key.segment.ip); break; // (15)
    case SYSDT_EVPN_IP_PREFIX: text.number(key.prefix.tag).prefix(key.prefix.ip); break;
    case SYSDT_EVPN_SELECTIVE: text.membership(key.selective); break; // (16)
    case SYSDT_EVPN_JOIN: text.esi(key.sync.esi).membership(key.sync.membership); break;
    case SYSDT_EVPN_LEAVE: text.esi(key.sync.esi).membership(key.sync.membership).number(key.sync.sequence); break;
    default: return SYSDT_ERR_FAIL;
    }
    return SYSDT_OK;
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
    return print_piece(position, size, length, [esi](Writer &out) { print_esi(esi, out); });
}

u32 SYSDT_EVPN_NumToStr(char **position, u32 *size, u32 *length, u32 number, u32 first)
{
    return print_piece(position, size, length, [=](Writer &out) { print_number(number, first != 0, out); });
}

u32 SYSDT_EVPN_IpAddrToStr(char **position, u32 *size, u32 *length, const SYSDT_EvpnAddress *field, u32 lengthByte)
{
    if (field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (!prints(*field))
        return SYSDT_OK;
    return print_piece(position, size, length,
                       [=](Writer &out) { print_sized_address(*field, static_cast<u8>(lengthByte), out); });
}

u32 SYSDT_EVPN_OriginIpToStr(const SYSDT_EvpnAddress *field, char *buffer, u32 size, u32 *length, u32 lengthByte)
{
    return SYSDT_EVPN_IpAddrToStr(&buffer, &size, length, field, lengthByte);
}
