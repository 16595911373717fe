// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "stream_values.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <utility>

#include "conversions.hpp"
#include "digits.hpp"
#include "json_answers.hpp"
#include "kinds.hpp"
#include "near_names.hpp"

namespace bgpdt::toolkit {
namespace {

/// The two digits of each byte.
constexpr auto hex_pairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {hex_digits[byte >> 4], hex_digits[byte & 0x0f]};
    return pairs;
}();

/// Two digits a byte, in that order.
void put_hex(char *to, Value value, ByteOrder &order)
{
    const std::uint16_t *const positions = order.positions(value);
    const std::uint8_t *const bytes = value.data();
#pragma GCC unroll 4
    for (std::size_t i = 0, size = value.size(); i < size; ++i)
        std::memcpy(to + 2 * i, hex_pairs[bytes[positions[i]]].data(), 2);
}

constexpr std::string_view text_column = "text";
constexpr std::string_view hex_column = "hex";
constexpr std::string_view kind_column = "kind";

/// As RFC 4180 has it.
std::string csv_cell(const std::string &text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + '"';
}

/// What would end a cell or a line is escaped.
std::string tsv_cell(const std::string &text)
{
    std::string cell;
    for (const char c : text)
        cell += c == '\t' ? "\\t" : c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\\' ? "\\\\" : std::string(1, c);
    return cell;
}

std::string row_of(std::span<const std::string> cells, Format format)
{
    std::string row;
    for (const std::string &cell : cells) {
        row += &cell == cells.data() ? "" : format == Format::csv ? "," : "\t";
        row += format == Format::csv ? csv_cell(cell) : tsv_cell(cell);
    }
    return row + "\n";
}

/// Whether all values of the type have the same fields, and few.
bool has_fixed_fields(Session &session, const SYSDT_Record &type, const std::vector<std::string> &names)
{
    const Bytes zeros(value_size(type));
    return layout_of(type.typeId, zeros, std::endian::native).repeat == 1 &&
           named_values(session, type, zeros).size() == names.size();
}

} // namespace

std::vector<std::string> columns_of(Session &session, const SYSDT_Record &type, std::vector<std::string> asked)
{
    const std::vector<std::string> names = field_names(session, type);
    std::vector<std::string> known{std::string(text_column), std::string(hex_column), std::string(kind_column)};
    if (asked.empty()) {
        known.resize(kinds(session, type).empty() ? 2 : 3);
        if (has_fixed_fields(session, type, names))
            known.insert(known.end(), names.begin(), names.end());
        return known;
    }
    known.insert(known.end(), names.begin(), names.end());
    for (const std::string &name : asked)
        require_field(type, name, known);
    return asked;
}

// ------------------------------------------------------------------------------------------------ JSON

JsonLines::JsonLines(Session &session, const SYSDT_Record &type, std::vector<std::string> columns)
    : session_(session), type_(type), printer_(type, session.mode_for(type)), order_(type, session.settings().native),
      fields_(session, type), columns_(std::move(columns))
{
}

std::optional<std::string_view> JsonLines::text(Value value)
{
    if (type_.formatOut == nullptr)
        return {};
    const host::Delivery printed = printer_.print(value);
    return printed.ok() && printed.kind == SYSDT_KIND_STRING ? std::optional(printed.text()) : std::nullopt;
}

bool JsonLines::append_table(Buffer &out, Value value) { return script_.append(out, session_.host(), type_, value); }

std::span<const NamedValue> JsonLines::fields(Value value)
{
    const std::span<const NamedValue> all = fields_.of(value);
    if (columns_.empty())
        return all;
    asked_.clear();
    std::ranges::copy_if(all, std::back_inserter(asked_), [this](const NamedValue &field) {
        return std::ranges::find(columns_, field.name) != columns_.end();
    });
    return asked_;
}

void JsonLines::append(Buffer &out, Value value, Value printed)
{
    const auto table = [&](Buffer &to) { return append_table(to, value); };
    const auto hex = [&](Buffer &to) {
        to.append('"');
        put_hex(to.room(2 * value.size()), value, order_);
        to.grown(2 * value.size());
        to.append('"');
    };
    out = line_json(text(printed), table, fields(value), hex, std::move(out)).taken();
}

