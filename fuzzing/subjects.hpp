// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is fuzzed: every registered record, every row of the dispatch tables, and the parsers exported beside them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "support/subject.hpp"

namespace bgpdt::fuzzing {

/// The records in the order of their registration, then the rows.
std::vector<test::Subject> all_subjects(const host::Host &host);

/// A parser that is exported by itself.
struct Parser {
    using Plain = std::uint32_t(char *text, void *value);
    using Lenient = std::uint32_t(char *text, void *value, std::uint32_t lenient);

    const char *name;
    std::size_t size; ///< of the value that it fills
    bool lenient = false;
    void *function = nullptr;

    std::uint32_t operator()(char *text, void *value) const;
};

std::vector<Parser> all_parsers(const host::Host &host);

/// The row that answers for a value in the processor's order, as Subject::answering.
const test::Expectation &answering(const test::Subject &subject, std::span<const std::uint8_t> value);

} // namespace bgpdt::fuzzing
