// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a type can do, in words.
#pragma once

#include <string>
#include <vector>

#include "session.hpp"

namespace bgpdt::toolkit {

/// The texts that the type gives for its input; none when it has no help.
std::vector<std::string> help_texts(Session &session, const SYSDT_Record &type);
/// The operations whose slots are filled, by the words that all fronts use for them.
std::vector<std::string> operations(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
