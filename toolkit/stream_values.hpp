// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values of one type as they stand in streams: a line each in the formats that are text, back to back in binary.
#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "buffer.hpp"
#include "bytes.hpp"
#include "errors.hpp"
#include "fields.hpp"
#include "script_table.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

enum class Format : std::uint8_t { text, hex, json, binary, csv, tsv };

/// Longer lines are refused: no type has values that long.
inline constexpr std::size_t longest_line = std::size_t{64} << 10;

/// A value in the machine's byte order; null is none.
using Value = std::span<const std::uint8_t>;

/// The value's bytes with what is missing at the end of a host's string.
Value filled_up(const SYSDT_Record &type, Value value, Bytes &room);

/// The byte order of a type's values outside: the target's, or the machine's own.
class ByteOrder {
public:
    ByteOrder(const SYSDT_Record &type, bool native) : type_(type), native_(native)
    {
        positions_.reserve(value_size(type));
        halves_.reserve(2 * value_size(type));
    }

    /// Where the bytes in that order stand in the value; as many as it has. Takes no memory for a value of the type's
    /// size.
    const std::uint16_t *positions(Value value)
    {
        const Layout &layout = layout_of(type_.typeId, value, std::endian::native);
        if (&layout != layout_ || positions_.size() != value.size())
            work_out(layout, value.size());
        return positions_.data();
    }

private:
    void work_out(const Layout &layout, std::size_t size);

    const SYSDT_Record &type_;
    const bool native_;
    const Layout *layout_ = nullptr; ///< of the positions
    std::vector<std::uint16_t> positions_;
    Bytes halves_; ///< the positions' low bytes, then the high ones, while they are worked out
};

/// Writes values as JSON, one thread's own.
class JsonLines {
public:
    /// @param columns  the fields; all of them if empty
    JsonLines(Session &session, const SYSDT_Record &type, std::vector<std::string> columns = {});

    /// Without the line's end.
    /// @param printed  the value in the notation of the text
    void append(Buffer &out, Value value, Value printed);

    // The members that say the value in another way than by its bytes, as far as the type has them.

    /// Stays until the next.
    std::optional<std::string_view> text(Value value);
    /// False, with nothing appended, if there is none.
    bool append_table(Buffer &out, Value value);

private:
    std::span<const NamedValue> fields(Value value);

    Session &session_;
    const SYSDT_Record &type_;
    host::Converter printer_;
    ByteOrder order_;
    ScriptJson script_;
    ValueFields fields_;
    const std::vector<std::string> columns_;
    std::vector<NamedValue> asked_;
};

/// Reads values, one thread's own.
class ValueReader {
public:
    /// @throws Refusal if the type takes no text, and that is the format
    ValueReader(Session &session, const SYSDT_Record &type, Format format);

    /// The value of the line, which has a NUL behind it and may be changed; null if it is refused. It stays until the
    /// next call.
    Value read(std::span<char> line) { return format_ == Format::text ? read_text(line) : read_other(line); }
    /// Why the last line was refused, as one text is.
    Refusal refusal(std::string_view line) const;

private:
    Value read_text(std::span<char> text);
    void explain(const host::Delivery &delivery);
    Value read_other(std::span<char> line);
    Value read_hex(std::string_view text);
    Value read_plain_hex(std::string_view text);
    Value read_json(std::string_view text);
    bool read_written(std::string_view line);
    Value keep(Bytes value);
    Bytes value_of(const nlohmann::ordered_json &record);
    bool agrees(const nlohmann::ordered_json &given, const char *member, const std::string &says, Value value);
    void require_agreement(const nlohmann::ordered_json &given, Value value);

    Session &session_;
    const SYSDT_Record &type_;
    const Format format_;
    const std::size_t size_;
    host::Converter converter_;
    std::optional<JsonLines> lines_;
    Buffer written_; ///< by them
    LuaState lua_{nullptr, nullptr};
    Bytes value_;
    std::uint32_t status_ = 0;
    std::string reason_; ///< where the type was not asked
};

/// The columns of a table, or the fields of a line of JSON: fields by their names, or "text", "hex" and "kind".
///
/// @param asked  empty: text and hex, and the fields of a type whose values all have the same
/// @throws Error if the type has no field of the name
std::vector<std::string> columns_of(Session &session, const SYSDT_Record &type, std::vector<std::string> asked);

/// Writes values, one thread's own.
class ValueWriter {
public:
    /// @param columns  of a table; of JSON the fields, all of them if empty
    /// @throws Refusal if the type prints no text, and that is the format
    ValueWriter(Session &session, const SYSDT_Record &type, Format format, std::vector<std::string> columns = {});

    /// What stands above the values; empty in formats without columns.
    std::string header() const;

    /// Writes the value and the line's end. False, with nothing written, if the type refuses to.
    bool write(Value value, Buffer &out);
    /// Why the last value was not written.
    std::string refusal() const;

private:
    bool write_text(Value value, Buffer &out);
    void write_hex(Value value, Buffer &out);
    void write_binary(Value value, Buffer &out);
    void write_json(Value value, Buffer &out);
    void write_row(Value value, Buffer &out);
    std::string text_of(Value value);
    std::string hex_of(Value value);
    std::string column(const std::string &name, Value value, std::span<const NamedValue> fields);

    Session &session_;
    const SYSDT_Record &type_;
    const Format format_;
    host::Converter converter_;
    ByteOrder order_;
    ValueFields fields_;
    std::optional<JsonLines> lines_;
    Bytes filled_;
    Bytes changed_; ///< in another notation
    std::vector<std::string> columns_;
    std::uint32_t status_ = 0;
};

} // namespace bgpdt::toolkit
