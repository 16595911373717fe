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

/// What is written in place.
template <std::invocable<Buffer &> Write>
void append_json(Buffer &out, const Write &write)
{
    write(out);
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
    /// @param before  what stands in front of it
    explicit JsonObject(Buffer before) : text_(std::move(before)), begin_(text_.size()) {}

    template <class Value>
    JsonObject &add(std::string_view name, const Value &value)
    {
        text_.append(empty() ? '{' : ',');
        append_json(text_, name);
        text_.append(':');
        append_json(text_, value);
        return *this;
    }
    /// No member where nothing is written in place: `write` tells, and has then written nothing.
    template <std::predicate<Buffer &> Write>
    JsonObject &add_some(std::string_view name, const Write &write)
    {
        const std::size_t before = text_.size();
        bool written = false;
        add(name, [&](Buffer &out) { written = write(out); });
        if (!written)
            text_.cut(before);
        return *this;
    }
    /// No member for what there is not.
    JsonObject &add_some(std::string_view name, std::string_view text)
    {
        return text.empty() ? *this : add(name, text);
    }

    bool empty() const { return text_.size() == begin_; }
    std::string text() const { return to_json(*this); }
    /// What stands in front of it and the text, which are then no longer here.
    Buffer taken()
    {
        text_.append(empty() ? "{}" : "}");
        return std::move(text_);
    }

    friend void append_json(Buffer &out, const JsonObject &object)
    {
        out.append(object.empty() ? "{" : object.text_.text().substr(object.begin_));
        out.append('}');
    }

private:
    Buffer text_; ///< without the end
    std::size_t begin_ = 0;
};

} // namespace bgpdt::toolkit
