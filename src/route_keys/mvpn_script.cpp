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
#include "bol_prefix/bol_row.hpp"
#include "common/bytes.hpp"
#include "route_keys/mvpn.hpp"

using namespace bgpdt;
using namespace bgpdt::mvpn;

namespace {

constexpr char as_value_key[] = "bolNgAsNumValue";
constexpr char as_type_key[] = "bolNgAsNumType";
constexpr char source_family_key[] = "bolNgCSIpType";
constexpr char source_key[] = "bolNgPrefixCS";
constexpr char group_family_key[] = "bolNgCGIpType";
constexpr char group_key[] = "bolNgPrefixCG";
constexpr char originator_family_key[] = "bolNgOriIpType";
constexpr char originator_key[] = "bolNgPrefixOriIP";
constexpr char originator1_key[] = "bolNgPrefixOriIP1";
constexpr char originator2_key[] = "bolNgPrefixOriIP2";

u8 family_of(const u8 *field) { return field[offsetof(SYSDT_EvpnAddress, family)]; }

// ------------------------------------------------------------------------------------------------ to a table

class TableWriter {
public:
    TableWriter(void *state, const script::Table &table, const Kind &kind, const u8 *value)
        : state_(state), table_(table), kind_(kind), value_(value)
    {
    }

    void write() const
    {
        if (const u8 *const as = field(Role::as)) {
            set_number(as_value_key, load<u32>(as));
            set_number(as_type_key, load<u32>(as + 4));
        }
        if (const u8 *const source = field(Role::source))
            write_customer(source, field(Role::group));
        if (const u8 *const originator = field(Role::originator))
            write_originators(originator, field(Role::originator2));
        set_number("bolType", load<u32>(value_));
    }

private:
    const u8 *field(Role role) const
    {
        const Section *const section = kind_.find(role);
        return section == nullptr ? nullptr : value_ + section->offset;
    }

    void set_number(const char *key, u32 number) const
    {
        SYSDT_SPTI_PushUInt(state_, number);
        table_.set(key);
    }

    void set_address(const char *key, const u8 *address, u8 family) const
    {
        switch (family) {
        case 0: set_number(key, load<u32>(address)); break;
        case 1:
            SYSDT_BolPrefixLuaSetToIPv6(state_, address);
            table_.set(key);
            break;
        default: break; // (3)
        }
    }

    void write_customer(const u8 *source, const u8 *group) const
    {
        const u8 family = family_of(source); // (1)
        set_number(source_family_key, family);
        set_number(group_family_key, family_of(group));
        const bool group_first = family == 0 && kind_.find(Role::as) == nullptr; // (2)
        if (group_first)
            set_address(group_key, group, family);
        set_address(source_key, source, family);
        if (!group_first)
            set_address(group_key, group, family);
    }

    void write_originators(const u8 *first, const u8 *second) const
    {
        const u8 family = family_of(first); // (1)
        set_number(originator_family_key, family);
        set_address(second == nullptr ? originator_key : originator1_key, first, family);
        if (second != nullptr)
            set_address(originator2_key, second, family);
    }

    void *state_;
    script::Table table_;
    const Kind &kind_;
    const u8 *value_;
};

u32 set_key(const Kind &kind, void *state, i32 parent, const char *name, u32 length, const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < SYSDT_BOL_SIZE)
        return SYSDT_ERR_PARAM;
    parent = script::absolute(state, parent);
    const auto table = script::Table::create(state, 0, kind.slots); // (7)
    TableWriter(state, table, kind, static_cast<const u8 *>(data)).write();
    SYSDT_SPTI_SetField(state, parent, name);
    return SYSDT_OK;
}

// ------------------------------------------------------------------------------------------------ from a table

class TableReader {
public:
    TableReader(void *state, i32 table, const Kind &kind, u8 *value)
        : state_(state), table_(script::Table::at(state, table)), kind_(kind), value_(value)
    {
    }

    /// Stores field by field; SYSDT_ERR_PARAM at the first that is missing or of another kind. (4)
    u32 read() const
    {
        const Section *const first = kind_.find(Role::originator);
        const Section *const second = kind_.find(Role::originator2);
        const Section *const source = kind_.find(Role::source);
        const Section *const group = kind_.find(Role::group);
        const Section *const as = kind_.find(Role::as);
        u32 family = 0;
        bool done =
            first == nullptr || (read_family(originator_family_key, family) &&
                                 (second == nullptr || read_address(originator2_key, family, *second)) &&
                                 read_address(second == nullptr ? originator_key : originator1_key, family, *first));
        done = done && (source == nullptr ||
                        (read_family(source_family_key, family) && read_address(source_key, family, *source) &&
                         read_family(group_family_key, family) && read_address(group_key, family, *group)));
        done = done &&
               (as == nullptr || (read_number(as_type_key, as->offset + 4) && read_number(as_value_key, as->offset)));
        return done ? SYSDT_OK : SYSDT_ERR_PARAM;
    }

private:
    bool read_family(const char *key, u32 &family) const { return table_.get_number(key, family); }

    bool read_number(const char *key, u32 offset) const
    {
        u32 number = 0;
        if (!table_.get_number(key, number))
            return false;
        store(value_ + offset, number);
        return true;
    }

    bool read_address(const char *key, u32 family, const Section &section) const
    {
        SYSDT_ScriptAddress address{};
        if (family <= 1) { // (5)
            table_.push(key);
            if (SYSDT_BolPrefixLuaParseToIPv4IPv6(state_, family, &address) != SYSDT_OK)
                return false;
            if (family == 0)
                SYSDT_SPTI_Pop(state_, 1);
        }
        SYSDT_EvpnAddress field{address.ipv4, {}, static_cast<u8>(address.family)};
        std::memcpy(field.ipv6, address.ipv6, sizeof field.ipv6);
        std::memcpy(value_ + section.offset, &field, sizeof field);
        return true;
    }

    void *state_;
    script::Table table_;
    const Kind &kind_;
    u8 *value_;
};

u32 read_key(const Kind &kind, void *state, void *value, i32 table)
{
    if (state == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return TableReader(state, table, kind, static_cast<u8 *>(value)).read();
}

} // namespace

#define MVPN_LUA_SET(name, sub_kind)                                                                                   \
    u32 name(void *state, i32 table, const char *field, u32, u32 length, const void *data)                             \
    {                                                                                                                  \
        return set_key(kind<sub_kind>, state, table, field, length, data);                                             \
    }

#define MVPN_SCRIPT_READER(name, sub_kind)                                                                             \
    u32 name(void *state, void *value, i32 table) { return read_key(kind<sub_kind>, state, value, table); }

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
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < SYSDT_BOL_SIZE)
        return SYSDT_ERR_PARAM;
    const auto source = script::Table::field(state, table, name);
    return source.is_table() ? SYSDT_NGPrefix2NewLuaGet(state, data, source.index()) : SYSDT_ERR_PARAM;
}

u32 SYSDT_BolPrefixLuaSetToIPv6(void *state, const void *field)
{
    if (state == nullptr || field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    script::push_bytes(state, {static_cast<const u8 *>(field) + offsetof(SYSDT_EvpnAddress, ipv6), 16});
    return SYSDT_OK;
}
