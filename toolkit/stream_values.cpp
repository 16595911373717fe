// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "stream_values.hpp"

#include <array>
#include <bit>
#include <cstring>
#include <numeric>
#include <utility>

#include <lua.hpp>
#include <nlohmann/json.hpp>

#include "conversions.hpp"
#include "errors.hpp"
#include "json_table.hpp"
#include "samples.hpp"
#include "shown_text.hpp"
#include "strict_json.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;

constexpr const char *text_member = "text";
constexpr const char *table_member = "table";
constexpr const char *hex_member = "hex";

/// The digits' values; 0xff for what is none.
constexpr auto hex_values = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(0xff);
    for (std::uint8_t i = 0; i < 16; ++i) {
        values[static_cast<unsigned char>("0123456789abcdef"[i])] = i;
        values[static_cast<unsigned char>("0123456789ABCDEF"[i])] = i;
    }
    return values;
}();

/// As equal as two tables are to scripts: the fields' order does not matter.
bool same(const ordered_json &first, const ordered_json &second)
{
    return nlohmann::json(first) == nlohmann::json(second);
}

} // namespace

Value filled_up(const SYSDT_Record &type, Value value, Bytes &room)
{
    if (type.baseKind != SYSDT_KIND_STRING || value.size() >= value_size(type))
        return value;
    room.assign(value.begin(), value.end());
    room.resize(value_size(type));
    return room;
}

// ------------------------------------------------------------------------------------------------ byte order

void ByteOrder::work_out(const Layout &layout, std::size_t size)
{
    layout_ = &layout;
    positions_.resize(size);
    std::iota(positions_.begin(), positions_.end(), std::uint16_t{0});
    if (native_ || std::endian::native == std::endian::big || size < type_.dataLength)
        return;
    if (layout.fields.empty() && type_.baseKind == SYSDT_KIND_BINARY)
        std::ranges::reverse(positions_); // a plain binary type is one number
    halves_.resize(2 * size);
    const auto low = std::span(halves_).first(size);
    const auto high = std::span(halves_).last(size);
    for (std::size_t i = 0; i < size; ++i) {
        low[i] = static_cast<std::uint8_t>(positions_[i]);
        high[i] = static_cast<std::uint8_t>(positions_[i] >> 8);
    }
    reverse_numbers(layout, low);
    reverse_numbers(layout, high);
    for (std::size_t i = 0; i < size; ++i)
        positions_[i] = static_cast<std::uint16_t>(high[i] << 8 | low[i]);
}

// ------------------------------------------------------------------------------------------------ reading

ValueReader::ValueReader(Session &session, const SYSDT_Record &type, Format format)
    : session_(session), type_(type), format_(format), size_(value_size(type)), converter_(type, session.mode_for(type))
{
    if (format == Format::text && type.formatIn == nullptr)
        throw Refusal(name_of(type) + " takes no text", Hint::bytes);
    if (format == Format::json) {
        lines_.emplace(session, type);
        lua_ = new_lua_state();
    }
}

Value ValueReader::read_other(std::span<char> line)
{
    switch (format_) {
    case Format::hex: return read_hex({line.data(), line.size()});
    case Format::json: return read_json({line.data(), line.size()});
    default: break;
    }
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(line.data());
    if (session_.settings().native)
        return {bytes, line.size()};
    value_.assign(bytes, bytes + line.size());
    turn_to_native(type_, value_);
    return value_;
}

Value ValueReader::read_text(std::span<char> text)
{
    const host::Delivery delivery = converter_.parse(text);
    if (delivery.data.size() - 1 < size_) [[likely]] // a refused text delivers nothing
        return delivery.data;
    explain(delivery);
    return {};
}

/// Why what was delivered for a text is no value.
void ValueReader::explain(const host::Delivery &delivery)
{
    status_ = delivery.status;
    if (!delivery.ok()) {
        reason_.clear();
    } else if (delivery.data.empty()) {
        reason_ = name_of(type_) + " makes no value of text";
    } else {
        reason_ = "the text has " + std::to_string(delivery.data.size() - 1) + " characters, " + name_of(type_) +
                  " has room for " + std::to_string(size_ - 1);
    }
}

Value ValueReader::keep(Bytes value)
{
    value_ = std::move(value);
    if (type_.baseKind == SYSDT_KIND_STRING && value_.size() < size_)
        value_.resize(size_);
    require_size(type_, value_, size_);
    return value_;
}

