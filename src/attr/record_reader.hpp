// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads the display record that an attribute bitmap is listed from, entry by entry.
#pragma once

#include <cstring>
#include <string_view>

#include "bgp_datatype/values.h"
#include "common/bytes.hpp"

namespace bgpdt::attr {

/// What entries hold.
enum Kind : u16 {
    number8 = 2,
    number16 = 4,
    number32 = SYSDT_KIND_BINARY,
    ipv4_address = 21,
    ipv6_address = 22,
    text = SYSDT_KIND_STRING,
    either_address = 38, ///< SYSDT_EvpnAddress
};

struct Entry {
    u32 kind;
    u32 length;
    const u8 *data;

    /// Up to its NUL or the entry's end.
    std::string_view text() const
    {
        const char *const characters = reinterpret_cast<const char *>(data);
        return {characters, strnlen(characters, length)};
    }
};

/// The entries of a display record of so many bytes, one after the other.
class Entries {
public:
    Entries(const void *record, std::size_t size) : record_(static_cast<const u8 *>(record)), size_(size)
    {
        if (size_ >= count_offset + sizeof(u16))
            left_ = load<u16>(record_ + count_offset);
    }

    u32 left() const { return left_; }

    /// The next of the entries left; false if it does not lie inside the record.
    bool next(Entry &entry)
    {
        if (!has(2 * sizeof(u16)))
            return false;
        entry.kind = load<u16>(record_ + at_);
        entry.length = load<u16>(record_ + at_ + sizeof(u16));
        at_ += 2 * sizeof(u16);
        if (!has(entry.length))
            return false;
        entry.data = record_ + at_;
        at_ += entry.length;
        --left_;
        return true;
    }

private:
    static constexpr std::size_t count_offset = 24;
    static constexpr std::size_t first_entry = 44;

    bool has(std::size_t bytes) const { return size_ >= at_ && size_ - at_ >= bytes; }

    const u8 *record_;
    std::size_t size_;
    std::size_t at_ = first_entry;
    u32 left_ = 0;
};

} // namespace bgpdt::attr
