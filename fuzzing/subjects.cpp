// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "subjects.hpp"

#include <bit>
#include <cstring>
#include <stdexcept>

#include "bgp_datatype/fields.hpp"
#include "host/host.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Expectation;
using test::Subject;

/// A name index: all its callbacks are the host's.
constexpr Expectation name_index{
    "", "fppfufp", SYSDT_ERR_INVALID_VALUE, "fttcuft", 257, "hhh", 0, test::whole_value | test::get_leaves_none,
};

/// A client VRF name's, where they are the host's.
constexpr std::string_view host_in = "fppfufp";
constexpr std::string_view host_out = "ftccuft";

bool is_name_index(const SYSDT_Record &record) { return record.formatIn == SYS_DT_UINT32IndexFormatIn; }

Subject of_name_index(const SYSDT_Record &record)
{
    Subject subject;
    subject.name = record.name;
    subject.kind = record.typeId;
    subject.length = record.dataLength;
    subject.expect = name_index;
    subject.format_in = record.formatIn;
    subject.format_out = record.formatOut;
    subject.compare = record.compare;
    subject.lua_set = record.luaSet;
    subject.lua_get = record.luaGet;
    return subject;
}

Subject named(const host::Host &host, const std::string &name, bool row)
{
    test::Line line;
    line.subject = name;
    line.row = row;
    Subject subject = test::subject_of(host, line);
    if (subject.kind == SYSDT_TYPE_CVRFNAME) {
        subject.expect.in = host_in;
        subject.expect.unparsed = SYSDT_ERR_INVALID_VALUE;
        subject.expect.out = host_out;
        subject.expect.memory = "hhh";
        subject.expect.traits |= test::get_leaves_none;
    }
    return subject;
}

void add_rows(std::vector<Subject> &subjects, const host::Host &host, const char *type, const std::string &prefix)
{
    for (const SYSDT_DispatchRow &row : test::dispatch_rows(host, type))
        subjects.push_back(named(host, prefix + row.name, true));
}

constexpr Parser parsers[] = {
    {"SYSDT_Str2AsNum", sizeof(SYSDT_AsNum)},
    {"SYSDT_Str2AsNumExt", sizeof(SYSDT_AsNum)},
    {"SYSDT_Str2ExtCommunity", sizeof(SYSDT_Octets)},
    {"SYSDT_Str2VrfRd", sizeof(SYSDT_Octets)},
    {"SYSDT_Str2VrfRt", sizeof(SYSDT_Octets)},
    {"SYSDT_Str2Soo", sizeof(SYSDT_Octets)},
    {"SYSDT_Str2VrfRtV6", sizeof(SYSDT_VrfRtV6)},
    {"SYSDT_Str2RtpRd", sizeof(SYSDT_RtpRd)},
    {"SYSDT_Str2VpnId", sizeof(SYSDT_VpnId)},
    {"SYSDT_Str2VrfRtExt", sizeof(SYSDT_BolRouteTarget)},
    {"SYSDT_Str2Vpnv4McastPrefix", sizeof(SYSDT_Vpnv4Mcast)},
    {"SYSDT_Str2MdtPrefix", sizeof(SYSDT_Mdt)},
    {"SYSDT_Str2RpdPrefix", sizeof(SYSDT_Rpd)},
    {"SYSDT_Str2SrPolicyPrefix", sizeof(SYSDT_SrPolicy)},
    {"SYSDT_Str2Srv4PolicyPrefix", sizeof(SYSDT_SrPolicy)},
    {"SYSDT_Str2Srv6PolicyPrefix", sizeof(SYSDT_SrPolicy)},
    {"SYSDT_Str2SdwanPrefix", sizeof(SYSDT_BolSdwan)},
    {"SYSDT_Str2SdwanV4Prefix", sizeof(SYSDT_BolSdwan)},
    {"SYSDT_Str2SdwanV6Prefix", sizeof(SYSDT_BolSdwan)},
    {"SYSDT_Str2EvnPrefix", sizeof(SYSDT_BolEvpn), true},
    {"SYSDT_Str2Ad", sizeof(SYSDT_BolEvpn), true},
    {"SYSDT_Str2EvnMac", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Inclusive", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Es", sizeof(SYSDT_BolEvpn), true},
    {"SYSDT_Str2IpPrefix", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Ipv6Prefix", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2EvpnMcRoute", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2EvpnSmetRoute", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2EvpnJoinRoute", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2EvpnLeaveRoute", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Ipv6EvnMac", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Ipv6EvnInc", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2Ipv6EvpnEs", sizeof(SYSDT_BolEvpn), true},
    {"SYSDT_Str2Ipv6EvnMacFillPrefix", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2EsDetail", sizeof(SYSDT_BolEvpn)},
    {"SYSDT_Str2NGPrefix", sizeof(SYSDT_BolValue)},
    {"SYSDT_Str2NGIpv6Prefix", sizeof(SYSDT_BolValue)},
    {"SYSDT_Str2NGIpv6Prefix_Type1", sizeof(SYSDT_BolIpv6)},
    {"SYSDT_Str2IPv4IPv6", sizeof(SYSDT_EvpnAddress)},
    {"SYSDT_Str2LSPrefix", sizeof(SYSDT_LsPrefix)},
    {"SYSDT_Str2TimeRange", sizeof(SYSDT_TimeRange)},
};

} // namespace

std::vector<Subject> all_subjects(const host::Host &host)
{
    std::vector<Subject> subjects;
    for (const SYSDT_Record *record : host.types())
        subjects.push_back(is_name_index(*record) ? of_name_index(*record) : named(host, record->name, false));
    add_rows(subjects, host, "BOLPREFIX", "");
    add_rows(subjects, host, "BOLRD", "RD:");
    return subjects;
}

std::vector<Parser> all_parsers(const host::Host &host)
{
    std::vector<Parser> found(std::begin(parsers), std::end(parsers));
    for (Parser &parser : found) {
        parser.function = host.symbol(parser.name);
        if (parser.function == nullptr)
            throw std::runtime_error(std::string("no parser ") + parser.name);
    }
    return found;
}

std::uint32_t Parser::operator()(char *text, void *value) const
{
    return lenient ? reinterpret_cast<Lenient *>(function)(text, value, 0)
                   : reinterpret_cast<Plain *>(function)(text, value);
}

const Expectation &answering(const Subject &subject, std::span<const std::uint8_t> value)
{
    if (!subject.expect.has(test::dispatches))
        return subject.expect;
    const Expectation *row = test::expectation_behind(subject.expect, selecting_word(value, std::endian::native));
    return row == nullptr ? subject.expect : *row;
}

} // namespace bgpdt::fuzzing
