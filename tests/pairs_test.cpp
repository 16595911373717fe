// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the values print as that hold a 16-bit code and a form: for every pair of the two, with several values behind
/// the code, what the tables here say. With BGPDT_TEST_SHARE=1 these are all 2^32 pairs of each type, minutes for each;
/// otherwise the forms at the limits with every code, all forms with the codes that a table names, and some of the
/// other pairs, others by the day.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/plugin_test.hpp"
#include "support/report.hpp"
#include "support/share.hpp"

namespace bgpdt::test {

namespace {

/// How the eight octets, 0 and 1 of them the code, are split into the numbers that are printed.
enum class Split {
    ipv4,     ///< 2, 3, 4, 5, and 6-7
    as2,      ///< 2-3, 4-7
    as4,      ///< 2-5, 6-7
    as4dot,   ///< 2-3, 4-5, 6-7
    number,   ///< 4-7
    ospf,     ///< 2, 3, 4, 5, 7, 6
    octets,   ///< 2 to 7
    whole_as, ///< 0-1, 2-5, 6-7
};

using Octets = std::array<std::uint8_t, 8>;

/// Printed so; nothing without a format.
struct Style {
    Split split{};
    const char *format = nullptr;
};

constexpr int any = -1;

/// Of the rows with the code of a value the first with its form tells what it prints as.
struct Row {
    int code;
    std::int64_t form;
    Style style{};
    std::optional<Style> other{}; ///< where the type has another style, if it is another one here

    bool names(std::uint32_t asked) const { return code == any || static_cast<std::uint32_t>(code) == asked; }
    bool has(std::uint32_t asked) const { return form == any || form == asked; }
};

/// What decides about a text beside code and form.
struct Asked {
    std::uint8_t mode;
    Octets octets;
    std::uint32_t form;

