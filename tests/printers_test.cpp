// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Printing is total: every byte value at every place of the values that the vectors know, and random values, print, or
/// fail as the type's description says; into the caller's block and into one of the call's own, which hold different
/// rubbish, the same text with the length that is told.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "host/host.hpp"
#include "support/conversion.hpp"
#include "support/plugin_test.hpp"
#include "support/setting.hpp"
#include "support/share.hpp"
#include "support/subject.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::test {

namespace {

using Random = std::mt19937;

constexpr std::size_t random_values = 20000;
constexpr std::uint8_t other_poison = 0x5A;

/// Longer values, lists, are swept in their first entries, in their last, and at every few places between.
constexpr std::size_t swept_at_each_end = 64;
constexpr std::size_t middle_step = 37;

/// A type has so many cases, one of each few if it has more values.
constexpr std::size_t most_cases = 500000;

/// What one call gave.
struct Outcome {
    std::uint32_t status = 0;
    bool printed = false;
    std::uint16_t kind = 0;
    std::uint16_t length = 0;
    std::string text;

    bool operator==(const Outcome &) const = default;
};

std::string described(const Outcome &outcome)
{
    return host::status_name(outcome.status) + ", kind " + std::to_string(outcome.kind) + ", length " +
           std::to_string(outcome.length) + ", " + show(outcome.text);
}

/// What was tried.
struct Tally {
    std::size_t calls = 0;
    std::size_t values = 0;
    std::size_t left_out = 0;
    std::size_t thinned = 0;
    std::size_t zero_texts = 0;
    std::map<const PrintFailure *, std::size_t> failures;
};

Tally tally;

/// The values of one type or row.
class Printing {
public:
    Printing(Subject subject, std::vector<Bytes> values) : subject_(std::move(subject)), values_(std::move(values))
    {
        for (std::uint8_t mode = 0; mode < 7; ++mode) {
            const char letter = subject_.expect.out_letter(mode);
            if (std::string_view("tbcs").find(letter) != std::string_view::npos) {
                modes_.push_back(mode);
                contexts_.emplace_back(mode);
            }
        }
    }

    void run()
    {
        std::size_t cases = 0;
        for (const Bytes &value : values_)
            cases += 256 * std::min<std::size_t>(value.size(), 300);
        every_ = share() * (cases / most_cases + 1) | 1; // odd, so that every byte value has its turn
        tally.thinned += cases > most_cases ? 1 : 0;
        for (const Bytes &value : values_)
            guarded([&] { sweep(value); });
        guarded([&] { print_random(); });
        for (const Context &context : contexts_)
            context.check(report_);
    }
    const std::vector<std::string> &problems() const { return report_.problems(); }

private:
    void guarded(const std::function<void()> &action)
    {
        const std::string fault = memory_fault(action);
        if (!fault.empty()) {
            report_.fail(place_ + ": " + fault + " with " + show(current_));
            AttackHost::instance().begin();
        }
    }

    /// Every byte value at every place; all modes take turns at them.
    void sweep(const Bytes &golden)
    {
        place_ = "swept value";
        Guarded value(golden);
        current_ = golden;
        for (std::size_t mode = 0; mode < modes_.size(); ++mode)
            expect_printed(value, mode);
        Turns turns(every_);
        for (std::size_t at = 0; at < golden.size(); ++at) {
            if (at >= swept_at_each_end && at + swept_at_each_end < golden.size() && golden.size() > 300 &&
                at % middle_step != 0) {
                ++tally.left_out;
                continue;
            }
            for (int byte = 0; byte < 256; ++byte) {
                if (turns.next()) {
                    value.data()[at] = current_[at] = static_cast<std::uint8_t>(byte);
                    expect_printed(value, (turn_++) % modes_.size());
                }
            }
            value.data()[at] = current_[at] = golden[at];
        }
    }

