// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is measured: passes over a corpus, by name.
#pragma once

#include <memory>
#include <stdexcept>

#include "host/host.hpp"
#include "kind.hpp"

namespace bgpdt::bench {

/// One column of one direction of one kind.
struct Case {
    std::string name; ///< "kind/direction/column/shape"
    std::function<void()> pass;
    std::size_t conversions; ///< that a pass makes
    std::function<void()> prepare = {};
};
using Cases = std::vector<Case>;

[[noreturn]] inline void fail(const std::string &what) { throw std::runtime_error(what); }

u64 seed_of(const std::string &name);
SYSDT_Context context_of(u8 mode);

/// The callbacks that a kind is about: of a record or of a row, and of the record that dispatches to the row.
struct Subject {
    const SYSDT_Record *type = nullptr;
    const SYSDT_DispatchRow *row = nullptr;

    Converter own() const
    {
        return row != nullptr ? Converter{row->formatIn, row->formatOut} : Converter{type->formatIn, type->formatOut};
    }
    Converter dispatcher() const { return row != nullptr ? Converter{type->formatIn, type->formatOut} : Converter{}; }
    SYSDT_LuaSet *script_set() const { return row != nullptr ? row->luaSet : type->luaSet; }
};
Subject subject_of(const host::Host &host, const std::string &name);

/// Every kind in every column, over corpora of so many texts and values.
Cases cases_of_kinds(const host::Host &host, std::size_t size);
/// The host's text and memory services against the C library's.
void add_host_cases(Cases &cases, std::size_t size);
/// Script set and get of values against the same work on bare Lua tables.
void add_script_cases(Cases &cases, const Subject &subject, const std::string &name, const std::vector<Bytes> &values);
/// Texts that no row of the route keys takes.
void add_refused_cases(Cases &cases, const host::Host &host, std::size_t size);
/// What the vectors say that is parsed and printed.
void add_vector_cases(Cases &cases, const host::Host &host);

/// Prints how the cost grows with the length, and what the longest inputs of every type cost.
void print_growth(const host::Host &host);

} // namespace bgpdt::bench
