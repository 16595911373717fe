// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every format that the plug-in scans and prints by, against sscanf and snprintf: on texts that the format itself
/// prints, on all texts of the vectors, and on both with characters changed; on random numbers and strings, into buffers
/// of any size.
///
/// "%q" is not C's: the C library gets "%u.%u.%u.%u" in its place, and the four numbers must be octets to be one
/// conversion.
///
/// sscanf leaves a number that does not fit its conversion undefined, and glibc reads "0x" without a digit as 0, where C
/// has a matching failure. There the conversion must fail, and what stands in front is compared.
#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "common/print.hpp"
#include "common/scan.hpp"
#include "support/setting.hpp"
#include "support/share.hpp"
#include "support/vector_file.hpp"

using namespace bgpdt;
using bgpdt::test::share;

namespace {

using Random = std::mt19937;

/// One conversion of a format, as C has it.
struct Conversion {
    std::size_t begin; ///< of its "%"
    std::size_t end;
    char letter;
    int bits;

    bool is_number() const { return letter == 'u' || letter == 'x'; }
};

/// The format with four conversions of the C library's for each "%q".
template <FixedString Format>
consteval auto c_format_of()
{
    constexpr char quad[] = "%u.%u.%u.%u";
    constexpr std::size_t quads = [] {
        std::size_t count = 0;
        for (std::size_t i = 0; i < Format.length; ++i)
            count += Format.text[i] == '%' && Format.text[i + 1] == 'q' ? 1 : 0;
        return count;
    }();
    char text[sizeof Format.text + quads * (sizeof quad - sizeof "%q")]{};
    char *to = text;
    for (const char *from = Format.text; *from != '\0'; ++from) {
        if (from[0] == '%' && from[1] == 'q') {
            to = std::copy_n(quad, sizeof quad - 1, to);
            ++from;
        } else {
            *to++ = *from;
        }
    }
    return FixedString(text);
}

template <FixedString Format>
consteval std::size_t count_conversions()
{
    return static_cast<std::size_t>(std::ranges::count(Format.text, '%'));
}

template <FixedString Format>
consteval auto conversions_of()
{
    const auto &text = Format.text; // no string_view: instrumented, it is no constant
    std::array<Conversion, count_conversions<Format>()> conversions{};
    std::size_t at = 0;
    for (Conversion &conversion : conversions) {
        while (text[at] != '%')
            ++at;
        conversion.begin = at++;
        while (text[at] == '.' || (text[at] >= '0' && text[at] <= '9'))
            ++at;
        conversion.bits = text[at] == 'l' ? 64 : text[at] != 'h' ? 32 : text[at + 1] == 'h' ? 8 : 16;
        at += conversion.bits == 32 ? 0 : conversion.bits == 16 ? 1 : 2;
        conversion.letter = text[at++];
        conversion.end = at;
    }
    return conversions;
}

template <char letter, int bits>
struct ScannedType {
    using Type = std::conditional_t<bits == 64, u64, std::conditional_t<bits == 16, u16, u32>>;
};
template <int bits>
struct ScannedType<'c', bits> {
    using Type = char;
};

/// What scan's arguments are.
template <FixedString Format, class Indexes = std::make_index_sequence<count_conversions<Format>()>>
struct Scanned;
template <FixedString Format, std::size_t... I>
struct Scanned<Format, std::index_sequence<I...>> {
    static constexpr auto conversions = conversions_of<Format>();
    using Tuple = std::tuple<typename ScannedType<conversions[I].letter, conversions[I].bits>::Type...>;
};

/// What was compared.
struct Tally {
    std::size_t defined = 0;   ///< results that C defines
    std::size_t undefined = 0; ///< texts that must be refused where C leaves it open
    std::size_t printed = 0;
    std::size_t cut = 0; ///< of these into a buffer that is too small
};

Tally tally;

/// The number's digits without what may stand ahead of them; nothing if there are none.
std::string_view digits_of(std::string_view number, bool hex)
{
    number.remove_prefix(std::min(number.find_first_not_of(" \t\n\v\f\r"), number.size()));
    if (number.starts_with('-') || number.starts_with('+'))
        number.remove_prefix(1);
    if (hex && (number.starts_with("0x") || number.starts_with("0X"))) {
        number.remove_prefix(2);
        if (number.empty())
            return {};
    }
    const std::size_t first = number.find_first_not_of('0');
    return first == number.npos ? "0" : number.substr(first);
}

bool fits(std::string_view digits, const Conversion &conversion)
{
    if (conversion.letter == 'x')
        return digits.size() <= static_cast<std::size_t>(conversion.bits) / 4;
    const std::string_view limit = conversion.bits == 16   ? "65535"
                                   : conversion.bits == 32 ? "4294967295"
                                                           : "18446744073709551615";
    return digits.size() < limit.size() || (digits.size() == limit.size() && digits <= limit);
}

/// How many conversions come before the first that C leaves open; all if there is none.
template <FixedString Format>
std::size_t defined_conversions(const char *text)
{
    constexpr auto &conversions = Scanned<Format>::conversions;
    // Every conversion between two "%n", which tell where it found what.
    static const std::string probe = [] {
        std::string format;
        std::size_t at = 0;
        for (const Conversion &conversion : conversions) {
            const std::string_view whole(Format.text, Format.length);
            format += whole.substr(at, conversion.begin - at);
            format += "%n%*" + std::string(whole.substr(conversion.begin + 1, conversion.end - conversion.begin - 1));
            format += "%n";
            at = conversion.end;
        }
        return format;
    }();
    std::array<int, 2 * conversions.size()> places{};
    places.fill(-1);
    std::apply([&](auto &...place) { std::sscanf(text, probe.c_str(), &place...); }, places);
    for (std::size_t i = 0; i < conversions.size() && places[2 * i + 1] >= 0; ++i) {
        const std::string_view found(text + places[2 * i], static_cast<std::size_t>(places[2 * i + 1] - places[2 * i]));
        const std::string_view digits = digits_of(found, conversions[i].letter == 'x');
        if (conversions[i].is_number() && (digits.empty() || !fits(digits, conversions[i])))
            return i;
    }
    return conversions.size();
}

/// What the C library converted, as scan's arguments would have it. Returns how many of these that makes.
template <FixedString Format, std::size_t To = 0, std::size_t From = 0, class CTuple, class Tuple>
int gather(const CTuple &from, int converted, Tuple &to)
{
    constexpr auto &conversions = Scanned<Format>::conversions;
    if constexpr (To == conversions.size()) {
        return 0;
    } else if constexpr (conversions[To].letter != 'q') {
        if (converted == 0)
            return 0;
        std::get<To>(to) = std::get<From>(from);
        return 1 + gather<Format, To + 1, From + 1>(from, converted - 1, to);
    } else {
        const u32 octets[] = {std::get<From>(from), std::get<From + 1>(from), std::get<From + 2>(from),
                              std::get<From + 3>(from)};
        if (converted < 4 || std::ranges::max(octets) > 255)
            return 0;
        std::get<To>(to) = ((octets[0] * 256 + octets[1]) * 256 + octets[2]) * 256 + octets[3];
        return 1 + gather<Format, To + 1, From + 4>(from, converted - 4, to);
    }
}

template <FixedString Format>
void compare_scan(const std::string &text)
{
    constexpr FixedString c_format = c_format_of<Format>();
    constexpr auto &conversions = Scanned<c_format>::conversions;
    typename Scanned<Format>::Tuple ours{};
    typename Scanned<Format>::Tuple theirs{};
    typename Scanned<c_format>::Tuple found{};
    const int converted = std::apply([&](auto &...argument) { return scan<Format>(text.c_str(), argument...); }, ours);
    const std::size_t defined = defined_conversions<c_format>(text.c_str());
    const bool whole = defined == conversions.size();
    // Only as much of the format as C defines.
    const std::string format(c_format.text, whole ? c_format.length : conversions[defined].begin);
    const int expected =
        std::apply([&](auto &...argument) { return std::sscanf(text.c_str(), format.c_str(), &argument...); }, found);
    ++(whole ? tally.defined : tally.undefined);
    ASSERT_EQ(gather<Format>(found, std::max(expected, 0), theirs), converted)
        << Format.text << " of " << testing::PrintToString(text);
    ASSERT_EQ(theirs, ours) << Format.text << " of " << testing::PrintToString(text);
}

/// Numbers of every size, and around every limit.
u64 random_number(Random &random)
{
    const u64 number = (u64{random()} << 32 | random()) >> (random() % 64);
    switch (random() % 6) {
    case 0: return (u64{1} << (8 * (1 + random() % 7))) - (random() % 2);
    case 1: return number % 300;
    default: return number;
    }
}

/// An IPv4 address, mostly of octets.
std::string random_quad(Random &random)
{
    std::string text;
    for (int i = 0; i < 4; ++i) {
        const u64 octet = random() % 16 == 0 ? random_number(random) : random() % (random() % 2 == 0 ? 11 : 258);
        text += (i == 0 ? "" : ".") + std::string(random() % 16 == 0 ? random() % 12 : 0, '0') + std::to_string(octet);
    }
    return text;
}

/// A text of the format's own shape, mostly with numbers that fit.
template <FixedString Format>
std::string text_of_shape(Random &random)
{
    constexpr auto &conversions = Scanned<Format>::conversions;
    std::string text;
    std::size_t at = 0;
    for (const Conversion &conversion : conversions) {
        text += std::string_view(Format.text + at, conversion.begin - at);
        at = conversion.end;
        if (conversion.letter == 'q') {
            text += random_quad(random);
            continue;
        }
        const u64 number = random() % 8 == 0       ? random_number(random)
                           : conversion.bits == 64 ? random_number(random)
                                                   : random_number(random) & ((u64{1} << conversion.bits) - 1);
        char digits[32];
        std::snprintf(digits, sizeof digits, conversion.letter == 'x' ? "%" PRIx64 : "%" PRIu64, number);
        text += conversion.letter == 'c' ? "*" : random() % 16 == 0 ? std::string(random() % 12, '0') + digits : digits;
    }
    return text + std::string(Format.text + at);
}

/// The text with some characters changed.
void mutate(std::string &text, Random &random)
{
    static constexpr std::string_view alphabet = "0123456789abcdefABCDEFxXdhms+-.:/* \t\n\v\f\r\x01\xff";
    for (std::size_t left = random() % 4; left > 0; --left) {
        const std::size_t at = random() % (text.size() + 1);
        const char character = alphabet[random() % alphabet.size()];
        switch (random() % 5) {
        case 0: text.insert(at, 1, character); break;
        case 1: text.insert(at, text, at, random() % 4); break;
        case 2: text.erase(at, 1 + random() % 2); break;
        case 3: text.resize(at); break;
        default:
            if (at < text.size())
                text[at] = character;
        }
    }
}

using Texts = std::vector<std::string>;

constexpr std::size_t shapes_of_each = 200000;

template <FixedString Format>
void compare_scans(const Texts &texts)
{
    Random random(test::seed());
    for (std::size_t i = 0; i < shapes_of_each / share(); ++i) {
        std::string text = text_of_shape<Format>(random);
        mutate(text, random);
        ASSERT_NO_FATAL_FAILURE(compare_scan<Format>(text));
    }
    test::Turns turns;
    for (const std::string &real : texts) {
        if (turns.next()) {
            std::string text = real;
            ASSERT_NO_FATAL_FAILURE(compare_scan<Format>(text));
            mutate(text, random);
            ASSERT_NO_FATAL_FAILURE(compare_scan<Format>(text));
        }
    }
}

std::string random_string(Random &random)
{
    std::string text(random() % 8 == 0 ? random() % 600 : random() % 12, ' ');
    std::ranges::generate(text, [&] { return static_cast<char>(1 + random() % 255); });
    return text;
}

/// What print's arguments are, and how snprintf gets them.
template <char letter, int bits>
struct Printed {
    using Type = std::conditional_t<bits == 64, u64, u32>;
    static Type make(Random &random) { return static_cast<Type>(random_number(random)); }
    static std::tuple<Type> to_c(Type number) { return {number}; }
};
template <int bits>
struct Printed<'q', bits> {
    using Type = u32;
    static Type make(Random &random)
    {
        return static_cast<Type>(random() & (random() % 2 == 0 ? 0xFFFFFFFF : 0x0F0F0F0F));
    }
    static std::tuple<u32, u32, u32, u32> to_c(Type address)
    {
        return {address >> 24, address >> 16 & 255, address >> 8 & 255, address & 255};
    }
};
template <int bits>
struct Printed<'s', bits> {
    using Type = std::string;
    static Type make(Random &random) { return random_string(random); }
    static std::tuple<const char *> to_c(const Type &text) { return {text.c_str()}; }
};

template <FixedString Format, std::size_t... I>
void compare_print(Random &random, std::index_sequence<I...>)
{
    constexpr auto &conversions = Scanned<Format>::conversions;
    const std::tuple<typename Printed<conversions[I].letter, conversions[I].bits>::Type...> arguments{
        Printed<conversions[I].letter, conversions[I].bits>::make(random)...};
    static char theirs[16384];
    static constexpr FixedString c_format = c_format_of<Format>();
    const int whole = std::apply(
        [](auto... argument) { return std::snprintf(theirs, sizeof theirs, c_format.text, argument...); },
        std::tuple_cat(Printed<conversions[I].letter, conversions[I].bits>::to_c(std::get<I>(arguments))...));
    ASSERT_LT(whole, static_cast<int>(sizeof theirs));
    const auto needed = static_cast<std::size_t>(whole) + 1;
    const std::size_t size = random() % 2 == 0 ? needed : 1 + random() % (needed + 8);
    const std::size_t written = std::min(size, needed) - 1;
    static char ours[16500];
    std::memset(ours, '#', size + 16);
    Writer out(ours, size);
    print<Format>(out, std::get<I>(arguments)...);
    ASSERT_EQ(written, out.finish()) << Format.text << " in " << size << " of " << theirs;
    ASSERT_EQ(std::string_view(theirs, written), std::string_view(ours, written)) << Format.text << " in " << size;
    ASSERT_EQ('\0', ours[written]);
    ASSERT_EQ(16U, std::count(ours + size, ours + size + 16, '#')) << "written behind the end";
    ++tally.printed;
    tally.cut += size < needed ? 1 : 0;
}

constexpr std::size_t prints_of_each = 50000;

template <FixedString Format>
void compare_prints(const Texts &)
{
    Random random(test::seed());
    for (std::size_t i = 0; i < prints_of_each / share(); ++i)
        ASSERT_NO_FATAL_FAILURE(compare_print<Format>(random, std::make_index_sequence<count_conversions<Format>()>()));
}

struct Row {
    const char *format;
    void (*compare)(const Texts &);
};

#define SCAN(format)                                                                                                   \
    {                                                                                                                  \
        format, compare_scans<format>                                                                                  \
    }
#define PRINT(format)                                                                                                  \
    {                                                                                                                  \
        format, compare_prints<format>                                                                                 \
    }

// Every format that the sources scan by and print by.
#include "formats.inc"

#undef SCAN
#undef PRINT

TEST(Formats, ScanAsSscanfDoes)
{
    std::set<std::string> texts;
    for (const test::Line &line : test::read_vector_folder(test::vectors_folder()).lines)
        if (!line.text.empty() && line.text.size() < 400)
            texts.insert(line.text.c_str());
    ASSERT_LT(1000U, texts.size());
    for (const Row &row : scans)
        row.compare({texts.begin(), texts.end()});
    std::printf("proved: %zu scans by %zu formats compared where C defines the result, %zu refused where it does not\n",
                tally.defined, std::size(scans), tally.undefined);
    EXPECT_LT(1000000U / share(), tally.defined);
    EXPECT_LT(100000U / share(), tally.undefined);
}

TEST(Formats, PrintAsSnprintfDoes)
{
    for (const Row &row : prints)
        row.compare({});
    std::printf("proved: %zu prints by %zu formats compared, %zu of them cut\n", tally.printed, std::size(prints),
                tally.cut);
    EXPECT_LT(1000000U / share(), tally.printed);
    EXPECT_LT(100000U / share(), tally.cut);
}

} // namespace