/// Two digits a byte and nothing else; null for anything that does not look like that.
Value ValueReader::read_plain_hex(std::string_view text)
{
    if (text.size() != 2 * size_)
        return {};
    value_.resize(size_);
    unsigned wrong = 0;
    for (std::size_t i = 0; i < size_; ++i) {
        const unsigned high = hex_values[static_cast<unsigned char>(text[2 * i])];
        const unsigned low = hex_values[static_cast<unsigned char>(text[2 * i + 1])];
        wrong |= high | low;
        value_[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return wrong < 16 ? Value(value_) : Value();
}

Value ValueReader::read_hex(std::string_view text)
{
    try {
        if (read_plain_hex(text).data() == nullptr)
            keep(from_hex(text));
        if (!session_.settings().native)
            turn_to_native(type_, value_);
        return value_;
    } catch (const Refusal &refusal) {
        reason_ = refusal.what();
        return {};
    }
}

/// The bytes that a record of JSON says, first by "hex", then by "table", then by "text".
Bytes ValueReader::value_of(const ordered_json &record)
{
    const auto text_of = [&](const char *member) {
        if (!record[member].is_string())
            throw Refusal(std::string("its member \"") + member + "\" is no string");
        return record[member].get<std::string>();
    };
    if (record.contains(hex_member)) {
        Bytes value = from_hex(text_of(hex_member));
        if (!session_.settings().native)
            turn_to_native(type_, value);
        return value;
    }
    if (record.contains(table_member)) {
        push_json(lua_.get(), record[table_member].dump());
        Bytes value = read_table(session_, lua_.get(), type_);
        lua_settop(lua_.get(), 0);
        return value;
    }
    if (record.contains(text_member)) {
        std::string text = text_of(text_member);
        if (text.find('\0') != std::string::npos)
            throw Refusal("its text holds a NUL, where texts end");
        if (type_.formatIn == nullptr)
            throw Refusal(name_of(type_) + " takes no text");
        const std::string original = text;
        const Value value = read_text(text);
        if (value.data() == nullptr)
            throw refusal(original);
        return {value.begin(), value.end()};
    }
    throw Refusal(R"(it has none of the members "hex", "table" and "text")");
}

/// Whether what a member says is what it says of the value, or a text that is another way to write that.
bool ValueReader::agrees(const ordered_json &given, const char *member, const std::string &says, Value value)
{
    if (!given.contains(member) || given[member].dump() == says || same(given[member], ordered_json::parse(says)))
        return true;
    if (std::string_view(member) != text_member || !given[member].is_string() || type_.formatIn == nullptr)
        return false;
    std::string text = given[member].get<std::string>();
    Bytes room;
    const Value parsed = filled_up(type_, read_text(text), room);
    return parsed.data() != nullptr && std::ranges::equal(parsed, value);
}

/// The members beside the one that the value was taken from must not say another.
void ValueReader::require_agreement(const ordered_json &given, Value value)
{
    const std::string source = given.contains(hex_member) ? hex_member : table_member;
    const auto require = [&](const char *member, const std::string &says) {
        if (agrees(given, member, says, value))
            return;
        throw Refusal("its \"" + std::string(member) + "\" " +
                      (member == source ? "is not the table of the value that it says"
                                        : "says another value than its \"" + source + "\""));
    };
    if (const auto text = lines_->text(value))
        require(text_member, to_json(*text));
    written_.clear();
    if (lines_->append_table(written_, value))
        require(table_member, std::string(written_.text()));
}

/// A line as it would be written: its members agree.
bool ValueReader::read_written(std::string_view line)
{
    constexpr std::string_view front = R"("hex":")";
    constexpr std::string_view back = R"("})";
    const std::size_t size = front.size() + 2 * size_ + back.size();
    if (line.size() < size || session_.settings().notation != Notation::as_written)
        return false;
    const std::string_view hex = line.substr(line.size() - size);
    if (!hex.starts_with(front) || read_plain_hex(hex.substr(front.size(), 2 * size_)).data() == nullptr)
        return false;
    if (!session_.settings().native)
        turn_to_native(type_, value_);
    written_.clear();
    lines_->append(written_, value_, value_);
    return written_.text() == line;
}

Value ValueReader::read_json(std::string_view text)
{
    if (read_written(text))
        return value_;
    try {
        const std::optional<ordered_json> record = toolkit::read_json(text);
        if (!record || !record->is_object())
            throw Refusal("the line is no JSON object");
        const Bytes value = value_of(*record);
        keep(value);
        if (record->contains(hex_member) || record->contains(table_member)) {
            const Bytes kept = value_;
            require_agreement(*record, kept);
            value_ = kept;
        }
        return value_;
    } catch (const Refusal &refusal) {
        reason_ = refusal.what();
        lua_settop(lua_.get(), 0);
        return {};
    }
}

Refusal ValueReader::refusal(std::string_view line) const
{
    return reason_.empty() ? text_refusal(session_, type_, line, session_.mode_for(type_), status_) : Refusal(reason_);
}

} // namespace bgpdt::toolkit
