// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is known of types, as tuples with names.
#pragma once

#include "state.hpp"

namespace bgpdt::python {

/// The classes of the tuples.
Ref new_form_class();
Ref new_kind_class();
Ref new_type_info_class();

/// What is known of the type.
Ref about(const Type &type);

} // namespace bgpdt::python
