// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "field_values.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "coded_octets.hpp"
#include "kinds.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

using Value = std::span<const std::uint8_t>;

const char *reading(const Field &field)
{
    switch (field.form) {
    case Form::number: return field.count > 1 ? "numbers" : "number";
    case Form::ipv4: return "IPv4 address";
    case Form::text: return "text";
    case Form::ipv6: return "IPv6 address";
    case Form::mac: return "MAC address";
    case Form::esi: return "Ethernet segment identifier";
    default: return "octets";
    }
}

bool is_router_id(const Field &field) { return field.form == Form::bytes && field.count == SYSDT_LS_ROUTER_ID_SIZE; }

bool is_mac_like_target(Value value)
{
    constexpr std::size_t code = 4; // behind the sub-kind word; type 6, sub-type 2 (RFC 7432, section 7.6)
    return kind_of(value) == SYSDT_BOL_VRFRTEXT && value[code] == 6 && value[code + 1] == 2;
}

std::uint64_t number_at(Value bytes)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t place = std::endian::native == std::endian::big ? bytes.size() - 1 - i : i;
        number |= std::uint64_t{bytes[i]} << 8 * place;
    }
    return number;
}

std::vector<std::uint64_t> numbers_of(const Field &field, Value bytes)
{
    std::vector<std::uint64_t> numbers;
    for (std::size_t i = 0; field.host_order() && i < field.count; ++i)
        numbers.push_back(number_at(bytes.subspan(i * field.width, field.width)));
    return numbers;
}

/// "1-3 5": the identifiers in a set.
std::string identifiers(Value bits)
{
    const auto has = [bits](std::size_t n) { return n < 8 * bits.size() && (bits[n / 8] >> n % 8 & 1) != 0; };
    std::vector<std::string> runs;
    for (std::size_t first = 0; first < 8 * bits.size(); ++first) {
        if (has(first)) {
            std::size_t last = first;
            while (has(last + 1))
                ++last;
            runs.push_back(std::to_string(first) + (last == first ? "" : "-" + std::to_string(last)));
            first = last;
        }
    }
    return runs.empty() ? "none" : joined(runs, " ");
}

std::string text(Value bytes)
{
    return lua_quoted({reinterpret_cast<const char *>(bytes.data()),
                       static_cast<std::size_t>(std::ranges::find(bytes, 0) - bytes.begin())});
}

std::string ipv4_text(std::uint64_t address)
{
    std::array<char, 16> buffer{};
    return PAL_IpAddrToStr(static_cast<std::uint32_t>(address), buffer.data());
}

std::string dotted(Value octets)
{
    return std::to_string(octets[0]) + "." + std::to_string(octets[1]) + "." + std::to_string(octets[2]) + "." +
           std::to_string(octets[3]);
}

/// An IS-IS node's system identifier and pseudonode number, or one or two addresses of OSPF's.
std::string router_id(std::uint64_t protocol, Value octets)
{
    switch (protocol) {
    case SYSDT_LS_ISIS_LEVEL_1:
    case SYSDT_LS_ISIS_LEVEL_2: return grouped(octets.first(6), 2, '.') + "." + to_hex(octets.subspan(6, 1));
    case SYSDT_LS_OSPFV2:
    case SYSDT_LS_OSPFV3: {
        const bool second = std::ranges::any_of(octets.subspan(4, 4), [](std::uint8_t byte) { return byte != 0; });
        return dotted(octets) + (second ? "/" + dotted(octets.subspan(4)) : "");
    }
    default: return octets_text(octets);
    }
}

/// The two halves of a community (RFC 1997), the three numbers of a large one (RFC 8092).
std::vector<NamedValue> pieces_of(const Field &field, Value bytes, std::span<const std::uint64_t> numbers)
{
    if (is_coded(field))
        return coded_pieces(field, bytes);
    const auto piece = [](const char *name, std::uint64_t number) {
        return NamedValue{name, std::to_string(number), number};
    };
    if (field.name == std::string_view("community"))
        return {piece("community", numbers[0]), piece("AS number", numbers[0] >> 16),
                piece("local value", numbers[0] & 0xffff)};
    if (numbers.size() == 3 && field.key == std::string_view("largeCommunity"))
        return {piece("administrator", numbers[0]), piece("local data 1", numbers[1]),
                piece("local data 2", numbers[2])};
    return {};
}

} // namespace

FieldReader::FieldReader(Value bytes, std::string kind, const Layout &layout) : value(bytes), kind_(std::move(kind))
{
    const auto protocol = std::ranges::find(layout.fields, Words::ls_protocol, &Field::words);
    if (protocol != layout.fields.end() && protocol->offset + protocol->size() <= value.size())
        protocol_ = number_at(value.subspan(protocol->offset, protocol->size()));
}

FieldValue FieldReader::read(const Field &field, Value bytes) const
{
    FieldValue result{"", "", numbers_of(field, bytes)};
    result.meaning = meaning(field, bytes, result.numbers);
    result.in_words = field.words != Words::none && result.meaning != reading(field);
    result.pieces = pieces_of(field, bytes, result.numbers);
    result.shown = shown(field, bytes, result.numbers);
    return result;
}

std::string FieldReader::meaning(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const
{
    if (is_coded(field))
        return coded_meaning(field, bytes);
    if (field.words == Words::sub_kind)
        return kind_.empty() ? "unknown" : kind_;
    if (field.words == Words::target_form && is_mac_like_target(value))
        return "six octets";
    const char *const word = numbers.size() == 1 ? word_for(field.words, numbers[0]) : nullptr;
    return word == nullptr ? reading(field) : word;
}

std::string FieldReader::shown(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const
{
    std::array<char, 46> buffer{};
    if (is_coded(field)) {
        const std::vector<NamedValue> pieces = coded_pieces(field, bytes);
        return pieces[1].text + (pieces.size() > 2 ? ", " + pieces[2].text : "");
    }
    if (is_router_id(field))
        return router_id(protocol_, bytes);
    if (field.name == std::string_view("community"))
        return std::to_string(numbers[0]) + " = " + std::to_string(numbers[0] >> 16) + ", " +
               std::to_string(numbers[0] & 0xffff);
    switch (field.form) {
    case Form::bytes: return octets_text(bytes);
    case Form::text: return text(bytes);
    case Form::bits: return identifiers(bytes);
    case Form::ipv6: return PAL_Inet_ntoa_b_ipv6(bytes.data(), buffer.data());
    case Form::mac: return grouped(bytes, 2, '-');
    case Form::esi: return grouped(bytes, 2, '.');
    default: break;
    }
    std::vector<std::string> texts;
    for (const std::uint64_t number : numbers)
        texts.push_back(field.form == Form::ipv4 ? ipv4_text(number) : std::to_string(number));
    return joined(texts, ", ");
}

std::string octets_text(Value bytes)
{
    const auto end = std::find_if(bytes.rbegin(), bytes.rend(), [](std::uint8_t byte) { return byte != 0; });
    const auto zeros = static_cast<std::size_t>(end - bytes.rbegin());
    return zeros > longest_row ? zeros == bytes.size() ? "0" : to_hex(bytes.first(bytes.size() - zeros)) + "..."
                               : to_hex(bytes);
}

std::string grouped(Value bytes, std::size_t group, char separator)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += group)
        text += (at == 0 ? "" : std::string(1, separator)) + to_hex(bytes.subspan(at, group));
    return text;
}

} // namespace bgpdt::toolkit
