// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "other_types.hpp"

#include <algorithm>
#include <new>

#include "bgp_datatype/values.h"
#include "reasons.hpp"
#include "samples.hpp"
#include "text_pieces.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

/// Those that people mean most often stand first, those that take many forms or lists of them last.
constexpr std::uint16_t by_likelihood[] = {
    SYSDT_TYPE_ASNUM,         SYSDT_TYPE_COMMUNITY,     SYSDT_TYPE_LARGECOMMUNITY,
    SYSDT_TYPE_VRFRD,         SYSDT_TYPE_VRFRT,         SYSDT_TYPE_EXTCOMMUNITY,
    SYSDT_TYPE_SOO,           SYSDT_TYPE_VRFRTV6,       SYSDT_TYPE_EVNPREFIX,
    SYSDT_TYPE_VPNV4MCPREFIX, SYSDT_TYPE_MDTPREFIX,     SYSDT_TYPE_BGPLSPREFIX,
    SYSDT_TYPE_TIME_RANGE,    SYSDT_TYPE_RTPRD,         SYSDT_TYPE_VPNID,
    SYSDT_TYPE_BOLRD,         SYSDT_TYPE_BOLPREFIX,     SYSDT_TYPE_ASNUMEXT,
    SYSDT_TYPE_ASNUM_ENHANCE, SYSDT_TYPE_CMNTY_ENHANCE,
};

/// Numbers that are decimal as well are hexadecimal ones, but nobody means them.
bool is_unlikely(std::uint16_t type_id, std::string_view text)
{
    return type_id == SYSDT_TYPE_VPNID && std::ranges::none_of(text.substr(0, text.find(':')), is_letter);
}

} // namespace

std::vector<TypeName> types_that_take(Session &session, std::string_view text)
{
    std::vector<TypeName> types;
    std::string room; // of all: a long text's own memory, again and again, would take longer than to read it
    for (const std::uint16_t id : by_likelihood) {
        const auto all = session.host().types();
        const auto type = std::ranges::find(all, id, &SYSDT_Record::typeId);
        if (type == all.end() || is_unlikely(id, text))
            continue;
        room = text;
        host::Converter converter(**type, session.mode_for(**type));
        const host::Delivery delivery = converter.parse(room);
        if (delivery.status == SYSDT_ERR_NO_MEMORY)
            throw std::bad_alloc();
        if (delivery.ok() && !delivery.data.empty())
            types.push_back({name_of(**type), sample_of(id).about});
    }
    return types;
}

std::string types_sentence(std::span<const TypeName> types)
{
    constexpr std::size_t most_named = 3;
    if (types.empty())
        return {};
    Texts words;
    for (const TypeName &type : types.first(std::min(types.size(), most_named)))
        words.push_back(type.name + " (" + type.about + ")");
    if (types.size() > most_named)
        words.push_back(counted(types.size() - most_named, "more type"));
    return "it is a text of " + listed(words, "and");
}

} // namespace bgpdt::toolkit
