// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why a type refuses a text. A type answers a status alone; the reason is found by asking it about texts near the
/// refused one: written as the type writes what others write in another way, with a number made smaller, a character
/// replaced, something cut or completed as in the type's samples. So it can't disagree with the type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "errors.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// How often a diagnosis asks the type at most; less often about long texts.
inline constexpr std::size_t most_tries = 5000;

/// What is wrong with a text, the nearest one that the type takes, and the types that take it as it stands; none if
/// nothing is known but that it is refused.
std::optional<Diagnosis> diagnose(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode);

/// Whether the type takes any of its samples in the mode.
bool takes_samples(Session &session, const SYSDT_Record &type, std::uint8_t mode);

} // namespace bgpdt::toolkit
