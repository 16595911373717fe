// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands about single values.
#pragma once

#include "answer.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

Answer parse(toolkit::Session &session, const Options &options);
Answer print(toolkit::Session &session, const Options &options);
Answer check(toolkit::Session &session, const Options &options);
Answer canon(toolkit::Session &session, const Options &options);
Answer compare(toolkit::Session &session, const Options &options);
Answer diff(toolkit::Session &session, const Options &options);
Answer swap_bytes(toolkit::Session &session, const Options &options);
Answer table(toolkit::Session &session, const Options &options);
Answer explain(toolkit::Session &session, const Options &options);

} // namespace bgpdt::tool
