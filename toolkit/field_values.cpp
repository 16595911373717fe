// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "field_values.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <iterator>
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
    return value[code] == 6 && value[code + 1] == 2;
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

/// The numbers of a field of them.
template <class Take>
void each_number(const Field &field, Value bytes, const Take &take)
{
    for (std::size_t i = 0; field.host_order() && i < field.count; ++i)
        take(number_at(bytes.subspan(i * field.width, field.width)));
}

std::vector<std::uint64_t> numbers_of(const Field &field, Value bytes)
{
    std::vector<std::uint64_t> numbers;
    each_number(field, bytes, [&](std::uint64_t number) { numbers.push_back(number); });
    return numbers;
}

/// What is one number and nothing else.
bool is_number(const Field &field) { return field.form == Form::number && field.count == 1; }

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

void append_number(std::string &out, std::uint64_t number)
{
    std::array<char, 20> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): written next
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

void append_ipv4(std::string &out, std::uint64_t address)
{
    std::array<char, 16> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written next
    out += PAL_IpAddrToStr(static_cast<std::uint32_t>(address), buffer.data());
}

/// An IS-IS node's system identifier and pseudonode number, or one or two addresses of OSPF's.
void append_router_id(std::string &out, std::uint64_t protocol, Value octets)
{
    switch (protocol) {
    case SYSDT_LS_ISIS_LEVEL_1:
    case SYSDT_LS_ISIS_LEVEL_2: out += grouped(octets.first(6), 2, '.') + "." + to_hex(octets.subspan(6, 1)); return;
    case SYSDT_LS_OSPFV2:
    case SYSDT_LS_OSPFV3:
        append_ipv4(out, network_number(octets.first(4)));
        if (const std::uint64_t second = network_number(octets.subspan(4, 4)); second != 0) {
            out += '/';
            append_ipv4(out, second);
        }
        return;
    default: out += octets_text(octets);
    }
}

bool is_community(const Field &field) { return field.name == std::string_view("community"); }

bool is_large_community(const Field &field)
{
    return field.count == 3 && field.key == std::string_view("largeCommunity");
}

} // namespace

std::vector<const Field *> fields_in_order(const Layout &layout, std::size_t size)
{
    std::vector<const Field *> all;
    std::ranges::transform(layout.fields, std::back_inserter(all), [](const Field &field) { return &field; });
    std::ranges::stable_sort(all, {}, [](const Field *field) { return field->offset; });
    std::size_t at = 0;
    std::erase_if(all, [&](const Field *field) {
        const bool told = field->size() != 0 && field->offset >= at && field->offset + field->size() <= size;
        at = told ? field->offset + field->size() : at;
        return !told;
    });
    return all;
}

Field whole_field(const SYSDT_Record &type)
{
    const std::size_t size = value_size(type);
    if (type.baseKind == SYSDT_KIND_BINARY && std::has_single_bit(size) && size <= 8)
        return {.name = "index", .width = static_cast<std::uint8_t>(size), .count = 1, .form = Form::number};
    return {.name = "value", .width = 1, .count = 1, .form = Form::bytes};
}

bool has_pieces(const Field &field) { return is_coded(field) || is_community(field) || is_large_community(field); }

/// The two halves of a community (RFC 1997), the three numbers of a large one (RFC 8092).
void add_pieces(const Field &field, Value bytes, const AddNamed &add)
{
    const auto piece = [&add](const char *name, std::uint64_t number) {
        NamedValue &value = add(name);
        append_number(value.text, number);
        value.number = number;
    };
    if (is_coded(field)) {
        add_coded_pieces(field, bytes, add);
    } else if (is_community(field)) {
        const std::uint64_t number = number_at(bytes);
        piece("community", number);
        piece("AS number", number >> 16);
        piece("local value", number & 0xffff);
    } else if (is_large_community(field)) {
        const char *const names[] = {"administrator", "local data 1", "local data 2"};
        const char *const *name = names;
        each_number(field, bytes, [&](std::uint64_t number) { piece(*name++, number); });
    }
}

static std::vector<NamedValue> pieces_of(const Field &field, Value bytes)
{
    std::vector<NamedValue> pieces;
    add_pieces(field, bytes, [&pieces](std::string_view name) -> NamedValue & {
        return pieces.emplace_back(NamedValue{std::string(name), {}});
    });
    return pieces;
}

