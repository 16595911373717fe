// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON as it is written: text from the start, on one line, with its members in the order in which they are added.
/// There is no tree of it, whose destruction would take memory: where that is out, nothing but the writing fails.
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt::toolkit {

/// A value that is JSON already.
struct JsonText {
    std::string text = "null";
};

/// Appends the text as a string. Control characters are escaped, DEL and those of C1 too, which terminals obey; a byte
/// that is no UTF-8, or the beginning of a character that breaks off, becomes U+FFFD.
void append_json(std::string &out, std::string_view text);

inline void append_json(std::string &out, const JsonText &value) { out += value.text; }

template <std::integral Number>
void append_json(std::string &out, Number number)
{
    if constexpr (std::same_as<Number, bool>) {
        out += number ? "true" : "false";
    } else {
        char written[24];
        out.append(written, std::to_chars(written, written + sizeof written, number).ptr);
    }
}

/// An array.
template <class Value>
void append_json(std::string &out, const std::vector<Value> &values)
{
    char before = '[';
    for (const Value &value : values) {
        out += before;
        append_json(out, value);
        before = ',';
    }
    out += values.empty() ? "[]" : "]";
}

/// An object that members are added to, each of a name of its own.
class JsonObject {
public:
    template <class Value>
    JsonObject &add(std::string_view name, const Value &value)
    {
        text_ += empty() ? '{' : ',';
        append_json(text_, name);
        text_ += ':';
        append_json(text_, value);
        return *this;
    }
    /// No member for what there is not.
    JsonObject &add_some(std::string_view name, std::string_view text)
    {
        return text.empty() ? *this : add(name, text);
    }

    bool empty() const { return text_.empty(); }
    std::string text() const { return empty() ? "{}" : text_ + "}"; }

private:
    std::string text_; ///< without the end
};

inline void append_json(std::string &out, const JsonObject &object) { out += object.text(); }

} // namespace bgpdt::toolkit
