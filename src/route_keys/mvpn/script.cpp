// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys (RFC 6514) to and from script tables.
///
/// An AS number stands as "bolNgAsNumValue" and "bolNgAsNumType"; an address as a number, or a table of 16 numbers,
/// whose family a field of its own tells: "bolNgPrefixCS" and "bolNgPrefixCG" with "bolNgCSIpType" and "bolNgCGIpType",
/// "bolNgPrefixOriIP" (or "...OriIP1" and "...OriIP2") with "bolNgOriIpType".
///
/// Irregularities, all deliberate:
///  (1) Writing, the source's family decides the form of the group too, and the first originator's that of both.
///  (2) Writing, an IPv4 group stands before its source, an IPv6 group behind it; behind an AS number always behind it.
///  (3) Writing, an address of another family is left out.
///  (4) Reading goes originators (the second first), source, group, AS number (its notation first).
///  (5) Reading, an address type other than 0 and 1 leaves the address unread and zero.
///  (6) SYSDT_NGPrefix2LuaGet stands in no table, and does not look at "bolType".
///  (7) Writing, the tables of sub-kinds 3 to 7 are made for fewer fields than they hold.
#include "common/bol_row.hpp"
#include "common/bytes.hpp"
#include "common/key_address.hpp"
#include "route_keys/mvpn/key.hpp"

using namespace bgpdt;
using namespace bgpdt::mvpn;

namespace {

/// The key of the first originator.
const char *originator_key(const Kind &kind)
{
    return kind.find(Role::originator2) == nullptr ? NgKeys::originator : NgKeys::originator1;
}

// ------------------------------------------------------------------------------------------------ to a table

class TableWriter {
public:
    TableWriter(void *state, const script::Table &table, const Kind &kind, const SYSDT_BolValue &value)
        : state_(state), table_(table), kind_(kind), value_(value)
    {
    }

    void write() const
    {
        if (const Section *const as = kind_.find(Role::as))
            write_as(as->in<SYSDT_AsNum>(value_));
        if (const auto *const source = address(Role::source))
            write_customer(*source, *address(Role::group));
        if (const auto *const originator = address(Role::originator))
            write_originators(*originator, address(Role::originator2));
        table_.set_number(bol_fields[0].key, value_.subKind);
    }

private:
    const SYSDT_EvpnAddress *address(Role role) const
    {
        const Section *const section = kind_.find(role);
        return section == nullptr ? nullptr : &section->in<SYSDT_EvpnAddress>(value_);
    }

    void set_address(const char *key, const SYSDT_EvpnAddress &address, u8 family) const
    {
        switch (family) {
        case family_ipv4: table_.set_number(key, address.ipv4); break;
        case family_ipv6:
            SYSDT_BolPrefixLuaSetToIPv6(state_, &address);
            table_.set(key);
            break;
        default: break; // (3)
        }
    }

    void write_as(const SYSDT_AsNum &as) const
    {
        table_.set_number(NgKeys::as_number, as.asNumValue);
        table_.set_number(NgKeys::notation, as.asType);
    }

    void write_customer(const SYSDT_EvpnAddress &source, const SYSDT_EvpnAddress &group) const
    {
        const u8 family = source.family; // (1)
        table_.set_number(NgKeys::source_family, family);
        table_.set_number(NgKeys::group_family, group.family);
        const bool group_first = family == family_ipv4 && kind_.find(Role::as) == nullptr; // (2)
        if (group_first)
            set_address(NgKeys::group, group, family);
        set_address(NgKeys::source, source, family);
        if (!group_first)
            set_address(NgKeys::group, group, family);
    }

    void write_originators(const SYSDT_EvpnAddress &first, const SYSDT_EvpnAddress *second) const
    {
        const u8 family = first.family; // (1)
        table_.set_number(NgKeys::originator_family, family);
        set_address(originator_key(kind_), first, family);
        if (second != nullptr)
            set_address(NgKeys::originator2, *second, family);
    }

    void *state_;
    script::Table table_;
    const Kind &kind_;
    const SYSDT_BolValue &value_;
};

u32 set_key(const Kind &kind, void *state, i32 parent, const char *name, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    parent = script::absolute(state, parent);
    const auto table = script::Table::create(state, 0, kind.slots); // (7)
    TableWriter(state, table, kind, *static_cast<const SYSDT_BolValue *>(data)).write();
    SYSDT_SPTI_SetField(state, parent, name);
    return SYSDT_OK;
}

// ------------------------------------------------------------------------------------------------ from a table

class TableReader {
public:
    TableReader(void *state, i32 table, const Kind &kind, SYSDT_BolValue &value)
        : state_(state), table_(script::Table::at(state, table)), kind_(kind), value_(value)
    {
    }

    /// Stores field by field; false at the first that is missing or of another kind. (4)
    bool read() const { return read_originators() && read_customer() && read_as(); }

private:
    bool read_originators() const
    {
        const Section *const first = kind_.find(Role::originator);
        const Section *const second = kind_.find(Role::originator2);
        u32 family = 0;
        return first == nullptr || (table_.get_number(NgKeys::originator_family, family) &&
                                    (second == nullptr || read_address(NgKeys::originator2, family, *second)) &&
                                    read_address(originator_key(kind_), family, *first));
    }

    bool read_customer() const
    {
        const Section *const source = kind_.find(Role::source);
        u32 family = 0;
        return source == nullptr ||
               (table_.get_number(NgKeys::source_family, family) && read_address(NgKeys::source, family, *source) &&
                table_.get_number(NgKeys::group_family, family) &&
                read_address(NgKeys::group, family, *kind_.find(Role::group)));
    }

