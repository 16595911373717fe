// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a type can do, in words.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "session.hpp"

namespace bgpdt::toolkit {

/// The texts that the type gives for its input; none when it has no help.
std::vector<std::string> help_texts(Session &session, const SYSDT_Record &type);
/// The words that all fronts use for the operations.
std::span<const char *const> operation_words();
/// The operations whose slots are filled: bit i for word i.
unsigned operation_bits(const SYSDT_Record &type);
/// Those, by their words.
std::vector<std::string> operations(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
