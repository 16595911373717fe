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
#include <utility>
#include <vector>

#include "buffer.hpp"

namespace bgpdt::toolkit {

/// A value that is JSON already.
struct JsonText {
    std::string text = "null";
};

/// Appends the text as a string. Control characters are escaped, DEL and those of C1 too, which terminals obey; a byte
/// that is no UTF-8, or the beginning of a character that breaks off, becomes U+FFFD.
void append_json(Buffer &out, std::string_view text);

inline void append_json(Buffer &out, const JsonText &value) { out.append(value.text); }

/// JSON that stands elsewhere.
struct JsonView {
    std::string_view text;
};

inline void append_json(Buffer &out, JsonView value) { out.append(value.text); }

template <std::integral Number>
void append_json(Buffer &out, Number number)
{
    if constexpr (std::same_as<Number, bool>) {
        out.append(number ? "true" : "false");
    } else {
        constexpr std::size_t longest = 20;
        char *const to = out.room(longest);
        out.grown(static_cast<std::size_t>(std::to_chars(to, to + longest, number).ptr - to));
    }
}

/// An array.
template <class Value>
void append_json(Buffer &out, const std::vector<Value> &values)
{
    char before = '[';
    for (const Value &value : values) {
        out.append(before);
        append_json(out, value);
        before = ',';
    }
    out.append(values.empty() ? "[]" : "]");
}

template <class Value>
std::string to_json(const Value &value)
{
    Buffer text;
    append_json(text, value);
    return std::string(text.text());
}

/// An object that members are added to, each of a name of its own.
class JsonObject {
public:
    JsonObject() = default;
    /// @param room  what is there no more, whose memory serves for this one
    explicit JsonObject(Buffer room) : text_(std::move(room)) { text_.clear(); }

    template <class Value>
    JsonObject &add(std::string_view name, const Value &value)
    {
        text_.append(empty() ? '{' : ',');
        append_json(text_, name);
        text_.append(':');
        append_json(text_, value);
        return *this;
    }
    /// No member for what there is not.
    JsonObject &add_some(std::string_view name, std::string_view text)
    {
        return text.empty() ? *this : add(name, text);
    }

    bool empty() const { return text_.size() == 0; }
    std::string text() const { return to_json(*this); }
    /// The text, which is then no longer here.
    Buffer taken()
    {
        text_.append(empty() ? "{}" : "}");
        return std::move(text_);
    }

    friend void append_json(Buffer &out, const JsonObject &object)
    {
        out.append(object.empty() ? "{" : object.text_.text());
        out.append('}');
    }

private:
    Buffer text_; ///< without the end
};

} // namespace bgpdt::toolkit
