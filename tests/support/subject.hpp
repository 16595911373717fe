// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a vector line is about: a registered record's callbacks, or a dispatch row's.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "bgp_datatype/host.h"
#include "byte_order.hpp"
#include "expectations.hpp"
#include "vector_file.hpp"

namespace bgpdt::host {
class Host;
}

namespace bgpdt::test {

struct Subject {
    std::string name;
    std::uint16_t kind = 0;                ///< the type id
    std::uint16_t length = 0;              ///< the registered size
    std::optional<std::uint32_t> sub_kind; ///< a row's number
    Expectation expect{};

    SYSDT_FormatIn *format_in = nullptr;
    SYSDT_FormatOut *format_out = nullptr;
    SYSDT_Check *check = nullptr;
    SYSDT_Help *help = nullptr;
    SYSDT_Compare *compare = nullptr;
    SYSDT_LuaSet *lua_set = nullptr;
    SYSDT_LuaGet *lua_get = nullptr;
    SYSDT_Endian *endian = nullptr;
    std::function<void *(const char *)> symbol;
    std::span<const SYSDT_DispatchRow> rows; ///< to which a type dispatches

    /// The least length for the script callbacks.
    std::size_t script_size() const { return expect.script_size != 0 ? expect.script_size : length; }
    Reported reports(const Line &line) const { return line.reports.value_or(Reported{kind, length}); }
    Form form() const;
    /// Whether there is the callback that the line is about.
    bool answers_to(const Line &line) const;
    /// What an exported parser filled: the value or, behind a row, the key without its sub-kind.
    Bytes parsed_to_target(Bytes value) const;
    /// The row that answers for a big-endian value: the subject's own, or the one that it dispatches to.
    const Expectation &answering(const Bytes &value) const;
    /// What becomes of a row's failure.
    std::uint32_t passed_on(std::uint32_t status) const;
};

/// The rows that a type dispatches to; none for one that does not dispatch.
std::span<const SYSDT_DispatchRow> dispatch_rows(const host::Host &host, std::string_view type);

/// The subject of the line.
/// @throws std::runtime_error if there is no such type or row, or nothing is known of how it keeps the contract
Subject subject_of(const host::Host &host, const Line &line);

} // namespace bgpdt::test
