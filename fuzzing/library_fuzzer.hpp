// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// One input of the library's fuzzer, taken apart, and the memory that functions are lent.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "bgpdt/bgpdt.hpp"
#include "library_input.hpp"
#include "property.hpp"

namespace bgpdt::fuzzing {

using Bytes = std::span<const std::uint8_t>;

/// The four bytes in front of the payload.
constexpr std::size_t library_header = 4;

struct LibraryCase {
    const bgpdt_library *library;
    const bgpdt_type *type; ///< in the mode
    Function function;
    std::uint8_t flags;
    Bytes payload;

    bool has(LibraryFlag flag) const { return (flags & flag) != 0; }
    std::size_t size() const { return bgpdt_about(type)->value_size; }
};

inline std::string_view text_of(Bytes bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }

/// The first of the bytes, which are then without them; fewer if there are fewer.
inline Bytes taken(Bytes &bytes, std::size_t size)
{
    const Bytes front = bytes.first(std::min(size, bytes.size()));
    bytes = bytes.subspan(front.size());
    return front;
}

/// Bytes with the sanitizer's guard right behind them.
class Room {
public:
    explicit Room(std::size_t size, std::uint8_t fill = 0xa5) : bytes_(new std::uint8_t[size]), size_(size)
    {
        std::fill_n(bytes_.get(), size, fill);
    }
    explicit Room(Bytes content) : Room(content.size()) { std::ranges::copy(content, bytes_.get()); }

    std::uint8_t *data() { return bytes_.get(); }
    char *text() { return reinterpret_cast<char *>(bytes_.get()); }
    std::size_t size() const { return size_; }
    Bytes bytes() const { return {bytes_.get(), size_}; }
    bool operator==(const Room &other) const { return std::ranges::equal(bytes(), other.bytes()); }

private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_;
};

/// As many bytes as the type's values have, or as the flag makes of it.
Room value_of(const LibraryCase &input, Bytes bytes);

/// An error is there exactly if nothing was done, and its texts are texts.
/// @param text_size  of what was refused
void require_told(int code, const Error &error, std::size_t text_size = 0);

void fuzz_parse_many(const LibraryCase &input);
void fuzz_print_many(const LibraryCase &input);

} // namespace bgpdt::fuzzing
