// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "exports.hpp"

namespace bgpdt::grammar {
namespace {

std::string printed_beside_canonical(const Grammar &grammar)
{
    std::string words =
        "What is `canonical` prints as it is; any other text prints as one of these, which reads as the "
        "same value";
    if (grammar.has("printed"))
        words += ", or as `printed`, which does not";
    if (grammar.has("lossy"))
        words += ". A text of `lossy` prints as what reads as another value, or not at all";
    return words + '.';
}

std::string printed_alone(const Grammar &grammar)
{
    std::string words = grammar.has("text") ? "No text prints as it is: values print as `printed`"
                                            : "No text gives a value; values print as `printed`";
    if (grammar.has("lossy"))
        words += ", and more than one value as the same text";
    return words + '.';
}

} // namespace

std::string printing(const Grammar &grammar)
{
    if (!grammar.prints)
        return "Values do not print.";
    return grammar.has("canonical") ? printed_beside_canonical(grammar) : printed_alone(grammar);
}

} // namespace bgpdt::grammar
