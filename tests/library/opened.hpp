// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The library with the built plug-in, as the tests ask it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bgpdt/bgpdt.hpp"

namespace bgpdt::test {

using Bytes = std::vector<std::uint8_t>;

inline std::string string_of(bgpdt_text text) { return {text.data, text.size}; }

/// The opened library.
class Library {
public:
    Library()
    {
        if (bgpdt_open(nullptr, &library_, nullptr) != BGPDT_OK)
            throw std::runtime_error("the library cannot be opened");
    }
    ~Library() { bgpdt_close(library_); }
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    bgpdt_library *get() const { return library_; }
    const bgpdt_type *type(std::string_view name) const
    {
        const bgpdt_type *type = nullptr;
        bgpdt_find(library_, name.data(), name.size(), &type, nullptr);
        return type;
    }

private:
    bgpdt_library *library_ = nullptr;
};

inline std::size_t size_of(const bgpdt_type *type) { return bgpdt_about(type)->value_size; }

/// Empty for a text that is refused.
inline Bytes parsed(const bgpdt_type *type, std::string_view text)
{
    Bytes value(size_of(type));
    if (bgpdt_parse(type, text.data(), text.size(), value.data(), value.size(), nullptr) != BGPDT_OK)
        value.clear();
    return value;
}

/// What went wrong, in place of a text.
inline std::string printed(const bgpdt_type *type, const Bytes &value)
{
    std::string text(BGPDT_TEXT_ROOM, '\0');
    std::size_t size = 0;
    const int code = bgpdt_print(type, value.data(), value.size(), text.data(), text.size(), &size, nullptr);
    return code == BGPDT_OK ? text.substr(0, size) : "code " + std::to_string(code);
}

} // namespace bgpdt::test
