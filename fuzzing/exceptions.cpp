// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "exceptions.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bgp_datatype/bgp_datatype.h"
#include "bgp_datatype/fields.hpp"

namespace bgpdt::fuzzing {

namespace {

using Value = std::span<const std::uint8_t>;

std::uint32_t word(Value value, std::size_t at)
{
    return selecting_word(value.subspan(std::min(at, value.size())), std::endian::native);
}

std::uint32_t kind(const Trial &trial) { return word(trial.value, 0); }

bool always(const Trial &) { return true; }

bool in_mode_1(const Trial &trial) { return trial.mode == 1; }

bool is_well_known(std::uint32_t community)
{
    return community == 0 || (community >= 0xFFFFFF01 && community <= 0xFFFFFF03);
}

/// A well-known community that was written as a pair.
bool well_known_pair(const Trial &trial) { return is_well_known(word(trial.value, 0)) && word(trial.value, 4) == 1; }

bool well_known_pair_in_list(const Trial &trial)
{
    for (std::size_t at = 0; at + 5 <= trial.value.size(); at += 5)
        if (is_well_known(word(trial.value, at)) && trial.value[at + 4] == 1)
            return true;
    return false;
}

/// The last of a list that was cut may be another community, as "0" of "0:1".
bool cut_list(const Trial &trial) { return trial.text.size() >= 392; }

bool lossy_list(const Trial &trial) { return well_known_pair_in_list(trial) || cut_list(trial); }

/// A list with an entry that prints as nothing but its separating blank.
bool blank_entry(const Trial &trial)
{
    return trial.text.starts_with(' ') || trial.text.ends_with(' ') || trial.text.find("  ") != std::string_view::npos;
}

/// An IGP router identifier prints as raw bytes.
bool igp_router_id(const Trial &trial) { return trial.text.find("igp-router-id") != std::string_view::npos; }

/// An identifier prints with 64 bits, of which 32 can be entered.
bool wide_identifier(const Trial &trial)
{
    constexpr std::string_view word = "IDENTIFIER";
    const std::size_t at = trial.text.find(word);
    const std::size_t digits = at == std::string_view::npos ? 0 : trial.text.find(']', at) - at - word.size();
    return digits >= 10;
}

bool lossy_ls_text(const Trial &trial) { return igp_router_id(trial) || wide_identifier(trial); }

SYSDT_LsPrefix ls_key(const Trial &trial)
{
    SYSDT_LsPrefix key{};
    std::copy_n(trial.value.data(), std::min(trial.value.size(), sizeof key), key.bytes);
    return key;
}

bool any_set(Value bytes)
{
    return std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; });
}

/// A BGP link with an area, an MT-ID, or addresses of both families: its form has no place for them.
bool lossy_bgp_link(const SYSDT_LsLink &link)
{
    const bool ipv4 = link.ipv4Interface != 0 || link.ipv4Neighbor != 0;
    const bool ipv6 = any_set(link.ipv6Interface) || any_set(link.ipv6Neighbor);
    return link.local.ospfArea != 0 || link.remote.ospfArea != 0 || link.mtId != 0 || (ipv4 && ipv6);
}

/// A BGP SID with an area or an MT-ID, likewise.
bool lossy_bgp_sid(const SYSDT_LsSrv6Sid &sid) { return sid.local.ospfArea != 0 || sid.mtId != SYSDT_LS_NO_MT_ID; }

/// What the printed form of a BGP-LS key does not tell, or not in a way that is read.
bool lossy_ls_key(const Trial &trial)
{
    const SYSDT_LsPrefix key = ls_key(trial);
    return igp_router_id(trial) || (key.head.routeType == SYSDT_LS_LINK && lossy_bgp_link(key.link)) ||
           (key.head.routeType == SYSDT_LS_SRV6_SID && lossy_bgp_sid(key.srv6Sid));
}

/// An IGP router identifier of more than the eight bytes that scripts see.
bool is_long(const std::uint8_t (&router_id)[SYSDT_LS_ROUTER_ID_SIZE]) { return any_set(Value(router_id).subspan(8)); }

bool long_router_id(const Trial &trial)
{
    const SYSDT_LsPrefix key = ls_key(trial);
    switch (key.head.routeType) {
    case SYSDT_LS_NODE:
    case SYSDT_LS_IPV4_PREFIX:
    case SYSDT_LS_IPV6_PREFIX: return is_long(key.node.local.igpRouterId);
    case SYSDT_LS_LINK: return is_long(key.link.local.igpRouterId) || is_long(key.link.remote.igpRouterId);
    case SYSDT_LS_SRV6_SID: return is_long(key.srv6Sid.local.igpRouterId);
    default: return false;
    }
}

/// A route type word that names none, though its low 8 bits, which the fields go by, may.
bool no_route_type(const Trial &trial) { return kind(trial) >= SYSDT_LS_ROUTE_TYPES; }

