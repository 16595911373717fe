// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "expression.hpp"

namespace bgpdt::grammar {

/// The name by which grammars mean it.
inline constexpr const char *printed_ipv6_name = "ipv6-printed";

/// IPv6 addresses as they print: RFC 5952, with a dotted tail in IPv4-mapped and IPv4-compatible ones.
Expression printed_ipv6();

} // namespace bgpdt::grammar
