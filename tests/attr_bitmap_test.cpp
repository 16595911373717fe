// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The listings of attribute bitmaps. Their display records mix numbers and text as no value does, so they are built
/// here in this processor's order.
#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/conversion.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::attr_bitmap {

namespace {

// The kinds of entries.
constexpr std::uint16_t number8 = 2;
constexpr std::uint16_t number16 = 4;
constexpr std::uint16_t number32 = 6;
constexpr std::uint16_t ipv4 = 21;
constexpr std::uint16_t ipv6 = 22;
constexpr std::uint16_t text_kind = 25;
constexpr std::uint16_t either_address = 38;
constexpr std::uint16_t bitmap_kind = 0x0122;

constexpr std::size_t block_size = 4096;

using Identifiers = std::set<int>;
using Numbers = std::vector<std::uint16_t>;

template <class Number>
Bytes bytes_of(Number number)
{
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

struct Entry {
    std::uint16_t kind;
    Bytes data;
};

Entry text(const std::string &characters)
{
    Bytes bytes(characters.begin(), characters.end());
    bytes.push_back(0);
    return {text_kind, bytes};
}

Entry text_without_end(const std::string &characters) { return {text_kind, {characters.begin(), characters.end()}}; }

Entry bitmap(const Identifiers &identifiers)
{
    Bytes bytes(32);
    for (const int n : identifiers)
        bytes[static_cast<std::size_t>(n / 8)] |= static_cast<std::uint8_t>(1 << n % 8);
    return {bitmap_kind, bytes};
}

Entry u8(std::uint8_t number) { return {number8, bytes_of(number)}; }
Entry u16(std::uint16_t number) { return {number16, bytes_of(number)}; }
Entry u32(std::uint32_t number) { return {number32, bytes_of(number)}; }

constexpr std::array<std::uint8_t, 16> documentation_ipv6{0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};

Entry ipv6_entry() { return {ipv6, {documentation_ipv6.begin(), documentation_ipv6.end()}}; }

Entry address(std::uint8_t family)
{
    Bytes bytes(21, family);
    std::ranges::copy(bytes_of(std::uint32_t{0xC0000201}), bytes.begin());
    std::ranges::copy(documentation_ipv6, bytes.begin() + 4);
    return {either_address, bytes};
}

/// Puts a text in front of the rest of the bytes.
void put(Guarded &bytes, const std::string &characters)
{
    std::copy_n(characters.c_str(), characters.size() + 1, bytes.data());
}

/// The record of the entries; the bytes that are the host's are rubbish.
Bytes record(const std::vector<Entry> &entries, std::optional<std::uint16_t> count = std::nullopt)
{
    Bytes bytes(44, 0xEE);
    const Bytes told = bytes_of(count.value_or(static_cast<std::uint16_t>(entries.size())));
    std::ranges::copy(told, bytes.begin() + 24);
    for (const Entry &entry : entries)
        for (const Bytes &part :
             {bytes_of(entry.kind), bytes_of(static_cast<std::uint16_t>(entry.data.size())), entry.data})
            bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

/// A template, the identifier 1 and the values.
Bytes record_of(const std::string &line_template, std::vector<Entry> values)
{
    std::vector<Entry> entries{text(line_template), bitmap({1})};
    entries.insert(entries.end(), values.begin(), values.end());
    return record(entries);
}

class AttrBitmapTest : public PluginTest {
protected:
    AttackHost &services_ = AttackHost::instance();
    std::size_t requests_ = 0; ///< of the last listing

    /// What FormatOut lists of the record's first `length` bytes, the last one flush against an inaccessible page;
    /// nothing if it cannot be listed. Whatever else it leaves behind is a failure.
    std::optional<std::string> list(const Bytes &whole, std::size_t length, Failing failing = {},
                                    Place place = Place::end)
    {
        auto *format_out = exported<SYSDT_FormatOut>("SYSDT_AttrIdBitmapFormatOut");
        const Guarded value(std::span{whole}.first(length), place);
        Context context(1);
        Outputs outputs(nullptr);
        services_.begin(failing);
        const std::uint32_t status = format_out(context.get(), bitmap_kind, static_cast<std::uint32_t>(length),
                                                value.constant(), &outputs.kind, &outputs.length, &outputs.data);
        requests_ = services_.requests();
        EXPECT_EQ(failing.first == 1 ? SYSDT_ERR_NO_MEMORY : SYSDT_OK, status);
        EXPECT_TRUE(outputs.intact() && value.intact());
        const std::optional<Bytes> block = services_.collect(outputs.data);
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
        if (outputs.data == nullptr) {
            EXPECT_EQ(0, outputs.kind);
            EXPECT_EQ(0, outputs.length);
            return std::nullopt;
        }
        EXPECT_EQ(SYSDT_KIND_STRING, outputs.kind);
        EXPECT_EQ(block_size, block->size());
        std::string listing(reinterpret_cast<const char *>(block->data()));
        EXPECT_EQ(listing.size() + 1, outputs.length);
        return listing;
    }

    std::optional<std::string> list(const Bytes &whole) { return list(whole, whole.size()); }

    void expect_runs(const Identifiers &identifiers, const std::string &listing)
    {
        EXPECT_EQ(listing, list(record({text("L:"), bitmap(identifiers)})));
    }
    /// The line of the template with its values and the identifier 1.
    void expect_line(const std::string &line, const std::string &line_template, std::vector<Entry> values = {})
    {
        EXPECT_EQ(line + "\r\n", list(record_of(line_template, std::move(values)))) << line_template;
    }
    void expect_unlistable(const Bytes &whole, const std::string &why) { EXPECT_EQ(std::nullopt, list(whole)) << why; }
    void expect_no_line(const std::string &line_template, std::vector<Entry> values)
    {
        expect_unlistable(record_of(line_template, std::move(values)), line_template);
    }
};

/// So many identifiers, none next to another.
Identifiers apart(int count)
{
    Identifiers identifiers;
    for (int i = 0; i < count; ++i)
        identifiers.insert(2 * i);
    return identifiers;
}

TEST_F(AttrBitmapTest, Runs)
{
    expect_runs({1, 2, 3, 5}, "L: 1 to 3 5\r\n");
    expect_runs({0}, "L: 0\r\n");
    expect_runs({255}, "L: 255\r\n");
    expect_runs({0, 1}, "L: 0 to 1\r\n");
    expect_runs({0, 255}, "L: 0 255\r\n");
    expect_runs({254, 255}, "L: 254 to 255\r\n");
    expect_runs({7, 8}, "L: 7 to 8\r\n");
    expect_runs({15, 16, 17, 31, 33, 34}, "L: 15 to 17 31 33 to 34\r\n");
    Identifiers all;
    for (int n = 0; n < 256; ++n)
        all.insert(n);
    expect_runs(all, "L: 0 to 255\r\n");
    all.erase(128);
    expect_runs(all, "L: 0 to 127 129 to 255\r\n");
    for (int n = 0; n < 256; ++n)
        expect_runs({n}, "L: " + std::to_string(n) + "\r\n");
    expect_unlistable(record({text("L:"), bitmap({})}), "no identifier");
}

TEST_F(AttrBitmapTest, TenRunsALine)
{
    expect_runs(apart(10), "L: 0 2 4 6 8 10 12 14 16 18\r\n");
    expect_runs(apart(11), "L: 0 2 4 6 8 10 12 14 16 18\r\nL: 20\r\n");
    expect_runs(apart(20), "L: 0 2 4 6 8 10 12 14 16 18\r\nL: 20 22 24 26 28 30 32 34 36 38\r\n");
    expect_runs(apart(21), "L: 0 2 4 6 8 10 12 14 16 18\r\nL: 20 22 24 26 28 30 32 34 36 38\r\nL: 40\r\n");
    Identifiers pairs;
    for (int n = 1; n < 34; n += 3)
        pairs.insert({n, n + 1});
    expect_runs(pairs, "L: 1 to 2 4 to 5 7 to 8 10 to 11 13 to 14 16 to 17 19 to 20 22 to 23 25 to 26 28 to 29\r\n"
                       "L: 31 to 32\r\n");
    EXPECT_EQ("A 0 2 4 6 8 10 12 14 16 18.\r\nA 20.\r\n", list(record({text("A B###."), bitmap(apart(11))})));
}

/// 128 runs in lines of ten, as far as the block reaches.
TEST_F(AttrBitmapTest, TheBlockEndsTheListing)
{
    for (const std::size_t label_size : {1U, 250U, 280U, 299U}) {
        const std::string label(label_size, 'x');
        std::string listing = label;
        for (int run = 1; run <= 128; ++run) {
            listing += " " + std::to_string(2 * (run - 1));
            if (run % 10 == 0)
                listing += "\r\n" + label;
        }
        listing += "\r\n";
        EXPECT_EQ(listing.substr(0, block_size - 1), list(record({text(label), bitmap(apart(128))})));
    }
}

TEST_F(AttrBitmapTest, TheMarkerCutsLabelAndTail)
{
    expect_line("Attr 1", "Attr ###");
    expect_line("Attr 1", "Attr###");
    expect_line("A 1tail", "A B###tail");
    expect_line("one two 1", "one two three###");
    expect_line(" 1t", "###t");
    expect_line(" 1", "###");
    expect_line(" 1t", " ###t");
    expect_line(" 1t", " x###t");
    expect_line("A 1 b c", "A ### b c");
    expect_line("a 1c###d", "a b###c###d");
    expect_line("a 1#c", "a b####c");
    expect_line("A\tB 1", "A\tB###");
    expect_line("A## 1", "A##");
    expect_line("A  1", "A ");
    expect_line("A B 1", "A B");
    expect_line(" 1", "");
    expect_line("Name x 1z", "Name %s", {text("x y###z")});
    expect_line("1 1t b", "%u##%s", {u8(1), text("#t b")}); // the filled pieces make it together
}

TEST_F(AttrBitmapTest, Values)
{
    expect_line("Ids of 7 in 1x", "Ids of %u in ###x", {u8(7)});
    expect_line("<200> 1", "<%u>", {u8(200)});
    expect_line("<65535> 1", "<%u>", {u16(65535)});
    expect_line("<258> 1", "<%u>", {u16(258)});
    expect_line("<4294967295> 1", "<%u>", {u32(4294967295)});
    expect_line("<16909060> 1", "<%u>", {u32(16909060)});
    expect_line("<192.0.2.1> 1", "<%s>", {{ipv4, bytes_of(std::uint32_t{0xC0000201})}});
    expect_line("<2001:db8::1> 1", "<%s>", {ipv6_entry()});
    expect_line("<192.0.2.1> 1", "<%s>", {address(0)});
    expect_line("<2001:db8::1> 1", "<%s>", {address(1)});
    expect_line("<text> 1", "<%s>", {text("text")});
    expect_line("<> 1", "<%s>", {text("")});
    expect_line(" 1", "%s", {text("")});
    expect_line("<100% %n> 1", "<%s>", {text("100% %n")});
    expect_line("<text> 1", "<%s>", {text_without_end("text")});
    expect_line("<> 1", "<%s>", {text_without_end("")});
    expect_line("<te> 1", "<%s>", {{text_kind, {'t', 'e', 0, 'x', 't', 0}}});
    // longer than their kind
    expect_line("<7> 1", "<%u>", {{number8, {7, 1, 2, 3}}});
    Bytes long_address = address(1).data;
    long_address.push_back(9);
    expect_line("<2001:db8::1> 1", "<%s>", {{either_address, long_address}});
}

// (8)
TEST_F(AttrBitmapTest, EachValueUsesUpAPieceOfTheTemplate)
{
    expect_line("A 1 B  1", "A %u B %u C", {u8(1)});
    expect_line("A 1 B 2 C 1", "A %u B %u C", {u8(1), u8(2)});
    expect_line("A 1 B 2 C3 C 1", "A %u B %u C", {u8(1), u8(2), u8(3)});
    expect_line("1-2 1", "%u-%u", {u8(1), u16(2)});
    expect_line("1x192.0.2.1 1", "%u%s%s", {u8(1), text("x"), address(0)});
    expect_line("a 7 ba 8 b 1", "a %u b", {u8(7), u8(8)});
    expect_line("X 1", "X", {u8(7)}); // nothing to fill: the piece itself
    expect_line("XX 1", "X", {u8(7), text("t")});
    expect_line(" 1", "", {u8(7)});
}

// (7)
TEST_F(AttrBitmapTest, ValuesThatPrintNothing)
{
    for (const Entry &silent : {Entry{99, {1, 2, 3}}, Entry{99, {}}, Entry{0, {}}, Entry{3, {1}},
                                Entry{bitmap_kind, {1}}, address(2), address(255)}) {
        expect_line("A %u B 1", "A %u B", {silent}); // the template unchanged
        expect_line("A %u B %u C 1", "A %u B %u C", {silent, silent, silent});
        expect_line("2 C 1", "A %u B %u C", {silent, u8(2)});
        expect_line("A 1 B  1", "A %u B %u C", {u8(1), silent});
        expect_line("A 1 B 2 C 1", "A %u B %s %u C", {u8(1), silent, u8(2)});
        expect_line("A %n B 1", "A %n B", {silent}); // not looked at
        expect_line("100%% 1", "100%%", {silent});
        expect_line("7 1", "%n%u", {silent, u8(7)});
    }
}

TEST_F(AttrBitmapTest, NumberConversions)
{
    expect_line("<200> 1", "<%d>", {u8(200)});
    expect_line("<200> 1", "<%i>", {u8(200)});
    expect_line("<-56> 1", "<%hhd>", {u8(200)});
    expect_line("<-56> 1", "<%hhi>", {u16(0x01C8)});
    expect_line("<200> 1", "<%hhu>", {u16(0x01C8)});
    expect_line("<65535> 1", "<%d>", {u16(65535)});
    expect_line("<-1> 1", "<%hd>", {u16(65535)});
    expect_line("<5> 1", "<%hu>", {u32(65541)});
    expect_line("<c8> 1", "<%hhx>", {u32(0xFFFFFFC8)});
    expect_line("<-1> 1", "<%d>", {u32(4294967295)});
    expect_line("<-2147483648> 1", "<%d>", {u32(2147483648)});
    expect_line("<2147483647> 1", "<%d>", {u32(2147483647)});
    expect_line("<ff> 1", "<%x>", {u8(255)});
    expect_line("<FF> 1", "<%X>", {u8(255)});
    expect_line("<0xdeadbeef> 1", "<%#x>", {u32(0xDEADBEEF)});
    expect_line("<0XDEADBEEF> 1", "<%#X>", {u32(0xDEADBEEF)});
    expect_line("<0> 1", "<%#x>", {u8(0)});
    expect_line("<377> 1", "<%o>", {u8(255)});
    expect_line("<0377> 1", "<%#o>", {u8(255)});
    expect_line("<0> 1", "<%#o>", {u8(0)});
    expect_line("<0> 1", "<%#.0o>", {u8(0)});
    expect_line("<37777777777> 1", "<%o>", {u32(4294967295)});
    expect_line("<0> 1", "<%u>", {u8(0)});
    expect_line("<65535> 1", "<%hu>", {u32(65535)});
    expect_line("<0> 1", "<%hu>", {u32(65536)});
    expect_line("<-32768> 1", "<%hd>", {u32(32768)});
}

TEST_F(AttrBitmapTest, FlagsWidthAndPrecision)
{
    expect_line("<    7> 1", "<%5u>", {u8(7)});
    expect_line("<7    > 1", "<%-5u>", {u8(7)});
    expect_line("<00007> 1", "<%05u>", {u8(7)});
    expect_line("<7    > 1", "<%-05u>", {u8(7)});
    expect_line("<7    > 1", "<%0-5u>", {u8(7)});
    expect_line("<-0056> 1", "<%05hhd>", {u8(200)});
    expect_line("<0x00ff> 1", "<%#06x>", {u8(255)});
    expect_line("<  0xff> 1", "<%#6x>", {u8(255)});
    expect_line("<+7> 1", "<%+d>", {u8(7)});
    expect_line("<+0> 1", "<%+i>", {u8(0)});
    expect_line("< 7> 1", "<% d>", {u8(7)});
    expect_line("<+7> 1", "<%+ d>", {u8(7)});
    expect_line("<+7> 1", "<% +d>", {u8(7)});
    expect_line("<-56> 1", "<%+ hhd>", {u8(200)});
    expect_line("<7> 1", "<%+u>", {u8(7)}); // no sign without one
    expect_line("<007> 1", "<%.3u>", {u8(7)});
    expect_line("<     007> 1", "<%8.3u>", {u8(7)});
    expect_line("<     007> 1", "<%08.3u>", {u8(7)}); // the precision takes the zeros' place
    expect_line("<007     > 1", "<%-8.3u>", {u8(7)});
    expect_line("<    +007> 1", "<%+8.3d>", {u8(7)});
    expect_line("<7> 1", "<%0u>", {u8(7)}); // zeros for a width that is none, or no wider than the sign
    expect_line("<+7> 1", "<%+0d>", {u8(7)});
    expect_line("<-56> 1", "<%01hhd>", {u8(200)});
    expect_line("<123> 1", "<%.2u>", {u8(123)});
    expect_line("<123> 1", "<%2u>", {u8(123)});
    expect_line("<> 1", "<%.0u>", {u8(0)});
    expect_line("<  > 1", "<%2.0u>", {u8(0)});
    expect_line("<0x0ff> 1", "<%#.3x>", {u8(255)});
    expect_line("<0377> 1", "<%#.3o>", {u8(255)});
    expect_line("<  text> 1", "<%6s>", {text("text")});
    expect_line("<text  > 1", "<%-6s>", {text("text")});
    expect_line("<te> 1", "<%.2s>", {text("text")});
    expect_line("<    te> 1", "<%6.2s>", {text("text")});
    expect_line("<te    > 1", "<%-6.2s>", {text("text")});
    expect_line("<> 1", "<%.0s>", {text("text")});
    expect_line("<text> 1", "<%.9s>", {text("text")});
    expect_line("<192.0.2.1      > 1", "<%-15s>", {address(0)});
}

TEST_F(AttrBitmapTest, ConversionsThatDoNotFit)
{
    for (const char *conversion :
         {"%",     "%%",     "%n",  "%hn",   "%hhn",  "%s",    "%5s",   "%hs",  "%c",   "%p",  "%f",    "%e",
          "%g",    "%a",     "%m",  "%ld",   "%lu",   "%lld",  "%llx",  "%jd",  "%zu",  "%td", "%Lf",   "%qd",
          "%hhhd", "%hhhhu", "%*d", "%.*d",  "%*.*u", "%-*d",  "%5*d",  "%1$d", "%1$u", "%'d", "%I64d", "%5",
          "%-",    "%.",     "%.5", "%h",    "%hh",   "% ",    "%#",    "%5.",  "%D",   "%S",  "%B",    "%b",
          "%U",    "%O",     "%w",  "%.-5d", "%5-d",  "%+-#y", "%\xff", "%\n"})
        for (const Entry &number : {u8(7), u16(7), u32(7)})
            expect_no_line("<" + std::string(conversion), {number});
    for (const char *conversion :
         {"%",   "%%",   "%n", "%d", "%u", "%i",  "%o",   "%x",   "%X",   "%hd", "%hhu", "%hs", "%hhs",
          "%ls", "%lls", "%S", "%c", "%p", "%*s", "%.*s", "%-*s", "%1$s", "%'s", "%5",   "%.3", "%f"})
        for (const Entry &value :
             {text("t"), text(""), address(0), address(1), ipv6_entry(), Entry{ipv4, bytes_of(std::uint32_t{1})}})
            expect_no_line("<" + std::string(conversion), {value});
    expect_no_line("100%% of %u", {u8(7)}); // the first piece is "100%"
    expect_no_line("%u of %n", {u8(7), u8(8)});
    expect_no_line("%u of %n and %u", {u8(7), u8(8), u8(9)});
    expect_line("7 of  1", "%u of %n", {u8(7)}); // the bad piece is not reached
}

/// No width makes a piece longer than 298 characters, nor the label longer than 299.
TEST_F(AttrBitmapTest, PiecesAndLabelsAreCut)
{
    // A width beyond the precision is blanks ahead of the zeros, whatever the flag.
    expect_line(std::string(298, ' ') + " 1", "%0100000019.5421935i", {u8(7)});
    expect_line(std::string(5, ' ') + std::string(293, '0') + " 1", "%010005.10000i", {u8(7)});
    expect_line(std::string(298, '0') + " 1", "%5421935.100000019i", {u8(7)});
    for (const std::string width : {"298", "299", "300", "999", "65536", "2147483647", "2147483648", "4294967295",
                                    "4294967296", "18446744073709551617", "99999999999999999999999999"}) {
        const std::string blanks(width == "298" ? 297 : 298, ' ');
        expect_line(blanks + (width == "298" ? "7" : "") + " 1", "%" + width + "u", {u8(7)});
        expect_line((width == "298" ? std::string(297, ' ') + "t" : blanks) + " 1", "%" + width + "s", {text("t")});
        expect_line("7" + std::string(297, ' ') + " 1", "%-" + width + "u", {u8(7)});
        const std::string zeros(width == "298" ? 297 : 298, '0');
        expect_line(zeros + (width == "298" ? "7" : "") + " 1", "%." + width + "u", {u8(7)});
        expect_line(zeros + (width == "298" ? "7" : "") + " 1", "%0" + width + "u", {u8(7)});
        expect_line("t 1", "%." + width + "s", {text("t")});
    }
    expect_line(std::string(100, ' ') + std::string(198, '0') + " 1", "%1200.1100u", {u8(7)});
    const std::string long_text(400, 'x');
    expect_line(std::string(298, 'x') + " 1", "%s", {text(long_text)});
    expect_line(std::string(299, 'x') + " 1", "%s%s", {text(long_text), text(long_text)});
    expect_line(std::string(299, 'x') + " 1", "%s%s%s%u", {text(long_text), text(long_text), text(long_text), u8(1)});
    expect_line(std::string(298, 'x') + "7 1", "%s%u", {text(long_text), u8(7)});
    expect_line(std::string(298, 'x') + "1 1", "%s%u", {text(long_text), u8(123)});
    expect_line(std::string(298, 'x') + " 1", "%s", {text(std::string(65000, 'x'))});
    // of the template 299 characters count
    expect_line(std::string(299, 'x') + " 1", long_text);
    expect_line(std::string(299, 'x') + " 1", std::string(299, 'x') + "###t");
    expect_line(std::string(296, 'x') + " 1", std::string(296, 'x') + "###t");
    expect_line(std::string(295, 'x') + " 1t", std::string(295, 'x') + "###tail");
    expect_line(std::string(298, 'x') + " 1", std::string(299, 'x') + "%u", {u8(7)}); // a piece of 298
    expect_no_line(std::string(298, 'x') + "%u", {u8(7)});                            // a lone "%" is left
    expect_line(std::string(297, 'x') + "7 1", std::string(297, 'x') + "%u", {u8(7)});
    EXPECT_EQ(std::string(299, 'x') + " 1\r\n", list(record({text_without_end(std::string(60000, 'x')), bitmap({1})})));
}

TEST_F(AttrBitmapTest, WhatTheEntriesMustBe)
{
    const Entry label = text("L:");
    const Entry one = bitmap({1});
    EXPECT_EQ("L: 1\r\n", list(record({label, one})));
    expect_unlistable(record({}), "no entries");
    expect_unlistable(record({label}), "no bitmap");
    expect_unlistable(record({label, one}, 0), "none counted");
    expect_unlistable(record({label, one}, 1), "one counted");
    expect_unlistable(record({label, one}, 3), "too many counted");
    expect_unlistable(record({label, one}, 65535), "too many counted");
    expect_unlistable(record({one, label}), "the other order");
    expect_unlistable(record({label, label}), "no bitmap");
    expect_unlistable(record({one, one}), "no template");
    for (const std::uint16_t kind : Numbers{24, 26, 0, 0x1900, 0x0119})
        expect_unlistable(record({{kind, label.data}, one}), "the template's kind");
    for (const std::uint16_t kind : Numbers{0x0121, 0x0123, 0x22, 0x2201, 25})
        expect_unlistable(record({label, {kind, one.data}}), "the bitmap's kind");
    // what is not counted does not matter
    EXPECT_EQ("L: 1\r\n", list(record({label, one, {number32, {}}}, 2)));
    EXPECT_EQ("%u: 1\r\n", list(record({text("%u:"), one, u8(7)}, 2)));
    // a template and a bitmap of any length
    EXPECT_EQ(" 1\r\n", list(record({{text_kind, {}}, one})));
    EXPECT_EQ("L 1\r\n", list(record({{text_kind, {'L', 0, 'x'}}, one})));
    EXPECT_EQ("L: 1\r\n", list(record({label, {bitmap_kind, {2}}})));
    EXPECT_EQ("L: 8\r\n", list(record({label, {bitmap_kind, {0, 1}}})));
    expect_unlistable(record({label, {bitmap_kind, {}}}), "no identifiers");
    Bytes long_bitmap = bitmap({255}).data;
    long_bitmap.resize(64, 0xFF);
    EXPECT_EQ("L: 255\r\n", list(record({label, {bitmap_kind, long_bitmap}})));
    expect_unlistable(record({label, {bitmap_kind, Bytes(32)}}), "no identifiers");
    long_bitmap[31] = 0;
    expect_unlistable(record({label, {bitmap_kind, long_bitmap}}), "no identifiers in the first 32 bytes");
}

TEST_F(AttrBitmapTest, ValuesShorterThanTheirKind)
{
    const std::pair<std::uint16_t, std::size_t> kinds[] = {{number8, 1}, {number16, 2}, {number32, 4},
                                                           {ipv4, 4},    {ipv6, 16},    {either_address, 21}};
    for (const auto &[kind, size] : kinds) {
        for (std::size_t length = 0; length < size; ++length)
            for (const char *line_template : {"%u", "%s", "x"})
                expect_no_line(line_template, {{kind, Bytes(length)}});
        expect_line("x 1", "x", {{kind, Bytes(size)}});
    }
}

TEST_F(AttrBitmapTest, NothingBehindTheRecordIsRead)
{
    const Bytes whole =
        record({text("%s and %s and %u and %s:"), bitmap({1, 2}), text("text"), address(1), u32(7), ipv6_entry()});
    const std::string listing = "text and 2001:db8::1 and 7 and 2001:db8::1: 1 to 2\r\n";
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(std::nullopt, list(whole, length)) << length;
    EXPECT_EQ(listing, list(whole));
    EXPECT_EQ(listing, list(whole, whole.size(), {}, Place::odd));
    Bytes longer = whole;
    longer.resize(longer.size() + 100, 0xEE);
    EXPECT_EQ(listing, list(longer));
    for (std::size_t place = 44; place + 4 <= whole.size();) { // each length field in turn made to reach far
        std::uint16_t length = 0;
        std::memcpy(&length, whole.data() + place + 2, sizeof length);
        for (const std::uint16_t told : Numbers{65535, 32768}) {
            Bytes bad = whole;
            std::ranges::copy(bytes_of(told), bad.begin() + static_cast<std::ptrdiff_t>(place) + 2);
            expect_unlistable(bad, "the length at " + std::to_string(place));
        }
        place += 4U + length;
    }
}

TEST_F(AttrBitmapTest, MemoryOutAnywhere)
{
    const Bytes whole = record_of("%u and %s and %s", {u8(1), text("t"), {99, {}}});
    ASSERT_EQ("1 and t and  1\r\n", list(whole));
    const std::size_t requests = requests_;
    EXPECT_EQ(1U + 2 + 3 * 2 + 2 + 1, requests);
    for (std::size_t request = 1; request <= requests; ++request) {
        EXPECT_EQ(std::nullopt, list(whole, whole.size(), {request, false})) << request;
        EXPECT_EQ(std::nullopt, list(whole, whole.size(), {request, true})) << request;
    }
}

// (9)
TEST_F(AttrBitmapTest, TheOutputVariantHasNoEffect)
{
    auto *format_out = exported<SYSDT_FormatOut>("SYSDT_AttrIdBitmapFormatOut");
    const Bytes whole = record({text("L:"), bitmap({1})});
    for (const std::uint8_t variant : Bytes{0, 1, 2, 255}) {
        Context context(1);
        context.get()->variant = variant;
        Outputs outputs(nullptr);
        services_.begin();
        EXPECT_EQ(SYSDT_OK, format_out(context.get(), bitmap_kind, static_cast<std::uint32_t>(whole.size()),
                                       whole.data(), &outputs.kind, &outputs.length, &outputs.data));
        EXPECT_STREQ("L: 1\r\n", static_cast<const char *>(outputs.data));
        services_.collect(outputs.data);
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
    }
}

// ---------------------------------------------------------------------------------------------- exported pieces

TEST_F(AttrBitmapTest, BuildRunTellsWhy)
{
    auto *build = exported<decltype(SYSDT_AttrIdBitmap_BuildRun)>("SYSDT_AttrIdBitmap_BuildRun");
    const auto built = [&](const Bytes &whole, Failing failing = {}) {
        const Guarded value(whole);
        Guarded output(block_size);
        services_.begin(failing);
        const std::uint32_t status = build(owner_handle, value.constant(), reinterpret_cast<char *>(output.data()), 0);
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
        EXPECT_TRUE(output.intact());
        return std::pair(status, status == 0 ? std::string(reinterpret_cast<char *>(output.data())) : std::string());
    };
    using Result = std::pair<std::uint32_t, std::string>;
    EXPECT_EQ((Result{0, "L: 1\r\n"}), built(record({text("L:"), bitmap({1})})));
    EXPECT_EQ((Result{1, ""}), built(record({text("L:"), bitmap({})})));
    EXPECT_EQ((Result{1, ""}), built(record({text("L:"), bitmap({1})}, 1)));
    EXPECT_EQ((Result{1, ""}), built(record({text("L:"), bitmap({1})}, 1), {1, true})); // takes nothing
    EXPECT_EQ((Result{1, ""}), built(record({bitmap({1}), bitmap({1})})));
    EXPECT_EQ((Result{1, ""}), built(record({text("%n"), bitmap({1}), u8(7)})));
    for (std::size_t request = 1; request <= 7; ++request) {
        EXPECT_EQ((Result{SYSDT_ERR_NO_MEMORY, ""}), built(record({text("%u"), bitmap({1}), u8(7)}), {request, false}))
            << request;
    }
    std::uint8_t anything[64]{};
    char output[1];
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(owner_handle, nullptr, output, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(owner_handle, anything, nullptr, 0));
}

TEST_F(AttrBitmapTest, OneValue)
{
    auto *format = exported<decltype(SYSDT_AttrIdDataTypeFormat)>("SYSDT_AttrIdDataTypeFormat");
    struct Done {
        std::uint32_t characters;
        std::string output;
        std::string rest;
        bool operator==(const Done &) const = default;
    };
    const auto formatted = [&](const Entry &entry, const std::string &line_template, std::uint32_t limit,
                               Failing failing = {}) {
        Guarded blank(300);
        Guarded output(300);
        put(output, "before");
        put(blank, line_template);
        const Guarded data(entry.data);
        services_.begin(failing);
        const std::uint32_t characters = format(owner_handle, entry.kind, static_cast<std::uint32_t>(entry.data.size()),
                                                reinterpret_cast<char *>(output.data()),
                                                reinterpret_cast<char *>(blank.data()), data.constant(), limit);
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
        EXPECT_TRUE(output.intact() && blank.intact());
        return Done{characters, reinterpret_cast<char *>(output.data()), reinterpret_cast<char *>(blank.data())};
    };
    EXPECT_EQ((Done{4, "A 7 ", "%u B"}), formatted(u8(7), "A %u %u B", 299));
    EXPECT_EQ((Done{3, "7 B", "%u B"}), formatted(u8(7), "%u B", 299));
    EXPECT_EQ((Done{2, "A ", "%u B"}), formatted(u8(7), "A %u %u B", 3));
    EXPECT_EQ((Done{0, "", "%u B"}), formatted(u8(7), "A %u %u B", 1));
    EXPECT_EQ((Done{0, "before", "%u B"}), formatted(u8(7), "A %u %u B", 0));
    EXPECT_EQ((Done{0, "before", "%u B"}), formatted({99, {}}, "A %u %u B", 299));
    EXPECT_EQ((Done{0, "before", "%u B"}), formatted(address(2), "A %u %u B", 299));
    EXPECT_EQ((Done{5, "A xy ", "%u"}), formatted(text("xy"), "A %s %u", 299));
    for (std::size_t request = 1; request <= 2; ++request)
        EXPECT_EQ((Done{0, "before", "A %u"}), formatted(u8(7), "A %u", 299, {request, false}));
}

TEST_F(AttrBitmapTest, SplittingATemplate)
{
    auto *split = exported<decltype(SYSDT_FormatAttrIdStrFind)>("SYSDT_FormatAttrIdStrFind");
    const auto parts = [&](const char *line_template, std::uint32_t limit) {
        Guarded head(limit);
        Guarded rest(limit);
        split(line_template, reinterpret_cast<char *>(head.data()), reinterpret_cast<char *>(rest.data()), limit);
        EXPECT_TRUE(head.intact() && rest.intact());
        return std::pair(std::string(reinterpret_cast<char *>(head.data())),
                         std::string(reinterpret_cast<char *>(rest.data())));
    };
    using Parts = std::pair<std::string, std::string>;
    EXPECT_EQ((Parts{"A %u B ", "%u C"}), parts("A %u B %u C", 300));
    EXPECT_EQ((Parts{"%u", "%u%u"}), parts("%u%u%u", 300));
    EXPECT_EQ((Parts{"%", "%"}), parts("%%", 300));
    EXPECT_EQ((Parts{"A %u", "A %u"}), parts("A %u", 300));
    EXPECT_EQ((Parts{"A", "A"}), parts("A", 300));
    EXPECT_EQ((Parts{"", ""}), parts("", 300));
    EXPECT_EQ((Parts{"A %", "%u "}), parts("A %u %u C", 4));
    EXPECT_EQ((Parts{"", ""}), parts("A %u %u C", 1));
}

TEST_F(AttrBitmapTest, CuttingALabel)
{
    auto *cut = exported<decltype(SYSDT_AttrIdStrCut_New)>("SYSDT_AttrIdStrCut_New");
    const auto parts = [&](const std::string &label, const char *marker, std::uint32_t limit) {
        Guarded text(std::span(reinterpret_cast<const std::uint8_t *>(label.c_str()), label.size() + 1));
        Guarded tail(limit);
        cut(reinterpret_cast<char *>(text.data()), reinterpret_cast<char *>(tail.data()), marker, limit);
        EXPECT_TRUE(text.intact() && tail.intact());
        return std::pair(std::string(reinterpret_cast<char *>(text.data())),
                         std::string(reinterpret_cast<char *>(tail.data())));
    };
    using Parts = std::pair<std::string, std::string>;
    EXPECT_EQ((Parts{"Ids of 7 in", "x"}), parts("Ids of 7 in ###x", "###", 300));
    EXPECT_EQ((Parts{"A", "tail"}), parts("A B###tail", "###", 300));
    EXPECT_EQ((Parts{"A B", ""}), parts("A B", "###", 300));
    EXPECT_EQ((Parts{"A", "t"}), parts("A B###tail", "###", 2));
    EXPECT_EQ((Parts{"A", ""}), parts("A B###tail", "###", 1));
    EXPECT_EQ((Parts{"A", "C"}), parts("A BxC", "x", 300));
}

TEST_F(AttrBitmapTest, Pairs)
{
    auto *pairs = exported<decltype(SYSDT_AttrIdBitmap_GetPairs)>("SYSDT_AttrIdBitmap_GetPairs");
    const auto runs = [&](const Identifiers &identifiers) {
        const Guarded value(bitmap(identifiers).data);
        Guarded starts(258);
        Guarded ends(258);
        auto *start = reinterpret_cast<std::uint16_t *>(starts.data());
        auto *end = reinterpret_cast<std::uint16_t *>(ends.data());
        const std::uint32_t count = pairs(reinterpret_cast<const SYSDT_AttrIdBitmap *>(value.constant()), start, end);
        EXPECT_LE(count, 128U);
        EXPECT_TRUE(starts.intact() && ends.intact());
        std::vector<std::pair<int, int>> found;
        for (std::uint32_t i = 1; i <= count; ++i)
            found.emplace_back(start[i], end[i]);
        return found;
    };
    using Runs = std::vector<std::pair<int, int>>;
    EXPECT_EQ((Runs{}), runs({}));
    EXPECT_EQ((Runs{{0, 0}}), runs({0}));
    EXPECT_EQ((Runs{{0, 1}, {3, 0}, {254, 255}}), runs({0, 1, 3, 254, 255}));
    EXPECT_EQ(128U, runs(apart(128)).size());
    EXPECT_EQ((std::pair{254, 0}), runs(apart(128)).back());
}

TEST_F(AttrBitmapTest, ListingRuns)
{
    auto *list_runs = exported<decltype(SYSDT_AttrIdToStrOut)>("SYSDT_AttrIdToStrOut");
    const std::uint16_t starts[] = {9, 1, 5};
    const std::uint16_t ends[] = {9, 3, 0};
    const auto listed = [&](Failing failing = {}) {
        Guarded output(block_size);
        Guarded label(300);
        put(label, "A B###t");
        services_.begin(failing);
        const std::uint32_t status = list_runs(owner_handle, 2, starts, ends, reinterpret_cast<char *>(label.data()),
                                               reinterpret_cast<char *>(output.data()));
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
        EXPECT_TRUE(output.intact() && label.intact());
        return std::pair(status, status == 0 ? std::string(reinterpret_cast<char *>(output.data())) : std::string());
    };
    using Result = std::pair<std::uint32_t, std::string>;
    EXPECT_EQ((Result{0, "A 1 to 3 5t\r\n"}), listed());
    EXPECT_EQ((Result{SYSDT_ERR_NO_MEMORY, ""}), listed({1, false}));
}

TEST_F(AttrBitmapTest, WithoutRoomNothingIsWritten)
{
    Guarded label(8);
    put(label, "A###B");
    auto *nothing = static_cast<char *>(forbidden_address());
    auto *split = exported<decltype(SYSDT_FormatAttrIdStrFind)>("SYSDT_FormatAttrIdStrFind");
    EXPECT_EQ(SYSDT_OK, split("%u %u", nothing, nothing, 0));
    auto *cut = exported<decltype(SYSDT_AttrIdStrCut_New)>("SYSDT_AttrIdStrCut_New");
    EXPECT_EQ(SYSDT_OK, cut(reinterpret_cast<char *>(label.data()), nothing, "###", 0));
    EXPECT_STREQ("A", reinterpret_cast<char *>(label.data()));
}

TEST_F(AttrBitmapTest, StepsNeedTheirPointers)
{
    char text[300] = "A";
    char output[block_size];
    const char *const constant = text;
    const SYSDT_AttrIdBitmap value{};
    std::uint16_t starts[129]{};
    std::uint16_t ends[129]{};
    const std::uint16_t *const runs = starts;
    services_.begin();
    expect_pointers_needed<decltype(SYSDT_AttrIdDataTypeFormat)>("SYSDT_AttrIdDataTypeFormat", 0, owner_handle,
                                                                 std::uint32_t{number8}, 1U, output, text,
                                                                 static_cast<const void *>(&value), 299U);
    expect_pointers_needed<decltype(SYSDT_FormatAttrIdStrFind)>("SYSDT_FormatAttrIdStrFind", SYSDT_ERR_NULL_PTR,
                                                                constant, output, text, 300U);
    expect_pointers_needed<decltype(SYSDT_AttrIdBitmapToStr)>("SYSDT_AttrIdBitmapToStr", SYSDT_ERR_NULL_PTR,
                                                              owner_handle, &value, output, text, 0U);
    expect_pointers_needed<decltype(SYSDT_AttrIdBitmap_GetPairs)>("SYSDT_AttrIdBitmap_GetPairs", 0, &value, starts,
                                                                  ends);
    expect_pointers_needed<decltype(SYSDT_AttrIdToStrOut)>("SYSDT_AttrIdToStrOut", SYSDT_ERR_NULL_PTR, owner_handle, 1U,
                                                           runs, runs, text, output);
    expect_pointers_needed<decltype(SYSDT_AttrIdStrCut_New)>("SYSDT_AttrIdStrCut_New", SYSDT_ERR_NULL_PTR, text, output,
                                                             constant, 300U);
    EXPECT_EQ(std::vector<std::string>{}, services_.settle());
}

} // namespace

} // namespace bgpdt::test::attr_bitmap
