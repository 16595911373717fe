// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values on their way between their two byte orders, text on its way to a type, without memory taken for them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

#include "library.hpp"
#include "toolkit/bytes.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/room.hpp"

namespace bgpdt::library {

using Value = std::span<const std::uint8_t>;

using Room = toolkit::Room<BGPDT_VALUE_ROOM>;

/// A value in the machine's order.
class NativeValue {
public:
    NativeValue(const bgpdt_type &type, const std::uint8_t *value) : room_(type.size), size_(type.size)
    {
        std::memcpy(room_.data(), value, size_);
        toolkit::turn_to_native(type.record, bytes());
    }
    std::span<std::uint8_t> bytes() { return {room_.data(), size_}; }

private:
    Room room_;
    const std::size_t size_;
};

/// Parses texts, in one thread at a time.
class Parser {
public:
    explicit Parser(const bgpdt_type &type) : type_(type), converter_(type.record, type.mode) {}

    /// Writes the value, in the target's order, of a text that has a NUL behind it and may be changed. Answers a code.
    int parse(std::span<char> text, std::uint8_t *value)
    {
        const host::Delivery delivery = converter_.parse(text);
        const std::size_t given = delivery.data.size();
        if (given - 1 >= type_.size) // a refused text delivers nothing
            return code_of(delivery);
        std::memcpy(value, delivery.data.data(), given);
        std::memset(value + given, 0, type_.size - given); // behind a string
        toolkit::turn_to_target(type_.record, {value, type_.size});
        return BGPDT_OK;
    }

private:
    static int code_of(const host::Delivery &delivery)
    {
        if (delivery.status == SYSDT_ERR_NO_MEMORY)
            return BGPDT_NO_MEMORY;
        return delivery.ok() && delivery.data.empty() ? BGPDT_NO_TEXT : BGPDT_REFUSED;
    }

    const bgpdt_type &type_;
    host::Converter converter_;
};

/// Prints values, in one thread at a time.
class Printer {
public:
    explicit Printer(const bgpdt_type &type) : type_(type), converter_(type.record, type.mode), room_(type.size)
    {
        if (type.record.typeId == SYSDT_TYPE_ATTRIDBITMAP)
            record_ = toolkit::printable(type.record, toolkit::Bytes(type.size));
    }

    /// @param value  in the target's order
    host::Delivery print(const std::uint8_t *value)
    {
        // A display record ends with its bitmap.
        std::uint8_t *const bytes = record_.empty() ? room_.data() : record_.data() + record_.size() - type_.size;
        std::memcpy(bytes, value, type_.size);
        toolkit::turn_to_native(type_.record, {bytes, type_.size});
        return converter_.print(record_.empty() ? Value(bytes, type_.size) : Value(record_));
    }

private:
    const bgpdt_type &type_;
    host::Converter converter_;
    Room room_;
    toolkit::Bytes record_; ///< around a bitmap
};

inline bool holds_nul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

} // namespace bgpdt::library