    void print_random()
    {
        place_ = "random value";
        Random random(seed());
        for (std::size_t i = 0; i < std::max<std::size_t>(random_values / share(), 1); ++i) {
            Bytes bytes = values_[random() % values_.size()];
            change(bytes, random);
            current_ = bytes;
            Guarded value(bytes, i % 2 == 0 ? Place::end : Place::odd);
            expect_printed(value, i % modes_.size());
        }
    }

    /// All of it random, all but its first bytes, or some bytes.
    void change(Bytes &bytes, Random &random) const
    {
        const auto any = [&] { return static_cast<std::uint8_t>(random() % 4 == 0 ? random() % 3 - 1 : random()); };
        const std::size_t kept = random() % 3 == 0 ? 0 : 4 + random() % 3;
        if (bytes.empty())
            return;
        if (random() % 2 == 0)
            for (std::size_t left = 1 + random() % 12; left > 0; --left)
                bytes[random() % bytes.size()] = any();
        else
            std::generate(bytes.begin() + static_cast<std::ptrdiff_t>(std::min(kept, bytes.size())), bytes.end(), any);
        if (!subject_.expect.has(whole_value) && subject_.kind != SYSDT_TYPE_CVRFNAME && random() % 8 == 0)
            bytes.resize(random() % (bytes.size() + 1));
    }

    /// The row of the dispatch table that prints it, or the type itself.
    const Expectation &answering() const
    {
        std::uint32_t word = 0;
        std::copy_n(current_.begin(), std::min(sizeof word, current_.size()), reinterpret_cast<std::uint8_t *>(&word));
        const Expectation *row = subject_.expect.has(dispatches) ? expectation_behind(subject_.expect, word) : nullptr;
        return row == nullptr ? subject_.expect : *row;
    }

    /// One call, with the caller's block and with one of its own by turns; where it fails, and often else, both.
    void expect_printed(Guarded &value, std::size_t mode)
    {
        if (answering().has(whole_value) && value.size() < whole_size())
            return;
        ++tally.values;
        const bool lends = tally.values % 2 == 0;
        const Outcome outcome = call(value, mode, lends);
        const auto fail = [&](const std::string &problem) {
            report_.fail(place_ + " in " + in_mode(modes_[mode]) + ": " + problem + ": " + show(current_));
        };
        if (!outcome.printed || tally.values % 8 < 2) {
            const Outcome other = call(value, mode, !lends);
            if (other != outcome)
                fail("printed as " + described(outcome) + " and as " + described(other));
        }
        if (!value.intact() || !std::equal(current_.begin(), current_.end(), value.constant()))
            fail("the value was changed");
        if (!outcome.printed)
            expect_allowed(outcome, modes_[mode], fail);
    }

    std::size_t whole_size() const { return std::max<std::size_t>(subject_.length, subject_.script_size()); }

    void expect_allowed(const Outcome &outcome, std::uint8_t mode, const std::function<void(const std::string &)> &fail)
    {
        if (subject_.expect.out_letter(mode) == 's' && outcome.status == SYSDT_OK && fate_ == Fate::none)
            return;
        const Fate fate = released_ && fate_ == Fate::freed ? Fate::released : fate_;
        for (const PrintFailure &row : print_failures()) {
            if (row.concerns(subject_.name) && row.status == outcome.status && row.fate == fate) {
                ++tally.failures[&row];
                return;
            }
        }
        fail("failed as its description does not say: " + described(outcome) + ", fate " +
             std::to_string(static_cast<int>(fate)));
    }

    std::size_t block_size(char letter, std::size_t value) const
    {
        return letter == 'c' && !subject_.expect.has(always_takes) ? value : subject_.expect.buffer;
    }

