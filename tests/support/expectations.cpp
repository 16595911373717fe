// SPDX-License-Identifier: Apache-2.0
#include "expectations.hpp"

#include <algorithm>
#include <array>

#include "bgp_datatype/host.h"

namespace bgpdt::test {

namespace {

constexpr std::uint32_t invalid = SYSDT_ERR_INVALID_VALUE;
constexpr std::uint32_t param = SYSDT_ERR_PARAM;

// FormatIn
constexpr std::string_view strict = "fppfufp";
constexpr std::string_view quoted = "fqpfufp";
constexpr std::string_view open_in = "ppppupp";
constexpr std::string_view narrow = "fppfuff";
constexpr std::string_view no_in;
// FormatOut
constexpr std::string_view with_copy = "fttcuft";
constexpr std::string_view with_bare = "fttbuft";
constexpr std::string_view text_only = "fttfuft";
constexpr std::string_view open_out = "ttttutt";
constexpr std::string_view no_out;

constexpr std::uint32_t vpn = bytewise | whole_value;
constexpr std::uint32_t key = clears_first | bytewise;
constexpr std::uint32_t evpn = clears_first | help_swallows | get_pushed;
constexpr std::uint32_t multicast = evpn | any_sub_kind;
constexpr std::uint32_t policy = clears_first | bytewise | compare_tests_null;

constexpr std::array<Expectation, 25> types{{
    {"ASNUM", strict, invalid, with_copy, 33, "hhh", 0, whole_value},
    {"ASNUMEXT", strict, invalid, with_copy, 33, "hhh", 0, whole_value},
    {"ASNUM_ENHANCE", quoted, invalid, text_only, 3072, "hhh", 0, whole_value | bytewise | help_swallows},
    {"COMMUNITY", strict, invalid, text_only, 33, "hhh", 0, whole_value | bytewise},
    {"CMNTY_ENHANCE", open_in, invalid, text_only, 393, "hhh", 0, whole_value | bytewise | help_swallows},
    {"LARGECOMMUNITY", narrow, invalid, open_out, 257, "hhh", 0, whole_value | bytewise | help_only_mode_1},
    {"EXTCOMMUNITY", strict, invalid, text_only, 257, "hhh", 0, whole_value | bytewise},
    {"EXTCOMMUNITY_BW", no_in, 0, text_only, 257, "-hh", 0, whole_value | bytewise},

    {"VRFRD", strict, invalid, with_bare, 257, "hhh", 0, vpn | null_without_memory | apart_in_mode_2},
    {"VRFRT", strict, invalid, with_bare, 257, "hhh", 0, vpn | null_without_memory | apart_in_mode_2},
    {"SOO", strict, invalid, "ftttuft", 257, "hhh", 0, vpn | null_without_memory},
    {"VRFRTV6", strict, invalid, with_bare, 257, "hhh", 0, bytewise},
    {"RTPRD", strict, invalid, text_only, 257, "hhh", 0, vpn},
    {"VPNID", strict, invalid, with_bare, 257, "ppp", 0, whole_value},
    {"BOLRD", open_in, invalid, "tttbutt", 257, "hhh", 0,
     whole_value | dispatches | compare_tests_null | short_set_invalid | short_get_invalid},

    {"BOLPREFIX", open_in, invalid, open_out, 257, "hhh", 89,
     dispatches | compare_tests_null | help_swallows | short_set_invalid},
    {"EVNPREFIX", open_in, param, open_out, 257, "hhh", 89, evpn},
    {"L2VPNPREFIX", no_in, 0, open_out, 257, "-hh", 89, clears_first | help_asks_symbol | inert_in},
    {"VPNV4MCPREFIX", open_in, param, open_out, 257, "hhh", 89, key},
    {"MDTPREFIX", open_in, param, open_out, 257, "ppp", 89, key},
    {"BGPLSPREFIX", narrow, invalid, open_out, 513, "ppp", 0,
     clears_first | bytewise | compare_tests_null | endian_tests_null | get_leaves_none},

    {"ATTRIDBITMAP", no_in, 0, "ttssutt", 4096, "-hh", 0, clears_late | bytewise | check_takes_null | get_leaves_none},
    {"TIME_RANGE", strict, param, no_out, 0, "h-h", 0, name_optional | set_any_length | get_leaves_none},
    {"SID_STRUCTURE", no_in, 0, open_out, 257, "-h-", 0, clears_first},
    {"CVRFNAME", no_in, 0, "..c....", 257, "-h-", 0, always_takes},
}};

/// In the order of their sub-kinds.
constexpr std::array<Expectation, 17> prefix_rows{{
    {"IPV4", open_in, param, open_out, 257, "hhh", 89, clears_first | help_asks_symbol},
    {"EVN", open_in, param, open_out, 257, "hhh", 89, evpn},
    {"NG_TYPE_2", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"NG_TYPE_3", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"NG_TYPE_4_2", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"NG_TYPE_4-3", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"NG_TYPE_5", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"NG_TYPE_6", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"VRFRTEXT", strict, invalid, with_bare, 257, "hhh", 89, vpn | apart_in_mode_2},
    {"L2VPN", no_in, 0, open_out, 257, "-hh", 89, clears_first | help_asks_symbol},
    {"VPNV4MCAST", no_in, 0, open_out, 257, "-hh", 89, key},
    {"MDT", no_in, 0, open_out, 257, "-pp", 89, key},
    {"RPD", open_in, param, open_out, 257, "hhp", 89, policy},
    {"NG_TYPE_4-1", open_in, param, open_out, 257, "hhh", 89, multicast},
    {"SRPOLICY", open_in, param, open_out, 257, "hhp", 89, policy},
    {"IPV6", open_in, param, open_out, 257, "hhh", 89, help_swallows},
    {"SD-WAN", open_in, param, open_out, 257, "hhp", 89, policy},
}};

constexpr std::array<Expectation, 1> distinguisher_rows{{
    {"RD:RT", open_in, invalid, "tttbutt", 257, "hhh", 0, vpn | apart_in_mode_2},
}};

constexpr std::array<PrintFailure, 10> failures{{
    {" COMMUNITY ", SYSDT_ERR_INVALID_VALUE, Fate::back, "the notation is unknown"},
    {" EXTCOMMUNITY ", SYSDT_ERR_FAIL, Fate::freed, "the type is unknown"},
    {" VRFRD VRFRT SOO RTPRD RD:RT ", SYSDT_ERR_FAIL, Fate::back, "the type code is unknown"},
    {" BOLRD ", SYSDT_ERR_INVALID_VALUE, Fate::back, "the row fails: the type code is unknown"},
    {" BOLRD BOLPREFIX ", SYSDT_ERR_INVALID_VALUE, Fate::none, "the sub-kind has no row"},
    {" BOLPREFIX ", SYSDT_ERR_INVALID_VALUE, Fate::freed, "the row fails: the EVPN route type is unknown"},
    {" EVNPREFIX EVN ", SYSDT_ERR_FAIL, Fate::freed, "the route type is unknown"},
    {" L2VPNPREFIX L2VPN NG_TYPE_2 NG_TYPE_3 NG_TYPE_4_2 NG_TYPE_4-3 NG_TYPE_5 NG_TYPE_6 NG_TYPE_4-1 ", SYSDT_ERR_FAIL,
     Fate::freed, "the sub-kind is another one"},
    {" RPD SRPOLICY SD-WAN ", SYSDT_ERR_FAIL, Fate::released, "the sub-kind is another one"},
    {" ATTRIDBITMAP ", SYSDT_OK, Fate::freed, "the record cannot be listed"},
}};

} // namespace

std::span<const PrintFailure> print_failures() { return failures; }

const Expectation *expectation_of(std::string_view name)
{
    const auto named = [&](const Expectation &row) { return row.name == name; };
    if (const auto found = std::ranges::find_if(types, named); found != types.end())
        return &*found;
    if (const auto found = std::ranges::find_if(prefix_rows, named); found != prefix_rows.end())
        return &*found;
    return name == distinguisher_rows[0].name ? distinguisher_rows.data() : nullptr;
}

const Expectation *expectation_behind(const Expectation &dispatcher, std::uint32_t sub_kind)
{
    if (dispatcher.name == "BOLRD")
        return sub_kind == 0 ? distinguisher_rows.data() : nullptr;
    return sub_kind < prefix_rows.size() ? &prefix_rows[sub_kind] : nullptr;
}

} // namespace bgpdt::test
