// SPDX-License-Identifier: Apache-2.0
#include "explain.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <string_view>

#include <nlohmann/json.hpp>

#include "conversions.hpp"
#include "display_record.hpp"
#include "errors.hpp"
#include "kinds.hpp"
#include "samples.hpp"
#include "script_table.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;
using Value = std::span<const std::uint8_t>;

/// The raising of a version number says that a member is gone or means something else.
constexpr int json_schema = 1;
/// Longer rows of equal bytes are counted.
constexpr std::size_t longest_row = 8;

// ------------------------------------------------------------------------------------------------ what numbers mean

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

/// What the fields of one value are read with.
struct Reader {
    Value value;
    std::string kind; ///< the sub-kind's name

    std::string meaning(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const;
    std::string shown(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const;
};

/// The octets of a route distinguisher or an extended community: what the type code makes of the six behind it.
struct Coded {
    enum Split { as2_number4, ipv4_number2, as4_number2, six_octets } split;
    std::uint16_t code;
};

bool is_coded(const Field &field) { return field.form == Form::rd || field.form == Form::community; }

/// A route distinguisher's code is a number (RFC 4364, section 4.2), a community's a type and a sub-type (RFC 4360,
/// section 3, without the transitivity bit; RFC 5668).
Coded coded(Form form, Value octets)
{
    const auto code = static_cast<std::uint16_t>(octets[0] << 8 | octets[1]);
    const unsigned chosen = form == Form::rd ? code : octets[0] & ~0x40U;
    return {chosen < Coded::six_octets ? static_cast<Coded::Split>(chosen) : Coded::six_octets, code};
}

std::string coded_meaning(const Coded &octets)
{
    constexpr std::string_view splits[] = {"2-octet AS, number", "IPv4 address, number", "4-octet AS, number",
                                           "six octets"};
    const std::uint8_t code[] = {static_cast<std::uint8_t>(octets.code >> 8), static_cast<std::uint8_t>(octets.code)};
    return "type 0x" + to_hex(code) + ": " + std::string(splits[octets.split]);
}

bool is_mac_like_target(Value value)
{
    constexpr std::size_t code = 4; // behind the sub-kind word; type 6, sub-type 2 (RFC 7432, section 7.6)
    return kind_of(value) == SYSDT_BOL_VRFRTEXT && value[code] == 6 && value[code + 1] == 2;
}

std::string Reader::meaning(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const
{
    if (is_coded(field))
        return coded_meaning(coded(field.form, bytes));
    if (field.words == Words::sub_kind)
        return kind.empty() ? "unknown" : kind;
    if (field.words == Words::target_form && is_mac_like_target(value))
        return "six octets";
    const char *const word = numbers.size() == 1 ? word_for(field.words, numbers[0]) : nullptr;
    return word == nullptr ? reading(field) : word;
}

/// Hexadecimal digits, two or more bytes joined by a separator.
std::string grouped(Value bytes, std::size_t group, char separator)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += group)
        text += (at == 0 ? "" : std::string(1, separator)) + to_hex(bytes.subspan(at, group));
    return text;
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

std::string octets(Value bytes)
{
    const auto end = std::find_if(bytes.rbegin(), bytes.rend(), [](std::uint8_t byte) { return byte != 0; });
    const auto zeros = static_cast<std::size_t>(end - bytes.rbegin());
    return zeros > longest_row ? zeros == bytes.size() ? "0" : to_hex(bytes.first(bytes.size() - zeros)) + "..."
                               : to_hex(bytes);
}

std::string ipv4_text(std::uint64_t address)
{
    std::array<char, 16> buffer{};
    return PAL_IpAddrToStr(static_cast<std::uint32_t>(address), buffer.data());
}

std::uint64_t network_number(Value bytes)
{
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

std::string coded_value(const Coded &octets, Value bytes)
{
    const auto number = [bytes](std::size_t at, std::size_t size) { return network_number(bytes.subspan(at, size)); };
    switch (octets.split) {
    case Coded::as2_number4: return std::to_string(number(2, 2)) + ", " + std::to_string(number(4, 4));
    case Coded::ipv4_number2: return ipv4_text(number(2, 4)) + ", " + std::to_string(number(6, 2));
    case Coded::as4_number2: return std::to_string(number(2, 4)) + ", " + std::to_string(number(6, 2));
    case Coded::six_octets: break;
    }
    return to_hex(bytes.subspan(2));
}

std::string Reader::shown(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const
{
    std::array<char, 46> buffer{};
    if (is_coded(field))
        return coded_value(coded(field.form, bytes), bytes);
    switch (field.form) {
    case Form::bytes: return octets(bytes);
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

// ------------------------------------------------------------------------------------------------ parts

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

void add_unnamed(std::vector<Part> &parts, Value value, std::size_t from, std::size_t to)
{
    if (from < to) {
        const Value bytes = value.subspan(from, to - from);
        const bool zero = std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
        parts.push_back(
            {from, to - from, "", zero ? "unused" : "unused, but not zero", zero ? "" : octets(bytes), "", {}});
    }
}

Part part_of(const Reader &reader, const Field &field, std::size_t offset)
{
    const Value bytes = reader.value.subspan(offset, field.size());
    Part part{offset, field.size(), field.name, "", "", "", numbers_of(field, bytes)};
    part.meaning = reader.meaning(field, bytes, part.numbers);
    part.shown = reader.shown(field, bytes, part.numbers);
    if (field.key != nullptr)
        part.key = (field.table == nullptr ? "" : std::string(field.table) + ".") + field.key;
    return part;
}

/// The parts of one entry of the layout. What scripts alone know has no bytes.
void add_entry(std::vector<Part> &parts, const Reader &reader, const Layout &layout, std::size_t entry)
{
    std::vector<Field> fields(layout.fields.begin(), layout.fields.end());
    std::ranges::stable_sort(fields, {}, &Field::offset);
    const std::size_t begin = entry * layout.stride;
    const std::size_t end = std::min(begin + layout.stride, reader.value.size());
    std::size_t at = begin;
    for (const Field &field : fields) {
        const std::size_t offset = begin + field.offset;
        if (field.size() != 0 && offset >= at && offset + field.size() <= end) {
            add_unnamed(parts, reader.value, at, offset);
            Part &part = parts.emplace_back(part_of(reader, field, offset));
            if (layout.repeat > 1) {
                const std::string index = std::to_string(entry + 1);
                part.name += " " + index;
                part.key = layout.key + ("[" + index + "].") + part.key;
            }
            at = offset + field.size();
        }
    }
    add_unnamed(parts, reader.value, at, end);
}

/// The first of the entries at the end that are all alike.
std::size_t last_different_entry(const Layout &layout, Value value)
{
    std::size_t entry = layout.repeat - std::size_t{1};
    const auto bytes = [&](std::size_t n) { return value.subspan(n * layout.stride, layout.stride); };
    while (entry > 0 && std::ranges::equal(bytes(entry - 1), bytes(entry)))
        --entry;
    return entry;
}

std::vector<Part> parts_of_fields(const Reader &reader, const Layout &layout)
{
    std::vector<Part> parts;
    const std::size_t last = last_different_entry(layout, reader.value);
    for (std::size_t entry = 0; entry <= last; ++entry)
        add_entry(parts, reader, layout, entry);
    if (const std::size_t rest = layout.repeat - 1 - last; rest > 0) {
        const std::string first = std::to_string(last + 2);
        const std::string name =
            rest == 1 ? "entry " + first : "entries " + first + " to " + std::to_string(layout.repeat);
        parts.push_back({(last + 1) * layout.stride,
                         rest * layout.stride,
                         name,
                         "as entry " + std::to_string(last + 1),
                         "",
                         "",
                         {},
                         rest});
    }
    add_unnamed(parts, reader.value, layout.size(), reader.value.size());
    return parts;
}

/// A value without fields is a number if it is as long as one, else octets.
Part whole_value(const SYSDT_Record &type, Value value)
{
    const bool number = type.baseKind == SYSDT_KIND_BINARY && std::has_single_bit(value.size()) && value.size() <= 8;
    const Field field{.name = number ? "index" : "value",
                      .width = static_cast<std::uint8_t>(number ? value.size() : 1),
                      .count = 1,
                      .form = number ? Form::number : Form::bytes};
    const Reader reader{value, ""};
    Part part = part_of(reader, field, 0);
    if (!number) {
        part.size = value.size();
        part.shown = octets(value);
    }
    return part;
}

std::string kind_name(Session &session, const SYSDT_Record &type, Value value)
{
    std::vector<Kind> all = kinds(session, type);
    if (const SYSDT_Record *keys = session.host().find("BOLPREFIX"); all.empty() && keys != nullptr)
        all = kinds(session, *keys); // the types of one kind of route key each have its sub-kind word
    const auto found = std::ranges::find(all, kind_of(value), &Kind::number);
    return found == all.end() ? "" : found->name;
}

/// What the value prints as, or the sentence that says why it does not.
void add_text(Session &session, const SYSDT_Record &type, const Bytes &value, Explanation &explanation)
{
    try {
        const bool bitmap = type.typeId == SYSDT_TYPE_ATTRIDBITMAP;
        const bool empty = std::ranges::all_of(value, [](std::uint8_t byte) { return byte == 0; });
        if (bitmap && empty)
            throw Refusal("the bitmap is empty: there is nothing to list");
        const Bytes printable = bitmap ? bitmap_record(value, default_template, {}) : value;
        const Printed printed = print_value(session, type, printable, session.mode_for(type));
        explanation.text = printed.text ? *printed.text : to_hex(printed.bytes);
    } catch (const Refusal &refusal) {
        explanation.no_text = refusal.what();
    }
}

void add_table(Session &session, const SYSDT_Record &type, const Bytes &value, Explanation &explanation)
{
    try {
        const LuaState lua = new_lua_state();
        push_table(session, lua.get(), type, value);
        explanation.table = std::make_shared<const ordered_json>(script_json(lua.get(), -1));
    } catch (const Refusal &refusal) {
        explanation.no_table = refusal.what();
    }
}

ordered_json part_json(const Explanation &explanation, const Part &part)
{
    ordered_json json = {{"offset", part.offset},
                         {"size", part.size},
                         {"hex", to_hex(explanation.bytes_of(part))},
                         {"meaning", part.meaning}};
    const std::pair<const char *, const std::string &> texts[] = {
        {"name", part.name}, {"value", part.shown}, {"key", part.key}};
    for (const auto &[member, text] : texts)
        if (!text.empty())
            json[member] = text;
    if (part.numbers.size() == 1)
        json["number"] = part.numbers.front();
    else if (!part.numbers.empty())
        json["number"] = part.numbers;
    return json;
}

/// As byte_lines() below.
std::vector<std::string> lines_of(Value bytes, std::size_t per_line)
{
    const std::uint8_t last = bytes.empty() ? 0 : bytes.back();
    const auto other = std::find_if(bytes.rbegin(), bytes.rend(), [last](std::uint8_t byte) { return byte != last; });
    const auto equal = static_cast<std::size_t>(other - bytes.rbegin());
    const std::size_t counted_bytes = equal > longest_row && (last == 0 || equal == bytes.size()) ? equal : 0;
    const std::size_t written = bytes.size() - counted_bytes;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < written; at += per_line)
        lines.push_back(grouped(bytes.subspan(at, std::min(per_line, written - at)), 1, ' '));
    if (counted_bytes != 0)
        lines.push_back(to_hex(bytes.last(1)) + " x " + std::to_string(counted_bytes));
    return lines;
}

} // namespace

Explanation explanation_of(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    Explanation explanation{.type = name_of(type),
                            .about = sample_of(type.typeId).about,
                            .native = session.settings().native,
                            .bytes = value};
    if (std::ranges::find(layout.fields, Words::sub_kind, &Field::words) != layout.fields.end())
        explanation.kind = kind_name(session, type, value);
    explanation.parts = layout.fields.empty() ? std::vector{whole_value(type, value)}
                                              : parts_of_fields({value, explanation.kind}, layout);
    add_text(session, type, value, explanation);
    add_table(session, type, value, explanation);
    if (!explanation.native)
        turn_to_target(type, explanation.bytes);
    return explanation;
}

std::vector<std::string> byte_lines(const Explanation &explanation, const Part &part, std::size_t per_line)
{
    const Value all = explanation.bytes_of(part);
    const bool equal_bytes = std::ranges::count(all, all.front()) == static_cast<std::ptrdiff_t>(all.size());
    if (part.repeats == 1 || equal_bytes)
        return lines_of(all, per_line);
    std::vector<std::string> lines = lines_of(all.first(part.size / part.repeats), per_line);
    lines.back() += " x " + std::to_string(part.repeats);
    return lines;
}

std::string title_of(const Explanation &explanation)
{
    return explanation.type + (explanation.about.empty() ? "" : ", " + explanation.about) +
           (explanation.kind.empty() ? "" : ", " + explanation.kind) + ": " + counted(explanation.bytes.size(), "byte");
}

std::string order_of(const Explanation &explanation)
{
    return explanation.native ? "this machine's" : "the target's (big-endian)";
}

std::string text_of(const Explanation &explanation)
{
    return explanation.text ? shown(*explanation.text) : "none: " + explanation.no_text;
}

std::string table_of(const Explanation &explanation)
{
    return explanation.table ? script_text(*explanation.table) : "none: " + explanation.no_table;
}

ordered_json explanation_json(const Explanation &explanation)
{
    ordered_json json = {{"schema", json_schema},
                         {"type", explanation.type},
                         {"about", explanation.about},
                         {"order", explanation.native ? "native" : "target"},
                         {"size", explanation.bytes.size()},
                         {"hex", to_hex(explanation.bytes)}};
    if (!explanation.kind.empty())
        json["kind"] = explanation.kind;
    ordered_json &parts = json["parts"] = ordered_json::array();
    for (const Part &part : explanation.parts)
        parts.push_back(part_json(explanation, part));
    json["text"] = explanation.text ? ordered_json(*explanation.text) : ordered_json();
    json["table"] = explanation.table ? *explanation.table : ordered_json();
    if (!explanation.text)
        json["no_text"] = explanation.no_text;
    if (!explanation.table)
        json["no_table"] = explanation.no_table;
    return json;
}

} // namespace bgpdt::toolkit