    Outcome call(Guarded &value, std::size_t mode, bool lends)
    {
        ++tally.calls;
        AttackHost &host = AttackHost::instance();
        host.begin();
        const char letter = subject_.expect.out_letter(modes_[mode]);
        const std::size_t size = block_size(letter, value.size());
        void *lent = lends ? host.lend(size) : nullptr;
        if (lends)
            std::memset(lent, other_poison, size);
        Outputs outputs(lent);
        const std::uint32_t status =
            subject_.format_out(contexts_[mode].get(), subject_.kind, static_cast<std::uint32_t>(value.size()),
                                value.constant(), &outputs.kind, &outputs.length, &outputs.data);
        report_.require(outputs.intact(), "an output was written beyond its ends");
        Outcome outcome{status, false, outputs.kind, outputs.length, {}};
        const bool reported = outputs.kind == SYSDT_KIND_STRING || outputs.kind == SYSDT_KIND_BINARY || letter == 'c';
        if (status == SYSDT_OK && reported) {
            outcome.printed = true;
            take_text(outcome, letter == 'c' ? letter : answering().out_letter(modes_[mode]), outputs.data, lent);
        } else if (lends) {
            released_ = host.find(lent) == nullptr;
            report_.require(outputs.data == (released_ ? nullptr : lent), "the caller's block was mislaid");
        } else {
            const bool took = host.requests() > 0;
            fate_ = host.collect(outputs.data) ? Fate::back : took ? Fate::freed : Fate::none;
        }
        for (const std::string &problem : host.settle())
            report_.fail(place_ + ": " + problem + ": " + show(current_));
        return outcome;
    }

    void take_text(Outcome &outcome, char letter, void *data, const void *lent)
    {
        const auto fail = [&](const char *problem) {
            report_.fail(place_ + ": " + problem + ", " + described(outcome) + ": " + show(current_));
        };
        AttackHost &host = AttackHost::instance();
        if (lent != nullptr && (data == lent) == subject_.expect.has(always_takes))
            fail("the wrong block was delivered");
        const std::optional<Bytes> block = host.collect(data);
        if (!block || outcome.length > block->size()) {
            fail("no block, or one smaller than its length, was delivered");
            return;
        }
        if (letter == 'c') {
            outcome.text.assign(block->begin(), block->begin() + outcome.length);
            return;
        }
        const auto end = std::ranges::find(*block, 0);
        outcome.text.assign(block->begin(), end);
        const std::size_t told = outcome.length - (outcome.kind == SYSDT_KIND_STRING ? 1U : 0U);
        if (end == block->end())
            fail("the text has no end");
        else if (told != outcome.text.size() && !are_told_zeros(*block, told))
            fail("the length is not the text's");
        if ((outcome.kind == SYSDT_KIND_BINARY) != (letter == 'b'))
            fail("the kind is another one");
    }

    /// Multicast keys alone: behind an IPv4 group originators of different families are told with the group's length.
    bool are_told_zeros(const Bytes &block, std::size_t told)
    {
        const bool multicast = subject_.expect.has(any_sub_kind) || subject_.name == "BOLPREFIX";
        const bool zeros = std::all_of(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(told),
                                       [](std::uint8_t byte) { return byte == 0; });
        tally.zero_texts += multicast && zeros ? 1 : 0;
        return multicast && zeros;
    }

