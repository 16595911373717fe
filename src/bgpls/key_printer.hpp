// SPDX-License-Identifier: Apache-2.0
/// @file
/// The printed form of a BGP-LS key.
#pragma once

#include "bgp_datatype/values.h"
#include "common/writer.hpp"

namespace bgpdt {

inline constexpr u16 key_text_size = 513; ///< of the longest text, its NUL included

/// Prints a key by the low 8 bits of its route type; nothing for a type that has no form.
void print_key(const SYSDT_LsPrefix &key, Writer &out);

} // namespace bgpdt
