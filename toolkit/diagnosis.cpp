// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "diagnosis.hpp"

#include <algorithm>
#include <string>

#include "asking.hpp"
#include "other_types.hpp"
#include "samples.hpp"
#include "suspicions.hpp"

namespace bgpdt::toolkit {

std::optional<Diagnosis> diagnose(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    if (text.find_first_not_of(blanks) == std::string_view::npos)
        return {};
    Asking asking(session, type, mode, most_tries);
    Refused refused{asking, std::string(text)};
    suspect(refused);
    if (!refused.best)
        return {};
    for (const Kind &kind : asking.kinds())
        if (refused.near_kinds.contains(kind.number))
            refused.best->kinds.push_back(kind.name);
    if (refused.best->repair.empty() || refused.best->change != Change::spelling)
        refused.best->types = types_that_take(session, text);
    if (refused.best->change == Change::value && !refused.best->types->empty())
        refused.best->repair.clear(); // what was meant is another type's
    return refused.best;
}

bool takes_samples(Session &session, const SYSDT_Record &type, std::uint8_t mode)
{
    const auto takes = [&](const std::string &text) { return session.parse(type, text, mode).ok(); };
    return std::ranges::any_of(sample_of(type.typeId).texts,
                               [&takes](const std::string &text) { return takes(text) || takes('"' + text + '"'); });
}

} // namespace bgpdt::toolkit
