// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// One input of the records' fuzzer, taken apart.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "exceptions.hpp"
#include "input.hpp"
#include "memory.hpp"
#include "property.hpp"
#include "support/conversion.hpp"

namespace bgpdt::fuzzing {

using Bytes = std::span<const std::uint8_t>;

/// What the blocks that the plug-in takes are filled with, in turn: an answer that depends on it is none.
constexpr std::uint8_t fills[] = {0xA5, 0x5A};

struct Case {
    const test::Subject &subject;
    Operation operation;
    std::uint8_t mode;
    std::uint8_t flags;
    Bytes payload;

    bool has(Flag flag) const { return (flags & flag) != 0; }
    Failing failing() const { return {static_cast<std::size_t>(flags & failing_request), has(failing_onward)}; }
    std::string_view text() const { return {reinterpret_cast<const char *>(payload.data()), payload.size()}; }
};

inline Memory &memory() { return Memory::instance(); }

/// Whether it is one of the documented status codes.
bool is_status(std::uint32_t status);

/// What a conversion answered.
struct Answer {
    std::uint32_t status;
    std::uint16_t kind;
    std::uint16_t length;
    void *data;
    Bytes delivered{}; ///< the delivered block's reported bytes

    bool untouched() const
    {
        return kind == test::Outputs::untouched_kind && length == test::Outputs::untouched_length;
    }
    bool ok() const { return status == SYSDT_OK; }
    bool same_as(const Answer &other) const;
    std::string_view text() const;
};

/// FormatIn and what it must keep to whatever the text; the block that it delivers is collected.
Answer parse(const test::Subject &subject, std::string_view text, std::uint8_t mode, bool odd = false);
/// FormatOut likewise, told that the value has so many bytes, into a block of the caller's or one of its own.
Answer print(const test::Subject &subject, Bytes value, std::size_t told, std::uint8_t mode, bool lent,
             bool odd = false);

void fuzz_parse(const Case &input);
void fuzz_print(const Case &input);
void fuzz_check(const Case &input);
void fuzz_help(const Case &input);
void fuzz_compare(const Case &input);
void fuzz_set(const Case &input);
void fuzz_get(const Case &input);
void fuzz_swap(const Case &input);

/// A script reader of the read table.
void fuzz_read(const Case &input, SYSDT_ScriptReader *reader);

} // namespace bgpdt::fuzzing