bool unseen_in_ls_key(const Trial &trial) { return long_router_id(trial) || no_route_type(trial); }

/// "RT <100 : 1>"
bool shown_route_target(const Trial &trial) { return trial.mode != 2; }

/// An IPv6 address that prints with a dotted tail.
bool dotted_ipv6(const Trial &trial)
{
    constexpr std::string_view separators = "-[]";
    for (std::string_view rest = trial.text; !rest.empty();) {
        const std::size_t end = std::min(rest.find_first_of(separators), rest.size());
        const std::string_view section = rest.substr(0, end);
        if (section.find("::") != std::string_view::npos && section.find('.') != std::string_view::npos)
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

bool no_multicast_key(const Trial &trial) { return kind(trial) == 0; }

bool multicast_key(const Trial &trial)
{
    const std::uint32_t sub_kind = kind(trial);
    return (sub_kind >= SYSDT_BOL_NG_TYPE_2 && sub_kind <= SYSDT_BOL_NG_TYPE_6) || sub_kind == SYSDT_BOL_NG_TYPE_4_1;
}

bool unlike(const Trial &trial, std::size_t first, std::size_t second)
{
    constexpr std::size_t family = offsetof(SYSDT_EvpnAddress, family);
    return trial.value[first + family] != trial.value[second + family];
}

/// A source and a group of different families: they are stored in the source's, and print in it or not at all.
bool mixed_customer(const Trial &trial)
{
    if (trial.value.size() < SYSDT_BOL_SIZE)
        return false;
    switch (kind(trial)) {
    case SYSDT_BOL_NG_TYPE_3: return unlike(trial, offsetof(SYSDT_BolNg3, source), offsetof(SYSDT_BolNg3, group));
    case SYSDT_BOL_NG_TYPE_4_3: return unlike(trial, offsetof(SYSDT_BolNg43, source), offsetof(SYSDT_BolNg43, group));
    case SYSDT_BOL_NG_TYPE_5: return unlike(trial, offsetof(SYSDT_BolNg5, source), offsetof(SYSDT_BolNg5, group));
    case SYSDT_BOL_NG_TYPE_6: return unlike(trial, offsetof(SYSDT_BolNg6, source), offsetof(SYSDT_BolNg6, group));
    default: return false;
    }
}

/// Two originators of different families, likewise.
bool mixed_originators(const Trial &trial)
{
    if (trial.value.size() < SYSDT_BOL_SIZE)
        return false;
    switch (kind(trial)) {
    case SYSDT_BOL_NG_TYPE_4_3:
        return unlike(trial, offsetof(SYSDT_BolNg43, originator1), offsetof(SYSDT_BolNg43, originator2));
    case SYSDT_BOL_NG_TYPE_4_1:
        return unlike(trial, offsetof(SYSDT_BolNg41, originator1), offsetof(SYSDT_BolNg41, originator2));
    default: return false;
    }
}

bool multicast_reprint(const Trial &trial)
{
    return no_multicast_key(trial) || mixed_customer(trial) || mixed_originators(trial) || dotted_ipv6(trial);
}

bool dispatched_reprint(const Trial &trial)
{
    switch (kind(trial)) {
    case SYSDT_BOL_VRFRTEXT: return shown_route_target(trial);
    case SYSDT_BOL_SRPOLICY:
    case SYSDT_BOL_SDWAN: return dotted_ipv6(trial);
    default: return multicast_key(trial) && multicast_reprint(trial);
    }
}

/// An Ethernet segment identifier alone, which is read as one with length 0 and address 0.0.0.0.
bool bare_segment(const Trial &trial) { return trial.text.find(':') == std::string_view::npos; }

bool dispatched_retext(const Trial &trial) { return kind(trial) == SYSDT_BOL_EVN && bare_segment(trial); }

bool other_kind(const Trial &trial) { return kind(trial) != trial.subject.sub_kind; }

template <std::uint32_t sub_kind>
bool other_than(const Trial &trial)
{
    return kind(trial) != sub_kind;
}

SYSDT_BolEvpn evpn_key(const Trial &trial)
{
    SYSDT_BolEvpn key{};
    std::memcpy(&key, trial.value.data(), std::min(trial.value.size(), sizeof key));
    return key;
}

/// What the text of an EVPN key, all that scripts see of it, is read as.
std::optional<SYSDT_BolEvpn> reread_evpn_key(const Trial &trial, bool lenient)
{
    const auto print = reinterpret_cast<decltype(&SYSDT_EvnPrefix2Str)>(trial.subject.symbol("SYSDT_EvnPrefix2Str"));
    const auto parse = reinterpret_cast<decltype(&SYSDT_Str2EvnPrefix)>(trial.subject.symbol("SYSDT_Str2EvnPrefix"));
    const SYSDT_BolEvpn value = evpn_key(trial);
    SYSDT_BolEvpn again{};
    again.subKind = value.subKind;
    char text[256];
    std::uint32_t length = 0;
    const bool parses = print(&value, text, &length) == SYSDT_OK && parse(text, &again, lenient ? 1 : 0) == SYSDT_OK;
    return parses ? std::optional(again) : std::nullopt;
}

/// An EVPN key that its own text does not give back: the text that it was read from did not parse, or was that of
/// another route type.
template <bool lenient>
bool unlike_its_text(const Trial &trial)
{
    const auto again = reread_evpn_key(trial, lenient);
    return !again || !std::ranges::equal(Value(reinterpret_cast<const std::uint8_t *>(&*again), sizeof *again),
                                         trial.value.first(sizeof *again));
}

/// The one form of 184 characters: a leave of which every number and address is as long as can be.
bool longest_evpn_text(const Trial &trial)
{
    constexpr std::uint32_t ten_digits = 1000000000;
    const SYSDT_BolEvpn value = evpn_key(trial);
    const auto &[esi, route, sequence] = value.key.sync;
    const auto is_longest = [](const SYSDT_EvpnSizedAddress &ip) {
        bool longest = ip.length >= 100 && ip.address.family == 1;
        for (std::size_t i = 0; i < sizeof ip.address.ipv6; i += 2)
            longest = longest && ip.address.ipv6[i] >= 0x10;
        return longest;
    };
    return value.key.routeType == SYSDT_EVPN_LEAVE && route.tag >= ten_digits && sequence >= ten_digits &&
           is_longest(route.source) && is_longest(route.group) && is_longest(route.originator);
}

bool unseen_evpn_key(const Trial &trial) { return kind(trial) != SYSDT_BOL_EVN || longest_evpn_text(trial); }

bool dispatched_reget(const Trial &trial)
{
    return kind(trial) == SYSDT_BOL_EVN ? unlike_its_text<true>(trial) : mixed_customer(trial);
}

bool dispatched_unseen(const Trial &trial)
{
    return kind(trial) == SYSDT_BOL_EVN ? !reread_evpn_key(trial, true) : mixed_customer(trial);
}

struct Rule {
    std::string_view name;
    bool (*applies)(const Trial &);
};

constexpr Rule rules[] = {
    {"always", always},
    {"in_mode_1", in_mode_1},
    {"well_known_pair", well_known_pair},
    {"lossy_list", lossy_list},
    {"cut_list", cut_list},
    {"blank_entry", blank_entry},
    {"lossy_ls_key", lossy_ls_key},
    {"lossy_ls_text", lossy_ls_text},
    {"long_router_id", long_router_id},
    {"unseen_in_ls_key", unseen_in_ls_key},
    {"shown_route_target", shown_route_target},
    {"dotted_ipv6", dotted_ipv6},
    {"multicast_reprint", multicast_reprint},
    {"dispatched_reprint", dispatched_reprint},
    {"dispatched_retext", dispatched_retext},
    {"dispatched_reget", dispatched_reget},
    {"dispatched_unseen", dispatched_unseen},
    {"bare_segment", bare_segment},
    {"unseen_evpn_key", unseen_evpn_key},
    {"other_kind", other_kind},
    {"unlike_its_text", unlike_its_text<false>},
    {"not_kind_0", other_than<0>},
    {"not_l2vpn", other_than<SYSDT_BOL_L2VPN>},
    {"not_mdt", other_than<SYSDT_BOL_MDT>},
};

struct PropertyName {
    std::string_view name;
    Property property;
};

constexpr PropertyName property_names[] = {{"reprint", Property::reprint},
                                           {"retext", Property::retext},
                                           {"reget", Property::reget},
                                           {"seen", Property::seen},
                                           {"check", Property::check}};

struct Exception {
    Property property;
    std::string_view subject;
    bool (*applies)(const Trial &);
};

/// "PROPERTY RULE"
Exception exception(const test::Statement &statement)
{
    const std::size_t blank = std::min(statement.words.find(' '), statement.words.size());
    const auto *property = std::ranges::find(property_names, statement.words.substr(0, blank), &PropertyName::name);
    const auto *rule =
        std::ranges::find(rules, statement.words.substr(std::min(blank + 1, statement.words.size())), &Rule::name);
    if (property == std::end(property_names) || rule == std::end(rules))
        throw std::runtime_error("the head of " + std::string(statement.name) +
                                 " breaks what is unknown: " + std::string(statement.words));
    return {property->property, statement.name, rule->applies};
}

std::span<const Exception> exceptions()
{
    static const std::vector<Exception> all = [] {
        std::vector<Exception> rows;
        for (const test::Statement &statement : test::head_statements("breaks"))
            rows.push_back(exception(statement));
        return rows;
    }();
    return all;
}

} // namespace

bool promised(Property property, const Trial &trial)
{
    return std::ranges::none_of(exceptions(), [&](const Exception &row) {
        return row.property == property && row.subject == trial.subject.name && row.applies(trial);
    });
}

} // namespace bgpdt::fuzzing
