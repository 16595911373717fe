// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Suspicions of notations that other programs, and people, have for the same values. Each finds nothing but what the
/// type takes when it is written as here.
#pragma once

#include "asking.hpp"

namespace bgpdt::toolkit {

/// One that comes along when a text is copied.
Found invisible_character(Refused &refused);
/// A name where only a number can stand as long as no names are given.
Found unknown_name(Refused &refused);
/// What it is said in front of a text: "RT:", "AS".
Found label(Refused &refused);
/// A name that is known elsewhere for a number.
Found number_of_name(Refused &refused);
/// Commas and brackets of a list.
Found list_separators(Refused &refused);
Found too_many_entries(Refused &refused);
/// Round and other brackets for square ones.
Found other_brackets(Refused &refused);
/// "[2]:[0]:[48]:[00:00:5e:00:53:01]:[32]:[192.0.2.1]", as other programs show the routes of EVPN.
Found route_in_brackets(Refused &refused);
Found hexadecimal_number(Refused &refused);
Found number_with_exponent(Refused &refused);
/// "65,536"
Found grouped_digits(Refused &refused);
/// "%eth0" behind an address.
Found zone(Refused &refused);
/// "255.255.255.0" for the length of a prefix.
Found network_mask(Refused &refused);
/// "00:02:fb:f0": bytes, where a text is wanted.
Found octets(Refused &refused);
/// A duration in other units than all four, or as clocks show it.
Found duration(Refused &refused);
/// One separator in the place of another, more than once or where it could separate other parts.
Found other_separators(Refused &refused);

} // namespace bgpdt::toolkit