FieldReader::FieldReader(Value bytes, std::string_view kind, const Layout &layout) : value(bytes), kind_(kind)
{
    const auto protocol = std::ranges::find(layout.fields, Words::ls_protocol, &Field::words);
    if (protocol != layout.fields.end() && protocol->offset + protocol->size() <= value.size())
        protocol_ = number_at(value.subspan(protocol->offset, protocol->size()));
}

FieldValue FieldReader::read(const Field &field, Value bytes) const
{
    FieldValue result{meaning(field, bytes), "", numbers_of(field, bytes)};
    result.in_words = word(field, bytes).has_value();
    result.pieces = pieces_of(field, bytes);
    result.shown = shown(field, bytes);
    return result;
}

void FieldReader::read(const Field &field, Value bytes, NamedValue &into) const
{
    if (const auto its_word = word(field, bytes)) {
        into.text = *its_word;
        return;
    }
    append_shown(into.text, field, bytes);
    if (is_number(field))
        into.number = number_at(bytes);
}

/// What the field's number stands for, if not for itself.
std::optional<std::string_view> FieldReader::word(const Field &field, Value bytes) const
{
    if (field.words == Words::sub_kind)
        return kind_.empty() ? "unknown" : kind_;
    if (field.words == Words::target_form && is_mac_like_target(value))
        return "six octets";
    const char *const found = field.words != Words::none ? word_for(field.words, number_at(bytes)) : nullptr;
    return found != nullptr ? std::optional<std::string_view>(found) : std::nullopt;
}

std::string FieldReader::meaning(const Field &field, Value bytes) const
{
    return is_coded(field) ? coded_meaning(field, bytes) : std::string(word(field, bytes).value_or(reading(field)));
}

std::string FieldReader::shown(const Field &field, Value bytes) const
{
    if (is_coded(field)) {
        const std::vector<NamedValue> pieces = pieces_of(field, bytes);
        return pieces[1].text + (pieces.size() > 2 ? ", " + pieces[2].text : "");
    }
    if (is_community(field)) {
        const std::uint64_t number = number_at(bytes);
        return std::to_string(number) + " = " + std::to_string(number >> 16) + ", " + std::to_string(number & 0xffff);
    }
    std::string text;
    append_shown(text, field, bytes);
    return text;
}

/// Of a field that is read as a whole.
void FieldReader::append_shown(std::string &out, const Field &field, Value bytes) const
{
    std::array<char, 46> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written where it is read
    if (is_router_id(field))
        return append_router_id(out, protocol_, bytes);
    switch (field.form) {
    case Form::bytes: out += octets_text(bytes); return;
    case Form::text: out += text(bytes); return;
    case Form::bits: out += identifiers(bytes); return;
    case Form::ipv6: out += PAL_Inet_ntoa_b_ipv6(bytes.data(), buffer.data()); return;
    case Form::mac: out += grouped(bytes, 2, '-'); return;
    case Form::esi: out += grouped(bytes, 2, '.'); return;
    default: break;
    }
    const char *before = "";
    each_number(field, bytes, [&](std::uint64_t number) {
        out += std::exchange(before, ", ");
        if (field.form == Form::ipv4)
            append_ipv4(out, number);
        else
            append_number(out, number);
    });
}

/// Whether nothing is in the entry: its numbers are 0 but for those that say so.
bool FieldReader::is_empty(const Layout &layout, std::size_t entry) const
{
    return std::ranges::all_of(layout.fields, [&](const Field &field) {
        const Value bytes = value.subspan(entry * layout.stride + field.offset, field.size());
        bool zero = true;
        each_number(field, bytes, [&](std::uint64_t number) { zero &= number == 0; });
        return zero || meaning(field, bytes) == unused_entry;
    });
}

FieldReader::Entries FieldReader::entries(const Layout &layout) const
{
    if (layout.repeat == 1)
        return {1, false};
    std::size_t last = layout.repeat - std::size_t{1};
    const auto bytes = [&](std::size_t n) { return value.subspan(n * layout.stride, layout.stride); };
    while (last > 0 && std::ranges::equal(bytes(last - 1), bytes(last)))
        --last;
    const bool empty = is_empty(layout, last);
    return {empty ? last : last + 1, empty};
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
