// SPDX-License-Identifier: Apache-2.0
#include "exceptions.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

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
    for (std::size_t at = 0; at + 5 <= trial.value.size(); at += 5) {
        if (is_well_known(word(trial.value, at)) && trial.value[at + 4] == 1) {
            return true;
        }
    }
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

/// "RT <100 : 1>"
bool shown_route_target(const Trial &trial) { return trial.mode != 2; }

/// An IPv6 address that prints with a dotted tail.
bool dotted_ipv6(const Trial &trial)
{
    constexpr std::string_view separators = "-[]";
    for (std::string_view rest = trial.text; !rest.empty();) {
        const std::size_t end = std::min(rest.find_first_of(separators), rest.size());
        const std::string_view section = rest.substr(0, end);
        if (section.find("::") != std::string_view::npos && section.find('.') != std::string_view::npos) {
            return true;
        }
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

/// A source and a group, or two originators, of different families: they print in one of them or not at all.
bool mixed_families(const Trial &trial)
{
    if (trial.value.size() < SYSDT_BOL_SIZE) {
        return false;
    }
    switch (kind(trial)) {
    case SYSDT_BOL_NG_TYPE_3: return unlike(trial, offsetof(SYSDT_BolNg3, source), offsetof(SYSDT_BolNg3, group));
    case SYSDT_BOL_NG_TYPE_4_3:
        return unlike(trial, offsetof(SYSDT_BolNg43, source), offsetof(SYSDT_BolNg43, group)) ||
               unlike(trial, offsetof(SYSDT_BolNg43, originator1), offsetof(SYSDT_BolNg43, originator2));
    case SYSDT_BOL_NG_TYPE_5: return unlike(trial, offsetof(SYSDT_BolNg5, source), offsetof(SYSDT_BolNg5, group));
    case SYSDT_BOL_NG_TYPE_6: return unlike(trial, offsetof(SYSDT_BolNg6, source), offsetof(SYSDT_BolNg6, group));
    case SYSDT_BOL_NG_TYPE_4_1:
        return unlike(trial, offsetof(SYSDT_BolNg41, originator1), offsetof(SYSDT_BolNg41, originator2));
    default: return false;
    }
}

bool multicast_reprint(const Trial &trial)
{
    return no_multicast_key(trial) || mixed_families(trial) || dotted_ipv6(trial);
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

template <std::uint32_t sub_kind>
bool other_than(const Trial &trial)
{
    return kind(trial) != sub_kind;
}

bool evpn_or_multicast(const Trial &trial) { return kind(trial) == SYSDT_BOL_EVN || multicast_key(trial); }

struct Exception {
    Property property;
    std::string_view subject; ///< one that ends in "*" is the beginning of several
    bool (*applies)(const Trial &);
};

constexpr Exception exceptions[] = {
    {Property::reprint, "ASNUM_ENHANCE", in_mode_1},              // (1) quotes are read, none are printed
    {Property::reprint, "COMMUNITY", well_known_pair},            // (1) (2)
    {Property::reprint, "CMNTY_ENHANCE", lossy_list},             // (3) (4)
    {Property::reprint, "VRFRTEXT", shown_route_target},          // (6)
    {Property::reprint, "VPNV4MCPREFIX", always},                 // (4)
    {Property::reprint, "MDTPREFIX", always},                     // (4)
    {Property::reprint, "SRPOLICY", dotted_ipv6},                 // (3)
    {Property::reprint, "SD-WAN", dotted_ipv6},                   // (2)
    {Property::reprint, "BGPLSPREFIX", always},                   // text (19)
    {Property::reprint, "BOLPREFIX", dispatched_reprint},         // (12) and the rows'
    {Property::reprint, "NG_*", multicast_reprint},               // text (1) (4) (6) (8)
    {Property::retext, "CMNTY_ENHANCE", cut_list},                // (4)
    {Property::retext, "CMNTY_ENHANCE", blank_entry},             // (6)
    {Property::retext, "EVN", bare_segment},                      // print (14) (15)
    {Property::retext, "EVNPREFIX", bare_segment},                // print (14) (15)
    {Property::retext, "BOLPREFIX", dispatched_retext},           // the rows'
    {Property::retext, "BGPLSPREFIX", lossy_ls_text},             // print (3) (12)
    {Property::check, "RPD", always},                             // (4)
    {Property::reget, "EVN", always},                             // (27) (28)
    {Property::reget, "EVNPREFIX", always},                       // (27) (28)
    {Property::reget, "NG_*", always},                            // script (5)
    {Property::reget, "BOLPREFIX", evpn_or_multicast},            // (15), (20) and the rows'
    {Property::reget, "BGPLSPREFIX", always},                     // script (1) (2)
    {Property::reget, "CVRFNAME", always},                        // a string of the host's
    {Property::seen, "EVN", always},                              // (27) (28)
    {Property::seen, "EVNPREFIX", always},                        // (27) (28)
    {Property::seen, "NG_*", always},                             // script (5)
    {Property::seen, "BOLPREFIX", evpn_or_multicast},             // (15), (20) and the rows'
    {Property::seen, "BGPLSPREFIX", always},                      // script (1) (2)
    {Property::seen, "CVRFNAME", always},                         // a string of the host's
    {Property::seen, "IPV4", other_than<SYSDT_BOL_IPV4>},         // (6)
    {Property::seen, "VRFRTEXT", other_than<0>},                  // (12)
    {Property::seen, "L2VPN", other_than<SYSDT_BOL_L2VPN>},       // (6)
    {Property::seen, "L2VPNPREFIX", other_than<SYSDT_BOL_L2VPN>}, // (6)
    {Property::seen, "VPNV4MCAST", always},                       // (8)
    {Property::seen, "VPNV4MCPREFIX", always},                    // (8)
    {Property::seen, "MDT", other_than<SYSDT_BOL_MDT>},           // (9)
    {Property::seen, "MDTPREFIX", other_than<SYSDT_BOL_MDT>},     // (9)
    {Property::seen, "RPD", other_than<SYSDT_BOL_RPD>},           // (7)
};

} // namespace

namespace {

bool is_of(const Exception &row, std::string_view name)
{
    return row.subject.ends_with('*') ? name.starts_with(row.subject.substr(0, row.subject.size() - 1))
                                      : row.subject == name;
}

} // namespace

bool promised(Property property, const test::Subject &subject, const Trial &trial)
{
    return std::ranges::none_of(exceptions, [&](const Exception &row) {
        return row.property == property && is_of(row, subject.name) && row.applies(trial);
    });
}

} // namespace bgpdt::fuzzing