    Subject subject_;
    std::vector<Bytes> values_;
    std::vector<std::uint8_t> modes_;
    std::vector<Context> contexts_;
    Report report_;
    std::string place_;
    Bytes current_;
    std::size_t turn_ = 0;
    std::size_t every_ = 1;
    bool released_ = false; ///< the failed call released the caller's block
    Fate fate_{};           ///< what the failed call did with a block of its own
};

/// The values that the vectors know of each type and row.
std::map<std::string, std::pair<Subject, std::set<Bytes>>> known_values(const host::Host &host, const Vectors &vectors)
{
    std::map<std::string, std::pair<Subject, std::set<Bytes>>> known;
    for (const Line &line : vectors.lines) {
        const bool shown =
            line.verb == Verb::out || line.verb == Verb::bare || line.verb == Verb::copy || line.verb == Verb::skip;
        if (!shown && line.verb != Verb::in)
            continue;
        auto found = known.find(line.subject);
        if (found == known.end())
            found = known.emplace(line.subject, std::pair(subject_of(host, line), std::set<Bytes>{})).first;
        const Form form = found->second.first.form();
        found->second.second.insert(shown ? shown_to_native(form, line.bytes) : to_native(form, line.bytes));
    }
    return known;
}

using Printers = PluginTest;

TEST_F(Printers, PrintEveryValueOrFailAsDescribed)
{
    std::size_t subjects = 0;
    for (auto &[name, entry] : known_values(host_, read_vector_folder(vectors_folder()))) {
        auto &[subject, values] = entry;
        if (subject.format_out == nullptr)
            continue;
        ++subjects;
        Printing printing(subject, {values.begin(), values.end()});
        printing.run();
        for (const std::string &problem : printing.problems())
            ADD_FAILURE() << name << ": " << problem;
    }
    std::printf(
        "proved: %zu values of %zu types and rows printed in %zu calls, 1 in %zu tried, less of the %zu with more than "
        "%zu; %zu places in the middle of long values left out; %zu texts of zeros\n",
        tally.values, subjects, tally.calls, share(), tally.thinned, most_cases, tally.left_out, tally.zero_texts);
    for (const PrintFailure &row : print_failures()) {
        const std::string names = joined(row.names);
        EXPECT_TRUE(share() != 1 || tally.failures.contains(&row)) << names << ": " << row.why << ": never seen";
        std::printf("%9zu failed: %s: %.*s\n", tally.failures[&row], names.c_str(), static_cast<int>(row.why.size()),
                    row.why.data());
    }
    EXPECT_LT(40U, subjects);
}

/// An exported printer, called with a value of so many bytes.
struct Exported {
    const char *name;
    const char *subject;    ///< whose values it prints
    std::uint32_t size;     ///< of the buffer that it fills without asking; 0: it is told the size
    bool may_fail;          ///< for a value that it does not know
    std::size_t value_size; ///< what it reads of the value
    std::uint32_t (*call)(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length);
};

template <class Function>
Function *as(void *function)
{
    return reinterpret_cast<Function *>(function);
}

/// (value, buffer, size, length), whichever the value is.
template <class Value>
std::uint32_t sized(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length)
{
    using Function = std::uint32_t(const Value *, char *, std::uint32_t, std::uint32_t *);
    return as<Function>(function)(reinterpret_cast<const Value *>(value), buffer, size, length);
}

template <class Value>
std::uint32_t buffer_first(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    using Function = std::uint32_t(const Value *, char *, std::uint32_t *);
    *length = 0;
    return as<Function>(function)(reinterpret_cast<const Value *>(value), buffer, length);
}

template <class Value>
std::uint32_t length_first(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    using Function = std::uint32_t(const Value *, std::uint32_t *, char *);
    *length = 0;
    return as<Function>(function)(reinterpret_cast<const Value *>(value), length, buffer);
}

/// The pieces' arguments are taken from the value's first bytes.
std::uint32_t esi_piece(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length)
{
    return as<decltype(SYSDT_EVPN_EsiToStr)>(function)(&buffer, &size, length, value + 5);
}
std::uint32_t number_piece(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length)
{
    std::uint32_t number = 0;
    std::memcpy(&number, value + 5, sizeof number);
    return as<decltype(SYSDT_EVPN_NumToStr)>(function)(&buffer, &size, length, number, value[4] & 1U);
}
std::uint32_t address_piece(void *function, std::uint8_t *value, char *buffer, std::uint32_t size,
                            std::uint32_t *length)
{
    const auto *field = reinterpret_cast<const SYSDT_EvpnAddress *>(value + 10);
    return as<decltype(SYSDT_EVPN_IpAddrToStr)>(function)(&buffer, &size, length, field, value[9]);
}
std::uint32_t origin_piece(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length)
{
    const auto *field = reinterpret_cast<const SYSDT_EvpnAddress *>(value + 10);
    return as<decltype(SYSDT_EVPN_OriginIpToStr)>(function)(field, buffer, size, length, value[9]);
}
/// Names are not counted; one that there is not leaves the buffer alone.
std::uint32_t name_of(void *function, std::uint8_t *value, char *buffer, std::uint32_t size, std::uint32_t *length)
{
    std::uint32_t number = 0;
    std::memcpy(&number, value, sizeof number);
    if (size > 0)
        *buffer = '\0';
    const std::uint32_t status = as<decltype(SYSDT_LS_RouteTypeEnum2Str)>(function)(number, buffer, size);
    *length += size > 0 ? static_cast<std::uint32_t>(strnlen(buffer, size)) : 0;
    return size > 0 ? status : SYSDT_ERR_FAIL;
}
std::uint32_t rtp_rd(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    *length = 0;
    return as<decltype(SYSDT_RtpRd2Str)>(function)(reinterpret_cast<const SYSDT_RtpRd *>(value), length, buffer, 1);
}
std::uint32_t evpn_key(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    return as<decltype(SYSDT_EvnPrefix2Str)>(function)(reinterpret_cast<const SYSDT_BolEvpn *>(value), buffer, length);
}
std::uint32_t community(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    void *data = nullptr;
    *length = 0;
    return as<decltype(SYSDT_FormatNoWellKnowCmy)>(function)(length, buffer, &data,
                                                             reinterpret_cast<const SYSDT_Community *>(value));
}
std::uint32_t client_name(void *function, std::uint8_t *value, char *buffer, std::uint32_t, std::uint32_t *length)
{
    std::uint16_t built = 0;
    const std::uint32_t status = as<decltype(SYS_DT_CVrfName_Str2Cplx)>(function)(
        reinterpret_cast<const SYSDT_CVrfName *>(value), &built, buffer);
    *length = static_cast<std::uint32_t>(std::strlen(buffer));
    return built <= 257 ? status : SYSDT_ERR_TOO_LONG;
}

constexpr std::size_t ls = SYSDT_LS_SIZE;
constexpr std::size_t bol = SYSDT_BOL_SIZE;

constexpr Exported exports[] = {
    {"SYSDT_EVN_AdKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVN_MacKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVN_IncKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVN_EsKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVN_IpPrefixKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVPN_SmetKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVPN_JoinKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVPN_LeaveKeyToStr", "EVNPREFIX", 0, false, bol, sized<SYSDT_BolEvpn>},
    {"SYSDT_EVPN_EsiToStr", "EVNPREFIX", 0, false, 15, esi_piece},
    {"SYSDT_EVPN_NumToStr", "EVNPREFIX", 0, false, 9, number_piece},
    {"SYSDT_EVPN_IpAddrToStr", "EVNPREFIX", 0, false, 31, address_piece},
    {"SYSDT_EVPN_OriginIpToStr", "EVNPREFIX", 0, false, 31, origin_piece},
    {"SYSDT_LS_NodeKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_LinkKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_Ipv4PrefixKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_Ipv6PrefixKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_TePolicyKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_Srv6SidKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_TePolicy_TeKeyToStr", "BGPLSPREFIX", 0, false, ls, sized<SYSDT_LsPrefix>},
    {"SYSDT_LS_RouteTypeEnum2Str", "BGPLSPREFIX", 0, false, 4, name_of},
    {"SYSDT_LS_ProtclTypeEnum2Str", "BGPLSPREFIX", 0, false, 4, name_of},
    {"SYSDT_LsPrefix2Str", "BGPLSPREFIX", 513, true, ls, buffer_first<SYSDT_LsPrefix>},
    {"SYSDT_EvnPrefix2Str", "EVNPREFIX", 256, true, bol, evpn_key},
    {"SYSDT_NGPrefix2Str", "NG_TYPE_3", 256, true, bol, buffer_first<SYSDT_BolValue>},
    {"SYSDT_Ipv6Prefix2Str", "IPV6", 256, false, bol, buffer_first<SYSDT_BolIpv6>},
    {"SYSDT_RpdPrefix2Str", "RPD", 256, false, 14, buffer_first<SYSDT_Rpd>},
    {"SYSDT_SrPolicyPrefix2Str", "SRPOLICY", 256, false, bol, buffer_first<SYSDT_SrPolicy>},
    {"SYSDT_Srv4PolicyPrefix2Str", "SRPOLICY", 256, false, bol, buffer_first<SYSDT_SrPolicy>},
    {"SYSDT_Srv6PolicyPrefix2Str", "SRPOLICY", 256, false, bol, buffer_first<SYSDT_SrPolicy>},
    {"SYSDT_SdwanPrefix2Str", "SD-WAN", 256, false, bol, buffer_first<SYSDT_BolSdwan>},
    {"SYSDT_SdwanV4Prefix2Str", "SD-WAN", 256, false, bol, buffer_first<SYSDT_BolSdwan>},
    {"SYSDT_SdwanV6Prefix2Str", "SD-WAN", 256, false, bol, buffer_first<SYSDT_BolSdwan>},
    {"SYSDT_PrefixSidStruct2Str", "SID_STRUCTURE", 256, false, 7, buffer_first<SYSDT_SidStructure>},
    {"SYSDT_VrfRd2Str", "VRFRD", 256, true, 12, length_first<SYSDT_Octets>},
    {"SYSDT_VpnId2Str", "VPNID", 256, false, 8, length_first<SYSDT_VpnId>},
    {"SYSDT_ExtCommunity2StrRT4AS", "EXTCOMMUNITY", 256, false, 12, length_first<SYSDT_Octets>},
    {"SYSDT_ExtCommunity2StrBW", "EXTCOMMUNITY", 256, false, 12, length_first<SYSDT_Octets>},
    {"SYSDT_RtpRd2Str", "RTPRD", 256, true, 10, rtp_rd},
    {"SYSDT_FormatNoWellKnowCmy", "COMMUNITY", 32, true, 8, community},
    {"SYS_DT_CVrfName_Str2Cplx", "CVRFNAME", 257, false, 40, client_name},
};

/// So many changed values of each are tried.
constexpr std::size_t most_changed = 60000;

/// One exported printer and what it printed last.
class ExportTest {
public:
    ExportTest(const Exported &row, void *function, Report &report) : row_(row), function_(function), report_(report) {}