    bool octets_are_zero() const { return octets == Octets{}; }
};

constexpr const char *colon_pair = "%u:%u";
constexpr const char *dotted_pair = "%u.%u:%u";
constexpr const char *ipv4_pair = "%u.%u.%u.%u:%u";

constexpr Row distinguisher_rows[] = {
    {1, any, {Split::ipv4, ipv4_pair}},
    {2, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {2, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {2, any},
    {0, VRF_RD_FORM_AS2, {Split::as2, colon_pair}},
    {0, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0, any},
};

constexpr Row target_rows[] = {
    {0x0102, any, {Split::ipv4, ipv4_pair}},
    {0x0202, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0x0202, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0x0202, any},
    {0x0002, VRF_RD_FORM_AS2, {Split::as2, colon_pair}},
    {0x0002, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0x0002, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0x0002, any},
};

constexpr Row origin_rows[] = {
    {0x0103, any, {Split::ipv4, ipv4_pair}},
    {0x0203, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0x0203, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0x0203, any},
    {0x0003, VRF_RD_FORM_AS2, {Split::as2, colon_pair}},
    {0x0003, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0x0003, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0x0003, any},
};

/// The other style stands for AS_TRANS (RFC 6793) in front of a bandwidth.
constexpr Row community_rows[] = {
    {0x0000, any},
    {0x0002, any, {Split::as2, colon_pair}},
    {0x030B, any, {Split::as2, colon_pair}},
    {0x0003, any, {Split::as2, "SoO <%u : %u>"}},
    {0x0102, any, {Split::ipv4, ipv4_pair}},
    {0x0103, any, {Split::ipv4, "SoO <%u.%u.%u.%u : %u>"}},
    {0x0005, any, {Split::ipv4, "OSPF DOMAIN ID <%u.%u.%u.%u : %u>"}},
    {0x0105, any, {Split::ipv4, "OSPF DOMAIN ID <%u.%u.%u.%u : %u>"}},
    {0x0205, any, {Split::ipv4, "OSPF DOMAIN ID <%u.%u.%u.%u : %u>"}},
    {0x8005, any, {Split::ipv4, "OSPF DOMAIN ID <%u.%u.%u.%u : %u>"}},
    {0x0107, any, {Split::ipv4, "OSPF ROUTER ID <%u.%u.%u.%u : %u>"}},
    {0x8001, any, {Split::ipv4, "OSPF ROUTER ID <%u.%u.%u.%u : %u>"}},
    {0x0306, any, {Split::ospf, "OSPF RT <%u.%u.%u.%u : %u : %u>"}},
    {0x8000, any, {Split::ospf, "OSPF RT <%u.%u.%u.%u : %u : %u>"}},
    {0x0202, VRF_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}},
    {0x0202, VRF_RD_FORM_AS4, {Split::as4, colon_pair}},
    {0x0202, any},
    {0x0203, any, {Split::as4dot, "SoO <%u.%u : %u>"}},
    {0x030E, any, {Split::as2, colon_pair}, Style{Split::number, "as-trans:%u"}},
};

/// The other style stands for configuration, in mode 2.
constexpr Row extended_target_rows[] = {
    {0x0102, any, {Split::ipv4, "RT <%u.%u.%u.%u : %u>"}, Style{Split::ipv4, ipv4_pair}},
    {0x0000, any, {Split::as2, "RT <%u : %u>"}, Style{Split::as2, colon_pair}},
    {0x0002, VRF_RD_FORM_AS2, {Split::as2, "RT <%u : %u>"}, Style{Split::as2, colon_pair}},
    {0x0002, VRF_RD_FORM_AS4, {Split::as4, "RT <%u : %u>"}, Style{Split::as4, colon_pair}},
    {0x0002, VRF_RD_FORM_AS4DOT, {Split::as4dot, "RT <%u . %u : %u>"}, Style{Split::as4dot, dotted_pair}},
    {0x0002, any},
    {0x0202, VRF_RD_FORM_AS4DOT, {Split::as4dot, "RT <%u . %u : %u>"}, Style{Split::as4dot, dotted_pair}},
    {0x0202, VRF_RD_FORM_AS4, {Split::as4, "RT <%u : %u>"}, Style{Split::as4, colon_pair}},
    {0x0202, any},
    {0x0602,
     any,
     {Split::octets, "RT <%02x%02x-%02x%02x-%02x%02x>"},
     Style{Split::octets, "%02x%02x-%02x%02x-%02x%02x"}},
    {any, any, {Split::whole_as, "Unknow <%u : %u : %u>"}, Style{Split::whole_as, "Unknow %u:%u:%u"}},
};

/// The other style stands for a wildcard.
constexpr Row wildcard_rows[] = {
    {1, RTP_RD_FORM_IPV4, {Split::ipv4, ipv4_pair}, Style{Split::ipv4, "%u.%u.%u.%u:*"}},
    {2, RTP_RD_FORM_AS4DOT, {Split::as4dot, dotted_pair}, Style{Split::as4dot, "%u.%u:*"}},
    {2, RTP_RD_FORM_AS4, {Split::as4, colon_pair}, Style{Split::as4, "%u:*"}},
    {0, RTP_RD_FORM_AS2, {Split::as2, colon_pair}, Style{Split::as2, "%u:*"}},
    {0, any},
    {1, any},
    {2, any},
};

/// Neither the code nor the type word shows. The address is cut behind three groups, the local number is 0; the other
/// style stands for three groups of zeros.
constexpr Row ipv6_rows[] = {{any, any, {Split::as4dot, "%x:%x:%x::.0"}, Style{Split::as4dot, "::.0"}}};

/// A value with a code, and what FormatOut makes of it in those modes in which it prints.
struct Type {
    const char *name;
    const char *function;
    std::span<const Row> rows;
    std::size_t size;
    std::string_view text_modes; ///< kind SYSDT_KIND_STRING, the length with the NUL
    std::string_view bare_modes; ///< kind SYSDT_KIND_BINARY, the length without
    std::uint32_t failure;       ///< for a code that no row names
    std::uint32_t sub_kind = 0;
    std::size_t code_at = 0;
    std::size_t form_at = 8;
    std::size_t form_size = 4;                 ///< two bytes are the form and the wildcard
    bool (*is_unset)(const Asked &) = nullptr; ///< and prints as nothing
    bool (*is_other)(const Asked &) = nullptr; ///< and prints in the other style

    /// What rows are looked up by.
    std::uint32_t form_of(std::uint32_t pair) const { return form_size == 2 ? pair >> 8 : pair; }
};

bool unset_for_configuration(const Asked &asked) { return asked.mode == 2 && asked.octets_are_zero(); }
bool all_zero(const Asked &asked) { return asked.octets_are_zero() && asked.form == 0; }
bool for_configuration(const Asked &asked) { return asked.mode == 2; }
bool starred(const Asked &asked) { return (asked.form & 0xFF) == 1; }
bool of_as_trans(const Asked &asked) { return asked.octets[2] == 23456 / 256 && asked.octets[3] == 23456 % 256; }
bool valueless(const Asked &asked)
{
    return std::ranges::all_of(asked.octets.begin() + 2, asked.octets.end(), [](auto octet) { return octet == 0; });
}

constexpr Type types[] = {
    {.name = "EXTCOMMUNITY",
     .function = "SYSDT_ExtCommunityFormatOut",
     .rows = community_rows,
     .size = 12,
     .text_modes = "126",
     .bare_modes = "",
     .failure = SYSDT_ERR_FAIL,
     .is_other = of_as_trans},
    {.name = "VRFRD",
     .function = "SYSDT_VrfRdFormatOut",
     .rows = distinguisher_rows,
     .size = 12,
     .text_modes = "126",
     .bare_modes = "3",
     .failure = SYSDT_ERR_FAIL,
     .is_unset = unset_for_configuration},
    {.name = "VRFRT",
     .function = "SYSDT_VrfRtFormatOut",
     .rows = target_rows,
     .size = 12,
     .text_modes = "126",
     .bare_modes = "3",
     .failure = SYSDT_ERR_FAIL,
     .is_unset = unset_for_configuration},
    {.name = "SOO",
     .function = "SYSDT_SooFormatOut",
     .rows = origin_rows,
     .size = 12,
     .text_modes = "1236",
     .bare_modes = "",
     .failure = SYSDT_ERR_FAIL,
     .is_unset = all_zero},
    {.name = "RTPRD",
     .function = "SYSDT_RtpRdFormatOut",
     .rows = wildcard_rows,
     .size = 10,
     .text_modes = "126",
     .bare_modes = "",
     .failure = SYSDT_ERR_FAIL,
     .form_size = 2,
     .is_other = starred},
    {.name = "BOLRD",
     .function = "SYSDT_BolRdFormatOut",
     .rows = distinguisher_rows,
     .size = 16,
     .text_modes = "01256",
     .bare_modes = "3",
     .failure = SYSDT_ERR_INVALID_VALUE,
     .code_at = 4,
     .form_at = 12,
     .is_unset = unset_for_configuration},
    {.name = "BOLPREFIX_VRFRTEXT",
     .function = "SYSDT_BolPrefixFormatOut",
     .rows = extended_target_rows,
     .size = SYSDT_BOL_SIZE,
     .text_modes = "126",
     .bare_modes = "3",
     .failure = SYSDT_ERR_INVALID_VALUE,
     .sub_kind = 8,
     .code_at = 4,
     .form_at = 12,
     .is_unset = unset_for_configuration,
     .is_other = for_configuration},
    {.name = "VRFRTV6",
     .function = "SYSDT_VrfRtV6FormatOut",
     .rows = ipv6_rows,
     .size = 24,
     .text_modes = "126",
     .bare_modes = "3",
     .failure = SYSDT_ERR_FAIL,
     .form_at = 20,
     .is_other = valueless},
};

std::ostream &operator<<(std::ostream &out, const Type &type) { return out << type.name; }

/// What stands behind the code: all different, zeros, ones, AS_TRANS, an address, small AS numbers, the least.
constexpr std::array<std::uint8_t, 6> values[] = {
    {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC},
    {},
    {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
    {0x5B, 0xA0, 0xFF, 0xFE, 0x00, 0x0B},
    {192, 0, 2, 1, 0, 7},
    {0, 1, 0, 15, 0, 1},
    {0, 0, 0, 0, 0, 1},
};

/// The forms tried with every code: what is produced and its neighbours, also where the second of two bytes is the
/// wildcard; limits; what would be a produced form if only 8 or 16 bits of the word were looked at, or in the other
/// order.
constexpr std::uint32_t forms_at_limits[] = {
    0,       1,       2,       3,       4,       5,          6,          7,          8,          255,    256,
    0x0101,  0x0102,  0x0200,  0x0201,  0x0300,  0x0301,     0x0400,     0x0401,     0x0402,     0x0500, 0xFFFF,
    0x10000, 0x10001, 0x10002, 0x10003, 0x10004, 0x01000000, 0x02000000, 0x03000000, 0xFFFFFFFF,
};

/// Between two of the other pairs, unless all are tried; odd.
constexpr std::uint64_t usual_step = 2001;

std::uint32_t between(const Octets &octets, std::size_t first, std::size_t last)
{
    std::uint32_t number = 0;
    for (std::size_t at = first; at <= last; ++at)
        number = number << 8 | octets[at];
    return number;
}

std::array<std::uint32_t, 6> numbers_of(const Octets &octets, Split split)
{
    const auto of = [&](std::size_t first, std::size_t last) { return between(octets, first, last); };
    switch (split) {
    case Split::ipv4: return {octets[2], octets[3], octets[4], octets[5], of(6, 7)};
    case Split::as2: return {of(2, 3), of(4, 7)};
    case Split::as4: return {of(2, 5), of(6, 7)};
    case Split::as4dot: return {of(2, 3), of(4, 5), of(6, 7)};
    case Split::number: return {of(4, 7)};
    case Split::ospf: return {octets[2], octets[3], octets[4], octets[5], octets[7], octets[6]};
    case Split::octets: return {octets[2], octets[3], octets[4], octets[5], octets[6], octets[7]};
    case Split::whole_as: return {of(0, 1), of(2, 5), of(6, 7)};
    }
    return {};
}

std::string text_of(const Style &style, const Octets &octets)
{
    if (style.format == nullptr)
        return {};
    char text[100];
    const auto n = numbers_of(octets, style.split);
    const int length = std::snprintf(text, sizeof text, style.format, n[0], n[1], n[2], n[3], n[4], n[5]);
    return {text, static_cast<std::size_t>(length)};
}

/// What values with one code print as, made when it is first asked for.
class Texts {
public:
    explicit Texts(const Type &type) : type_(type) {}

    void choose(std::uint32_t code)
    {
        rows_.clear();
        code_is_told_ = code == 0; // of unset values
        for (const Row &row : type_.rows) {
            if (row.names(code)) {
                rows_.push_back({&row, {}});
                code_is_told_ = code_is_told_ || row.code != any;
            }
        }
    }
    /// Whether something is told of the chosen code that is not told of most others.
    bool code_is_told() const { return code_is_told_; }

    /// Null: it fails. `value` tells which of the values stands behind the code.
    const std::string *of(const Asked &asked, std::size_t value)
    {
        static const std::string nothing;
        if (type_.is_unset != nullptr && type_.is_unset(asked))
            return &nothing;
        const bool other = type_.is_other != nullptr && type_.is_other(asked);
        for (Made &made : rows_) {
            if (made.row->has(type_.form_of(asked.form))) {
                auto &text = made.texts[value][other ? 1 : 0];
                if (!text)
                    text = text_of(other ? made.row->other.value_or(made.row->style) : made.row->style, asked.octets);
                return &*text;
            }
        }
        return nullptr;
    }

private:
    struct Made {
        const Row *row;
        std::array<std::array<std::optional<std::string>, 2>, std::size(values)> texts;
    };

    const Type &type_;
    std::vector<Made> rows_;
    bool code_is_told_ = false;
};

/// All pairs of one type.
class Pairs {
public:
    Pairs(const Type &type, SYSDT_FormatOut *print) : type_(type), print_(print), texts_(type), modes_(type.text_modes)
    {
        modes_ += type.bare_modes;
        std::memcpy(value_.data(), &type.sub_kind, type.code_at);
    }

    /// The number of calls.
    std::uint64_t run()
    {
        Turns turns(small_share());
        for (std::uint32_t code = 0; code < all && !testing::Test::HasFailure(); ++code) {
            take(code);
            if (turns.next())
                for (const std::uint32_t form : forms_at_limits)
                    try_values(form);
            const std::uint64_t step = texts_.code_is_told() ? small_share() : step_;
            const std::uint64_t first = std::uint64_t{code} * all;
            const std::uint64_t behind_a_turn = (seed() % step + step - first % step) % step;
            for (std::uint64_t pair = first + behind_a_turn; pair < first + all; pair += step)
                try_next(static_cast<std::uint32_t>(pair % all));
        }
        return calls_;
    }

private:
    static constexpr std::uint32_t all = 0x10000;
    static constexpr std::size_t most_failures = 10;
    static constexpr std::uint8_t poison = 0x5A;

    void take(std::uint32_t code)
    {
        texts_.choose(code);
        asked_.octets[0] = value_[type_.code_at] = static_cast<std::uint8_t>(code >> 8);
        asked_.octets[1] = value_[type_.code_at + 1] = static_cast<std::uint8_t>(code);
    }

    /// With every value in every mode if something is told of the code, else with the next ones.
    void try_values(std::uint32_t form)
    {
        const std::size_t times = texts_.code_is_told() ? std::size(values) * modes_.size() : 1;
        for (std::size_t i = 0; i < times; ++i)
            try_next(form);
    }

    void try_next(std::uint32_t form)
    {
        const std::size_t value = turn_ % std::size(values);
        const char mode = modes_[turn_ / std::size(values) % modes_.size()];
        ++turn_;
        std::ranges::copy(values[value], asked_.octets.begin() + 2);
        std::ranges::copy(values[value], value_.begin() + static_cast<std::ptrdiff_t>(type_.code_at) + 2);
        put_form(form);
        asked_.mode = static_cast<std::uint8_t>(mode - '0');
        expect(texts_.of(asked_, value), type_.bare_modes.find(mode) != std::string_view::npos);
    }

    void put_form(std::uint32_t form)
    {
        std::uint8_t *at = value_.data() + type_.form_at;
        asked_.form = form;
        if (type_.form_size == sizeof form) {
            std::memcpy(at, &form, sizeof form);
        } else {
            asked_.form &= all - 1;
            at[0] = static_cast<std::uint8_t>(form >> 8);
            at[1] = static_cast<std::uint8_t>(form);
        }
    }

    void expect(const std::string *text, bool bare)
    {
        ++calls_;
        std::memset(block_.data(), poison, 64);
        context_.mode = asked_.mode;
        std::uint16_t kind = 0;
        std::uint16_t length = 0;
        void *data = block_.data();
        const std::uint32_t status =
            print_(&context_, 0, static_cast<std::uint32_t>(type_.size), value_.data(), &kind, &length, &data);
        const bool as_told =
            data == block_.data() &&
            (text == nullptr ? status == type_.failure : status == SYSDT_OK && delivers(*text, bare, kind, length));
        if (!as_told && failures_++ < most_failures) {
            ADD_FAILURE() << show(Bytes(value_.begin(), value_.begin() + static_cast<std::ptrdiff_t>(type_.size)))
                          << " in mode " << int{asked_.mode} << ": status " << show(status) << ", kind " << kind
                          << ", length " << length << ", \""
                          << std::string(block_.begin(), std::ranges::find(block_, 0)) << "\", not "
                          << (text == nullptr ? show(type_.failure) : '"' + *text + '"');
        }
    }

    bool delivers(const std::string &text, bool bare, std::uint16_t kind, std::uint16_t length) const
    {
        return kind == (bare ? SYSDT_KIND_BINARY : SYSDT_KIND_STRING) && length == text.size() + (bare ? 0 : 1) &&
               std::memcmp(block_.data(), text.c_str(), text.size() + 1) == 0;
    }

    const Type &type_;
    SYSDT_FormatOut *print_;
    Texts texts_;
    std::string modes_;
    std::array<std::uint8_t, SYSDT_BOL_SIZE> value_{};
    std::array<char, 257> block_{};
    SYSDT_Context context_{};
    Asked asked_{};
    std::uint64_t step_ = share() == 1 ? 1 : share() * usual_step;
    std::size_t turn_ = seed();
    std::uint64_t calls_ = 0;
    std::size_t failures_ = 0;
};

class PairsTest : public PluginTest, public testing::WithParamInterface<Type> {};

TEST_P(PairsTest, PrintAsTheirTableSays)
{
    const Type &type = GetParam();
    auto *print = exported<SYSDT_FormatOut>(type.function);
    ASSERT_NE(nullptr, print);
    const std::uint64_t calls = Pairs(type, print).run();
    EXPECT_LT(share() == 1 ? std::uint64_t{1} << 32 : 0x10000 / small_share() * std::size(forms_at_limits), calls);
    std::printf("proved: %s: %llu values print or fail as their pair of code and form says%s\n", type.name,
                static_cast<unsigned long long>(calls), share() == 1 ? ", all pairs among them" : "");
}

INSTANTIATE_TEST_SUITE_P(Types, PairsTest, testing::ValuesIn(types),
                         [](const auto &test) { return std::string(test.param.name); });

} // namespace

} // namespace bgpdt::test