// ------------------------------------------------------------------------------------------------ all formats

ValueWriter::ValueWriter(Session &session, const SYSDT_Record &type, Format format, std::vector<std::string> columns)
    : session_(session), type_(type), format_(format), converter_(type, session.mode_for(type)),
      order_(type, session.settings().native), fields_(session, type), columns_(std::move(columns))
{
    if (format == Format::text && type.formatOut == nullptr)
        throw Refusal(name_of(type) + " prints no text");
    if (format == Format::json)
        lines_.emplace(session, type, columns_);
}

bool ValueWriter::write(Value value, Buffer &out)
{
    switch (format_) {
    case Format::text: return write_text(value, out);
    case Format::hex: write_hex(value, out); break;
    case Format::json: write_json(value, out); break;
    case Format::binary: write_binary(value, out); break;
    case Format::csv:
    case Format::tsv: write_row(value, out); break;
    }
    return true;
}

bool ValueWriter::write_text(Value value, Buffer &out)
{
    const Value filled = filled_up(type_, value, filled_);
    const host::Delivery printed = converter_.print(in_asked_notation(session_, type_, filled, changed_));
    status_ = printed.status;
    const std::string_view text = printed.text();
    if (!printed.ok() || printed.data.empty() || std::memchr(text.data(), '\n', text.size()) != nullptr)
        return false;
    char *const to = out.room(text.size() + 1);
    std::memcpy(to, text.data(), text.size());
    to[text.size()] = '\n';
    out.grown(text.size() + 1);
    return true;
}

void ValueWriter::write_hex(Value value, Buffer &out)
{
    char *const to = out.room(2 * value.size() + 1);
    put_hex(to, value, order_);
    to[2 * value.size()] = '\n';
    out.grown(2 * value.size() + 1);
}

void ValueWriter::write_binary(Value value, Buffer &out)
{
    value = filled_up(type_, value, filled_);
    char *const to = out.room(value.size());
    const std::uint16_t *const positions = order_.positions(value);
    for (std::size_t i = 0; i < value.size(); ++i)
        to[i] = static_cast<char>(value[positions[i]]);
    out.grown(value.size());
}

std::string ValueWriter::text_of(Value value)
{
    if (type_.formatOut == nullptr)
        return {};
    const host::Delivery printed = converter_.print(in_asked_notation(session_, type_, value, changed_));
    return printed.ok() && printed.kind == SYSDT_KIND_STRING ? std::string(printed.text()) : "";
}

std::string ValueWriter::hex_of(Value value)
{
    std::string hex(2 * value.size(), '\0');
    put_hex(hex.data(), value, order_);
    return hex;
}

void ValueWriter::write_json(Value value, Buffer &out)
{
    value = filled_up(type_, value, filled_);
    lines_->append(out, value, in_asked_notation(session_, type_, value, changed_));
    out.append('\n');
}

std::string ValueWriter::header() const
{
    return format_ == Format::csv || format_ == Format::tsv ? row_of(columns_, format_) : "";
}

std::string ValueWriter::column(const std::string &name, Value value, std::span<const NamedValue> fields)
{
    if (name == text_column)
        return text_of(value);
    if (name == hex_column)
        return hex_of(value);
    const auto field = std::ranges::find(fields, name == kind_column ? "sub-kind" : name, &NamedValue::name);
    return field == fields.end() ? "" : field->text;
}

void ValueWriter::write_row(Value value, Buffer &out)
{
    value = filled_up(type_, value, filled_);
    const std::span<const NamedValue> fields = fields_.of(value);
    std::vector<std::string> cells;
    for (const std::string &name : columns_)
        cells.push_back(column(name, value, fields));
    out.append(row_of(cells, format_));
}

std::string ValueWriter::refusal() const
{
    if (status_ != SYSDT_OK)
        return name_of(type_) + " refuses to print the value (" + host::status_name(status_) + ")";
    return name_of(type_) + " prints nothing for the value, or more than one line";
}

} // namespace bgpdt::toolkit