    /// Buffers of every size up to one more than needed; for a fixed one, just that.
    void every_size(const Bytes &bytes)
    {
        const std::string whole = print(bytes, whole_size());
        for (std::uint32_t size = 0; row_.size == 0 && size <= whole.size() + 2; ++size)
            cut(bytes, size, whole);
    }
    void one_size(const Bytes &bytes, std::uint32_t size)
    {
        const std::string whole = print(bytes, whole_size());
        if (row_.size == 0)
            cut(bytes, size % static_cast<std::uint32_t>(whole.size() + 3), whole);
    }

private:
    std::uint32_t whole_size() const { return row_.size == 0 ? 1024 : row_.size; }

    void cut(const Bytes &bytes, std::uint32_t size, const std::string &whole)
    {
        const std::string text = print(bytes, size);
        if (text != whole.substr(0, size == 0 ? 0 : size - 1))
            fail("printed as " + show(text), bytes, size);
    }

    void fail(const std::string &problem, const Bytes &bytes, std::uint32_t size)
    {
        report_.fail(std::string(row_.name) + " into " + std::to_string(size) + ": " + problem + ": " + show(bytes));
    }

    std::string print(const Bytes &bytes, std::uint32_t size)
    {
        ++calls;
        Guarded value(bytes);
        Guarded buffer(size, size % 2 == 0 ? Place::end : Place::odd);
        AttackHost::instance().begin();
        constexpr std::uint32_t before = 1000;
        std::uint32_t length = before;
        const std::uint32_t status =
            row_.call(function_, value.data(), reinterpret_cast<char *>(buffer.data()), size, &length);
        if (!buffer.intact() || !value.intact() || value.bytes() != bytes)
            fail("written where it must not", bytes, size);
        report_.fail(AttackHost::instance().settle());
        if (status != SYSDT_OK) {
            const bool allowed = row_.size == 0 ? size == 0 && status == SYSDT_ERR_FAIL : row_.may_fail;
            if (!allowed)
                fail("failed with " + host::status_name(status), bytes, size);
            return {};
        }
        const Bytes block = buffer.bytes();
        const auto end = std::ranges::find(block, 0);
        const std::uint32_t told = length - (length >= before ? before : 0);
        if (length == before || (told == 0 && end == block.end()))
            return {}; // it may leave the buffer alone then
        const bool zeros =
            std::string_view(row_.name) == "SYSDT_NGPrefix2Str" && told <= block.size() &&
            std::all_of(block.begin(), block.begin() + told, [](std::uint8_t byte) { return byte == 0; });
        if (zeros)
            return {}; // as FormatOut tells it
        if (end == block.end() || static_cast<std::uint32_t>(end - block.begin()) != told)
            fail("the text of length " + std::to_string(told) + " has another", bytes, size);
        return {block.begin(), end};
    }

