// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands about types: what there are, and what they take.
#pragma once

#include "answer.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

Answer types(toolkit::Session &session, const Options &options);
Answer describe(toolkit::Session &session, const Options &options);

} // namespace bgpdt::tool