    bool read_as() const
    {
        const Section *const section = kind_.find(Role::as);
        if (section == nullptr)
            return true;
        u8 *const as = &section->in<u8>(value_);
        return read_number(NgKeys::notation, as + offsetof(SYSDT_AsNum, asType)) &&
               read_number(NgKeys::as_number, as + offsetof(SYSDT_AsNum, asNumValue));
    }

    bool read_number(const char *key, u8 *at) const
    {
        u32 number = 0;
        if (!table_.get_number(key, number))
            return false;
        store(at, number);
        return true;
    }

    bool read_address(const char *key, u32 family, const Section &section) const
    {
        SYSDT_ScriptAddress address{};
        if (family <= family_ipv6) { // (5)
            table_.push(key);
            if (SYSDT_BolPrefixLuaParseToIPv4IPv6(state_, family, &address) != SYSDT_OK)
                return false;
            if (family == family_ipv4)
                SYSDT_SPTI_Pop(state_, 1);
        }
        SYSDT_EvpnAddress field{address.ipv4, {}, static_cast<u8>(address.family)};
        std::memcpy(field.ipv6, address.ipv6, sizeof field.ipv6);
        section.in<SYSDT_EvpnAddress>(value_) = field;
        return true;
    }

    void *state_;
    script::Table table_;
    const Kind &kind_;
    SYSDT_BolValue &value_;
};

u32 get_key(const Kind &kind, void *state, void *value, i32 table)
{
    if (state == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return TableReader(state, table, kind, *static_cast<SYSDT_BolValue *>(value)).read() ? SYSDT_OK : SYSDT_ERR_PARAM;
}

} // namespace

#define MVPN_LUA_SET(name, sub_kind)                                                                                   \
    u32 name(void *state, i32 table, const char *field, u32, u32 length, const void *data)                             \
    {                                                                                                                  \
        return set_key(kind<sub_kind>, state, table, field, length, data);                                             \
    }

#define MVPN_SCRIPT_READER(name, sub_kind)                                                                             \
    u32 name(void *state, void *value, i32 table) { return get_key(kind<sub_kind>, state, value, table); }

MVPN_LUA_SET(SYSDT_NGPrefix2LuaSet, SYSDT_BOL_NG_TYPE_2)
MVPN_LUA_SET(SYSDT_NGPrefix3LuaSet, SYSDT_BOL_NG_TYPE_3)
MVPN_LUA_SET(SYSDT_NGPrefix41LuaSet, SYSDT_BOL_NG_TYPE_4_1)
MVPN_LUA_SET(SYSDT_NGPrefix42LuaSet, SYSDT_BOL_NG_TYPE_4_2)
MVPN_LUA_SET(SYSDT_NGPrefix43LuaSet, SYSDT_BOL_NG_TYPE_4_3)
MVPN_LUA_SET(SYSDT_NGPrefix5LuaSet, SYSDT_BOL_NG_TYPE_5)
MVPN_LUA_SET(SYSDT_NGPrefix6LuaSet, SYSDT_BOL_NG_TYPE_6)

MVPN_SCRIPT_READER(SYSDT_NGPrefix2NewLuaGet, SYSDT_BOL_NG_TYPE_2)
MVPN_SCRIPT_READER(SYSDT_NGPrefix3NewLuaGet, SYSDT_BOL_NG_TYPE_3)
MVPN_SCRIPT_READER(SYSDT_NGPrefix41NewLuaGet, SYSDT_BOL_NG_TYPE_4_1)
MVPN_SCRIPT_READER(SYSDT_NGPrefix42NewLuaGet, SYSDT_BOL_NG_TYPE_4_2)
MVPN_SCRIPT_READER(SYSDT_NGPrefix43NewLuaGet, SYSDT_BOL_NG_TYPE_4_3)
MVPN_SCRIPT_READER(SYSDT_NGPrefix5NewLuaGet, SYSDT_BOL_NG_TYPE_5)
MVPN_SCRIPT_READER(SYSDT_NGPrefix6NewLuaGet, SYSDT_BOL_NG_TYPE_6)

u32 SYSDT_NGPrefix2LuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data) // (6)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    const auto source = script::Table::field(state, table, name);
    return source.is_table() ? SYSDT_NGPrefix2NewLuaGet(state, data, source.index()) : SYSDT_ERR_PARAM;
}

u32 SYSDT_BolPrefixLuaSetToIPv6(void *state, const void *field)
{
    if (state == nullptr || field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    script::push_bytes(
        state, {static_cast<const u8 *>(field) + offsetof(SYSDT_EvpnAddress, ipv6), sizeof(SYSDT_EvpnAddress::ipv6)});
    return SYSDT_OK;
}

u32 SYSDT_BolPrefixLuaParseToIPv4IPv6(void *state, u32 addressType, SYSDT_ScriptAddress *destination)
{
    if (state == nullptr || destination == nullptr)
        return SYSDT_ERR_NULL_PTR;
    switch (addressType) {
    case family_ipv4:
        if (SYSDT_SPTI_IsNumber(state, -1) == 0)
            return SYSDT_ERR_PARAM;
        destination->ipv4 = SYSDT_SPTI_ToUInt(state, -1);
        break;
    case family_ipv6:
        if (const u32 status = script::Table::top(state).get_bytes(destination->ipv6); status != SYSDT_OK)
            return status;
        SYSDT_SPTI_Pop(state, 1);
        break;
    default: return SYSDT_OK;
    }
    destination->family = addressType;
    return SYSDT_OK;
}