    const Exported &row_;
    void *function_;
    Report &report_;

public:
    static inline std::size_t calls = 0;
};

TEST_F(Printers, FillBuffersOfEverySize)
{
    const Vectors vectors = read_vector_folder(vectors_folder());
    const auto known = known_values(host_, vectors);
    Random random(seed());
    for (const Exported &row : exports) {
        auto *function = host_.symbol(row.name);
        ASSERT_NE(nullptr, function) << row.name;
        Report report;
        ExportTest test(row, function, report);
        Bytes bytes;
        const std::string fault = memory_fault([&] {
            const auto &values = known.at(row.subject).second;
            Turns turns(share() * (256 * row.value_size * values.size() / most_changed + 1) | 1);
            for (const Bytes &golden : values) {
                bytes = golden;
                bytes.resize(row.value_size);
                test.every_size(bytes);
                for (std::size_t at = 0; at < bytes.size(); ++at) {
                    const std::uint8_t byte = bytes[at];
                    for (int other = 0; other < 256; ++other) {
                        if (turns.next()) {
                            bytes[at] = static_cast<std::uint8_t>(other);
                            test.one_size(bytes, static_cast<std::uint32_t>(random()));
                        }
                    }
                    bytes[at] = byte;
                }
            }
            for (std::size_t i = 0; i < random_values / share(); ++i) {
                std::ranges::generate(bytes, [&] { return static_cast<std::uint8_t>(random() >> 11); });
                test.one_size(bytes, static_cast<std::uint32_t>(random()));
            }
        });
        if (!fault.empty())
            ADD_FAILURE() << row.name << " " << fault << " with " << show(bytes);
        for (const std::string &problem : report.problems())
            ADD_FAILURE() << problem;
    }
    std::printf("proved: %zu calls of %zu exported printers\n", ExportTest::calls, std::size(exports));
}

/// Whatever takes a value and a buffer to print it into.
TEST(Exports, AreAllThatTheHeaderDeclares)
{
    std::ifstream stream(BGPDT_EXPORTS);
    const std::string header((std::istreambuf_iterator<char>(stream)), {});
    static constexpr std::string_view result = "\nuint32_t ";
    std::set<std::string> declared;
    for (std::size_t at = 0; (at = header.find(result, at)) != header.npos;) {
        at += result.size();
        const std::size_t opening = header.find('(', at);
        const std::string arguments = header.substr(opening, header.find(';', opening) - opening);
        const bool prints =
            arguments.find("char *buffer") != arguments.npos || arguments.find("char **position") != arguments.npos;
        if (prints && arguments.find("*text") == arguments.npos) // else it copies a part of a text
            declared.insert(header.substr(at, opening - at));
    }
    std::set<std::string> tested;
    for (const Exported &row : exports)
        tested.insert(row.name);
    EXPECT_EQ(declared, tested);
}

} // namespace

} // namespace bgpdt::test
