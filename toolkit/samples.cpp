// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <string_view>

#include "bgp_datatype/values.h"

namespace bgpdt::toolkit {
namespace {

std::vector<std::string> lines_of(std::string_view texts)
{
    std::vector<std::string> lines;
    while (!texts.empty()) {
        const std::size_t end = std::min(texts.find('\n'), texts.size());
        lines.emplace_back(texts.substr(0, end));
        texts.remove_prefix(std::min(end + 1, texts.size()));
    }
    return lines;
}

std::vector<KindSample> kinds_of(std::uint16_t type_id)
{
#define BGPDT_BOL(kind, name, layout, reader, about, texts, slots) {SYSDT_BOL_##kind, about, lines_of(texts)},
#define BGPDT_BOLRD(kind, name, about, texts, slots) {SYSDT_BOLRD_##kind, about, lines_of(texts)},
    switch (type_id) {
    case SYSDT_TYPE_BOLPREFIX: return {SYSDT_BOL_ROWS(BGPDT_BOL, )};
    case SYSDT_TYPE_BOLRD: return {SYSDT_BOLRD_ROWS(BGPDT_BOLRD, )};
    default: return {};
    }
#undef BGPDT_BOL
#undef BGPDT_BOLRD
}

std::vector<std::string> community_words() { return {"internet", "no-export", "no-advertise", "no-export-subconfed"}; }

std::vector<std::string> ls_words()
{
    return {"NODE",         "LINK",
            "IPV4-PREFIX",  "IPV6-PREFIX",
            "TEPOLICY",     "SRV6-SID",
            "ISIS-LEVEL-1", "ISIS-LEVEL-2",
            "OSPFv2",       "OSPFv3",
            "DIRECT",       "STATIC",
            "BGP",          "SEGMENT-ROUTING",
            "IDENTIFIER",   "LOCAL",
            "REMOTE",       "PREFIX",
            "TE",           "SID",
            "as",           "member-as",
            "identifier",   "bgp-ls-identifier",
            "ospf-area-id", "bgp-router-id",
            "local",        "igp-router-id",
            "remote",       "ipv4-router-id",
            "if-address",   "ipv6-router-id",
            "peer-address", "link-local-id",
            "mt-id",        "link-remote-id",
            "prefix",       "ospf-route-type",
            "Flag",         "protocol-origin",
            "endpoint",     "originator-as",
            "color",        "originator-address",
            "sid",          "discriminator"};
}

std::vector<std::string> words_of(std::uint16_t type_id)
{
    switch (type_id) {
    case SYSDT_TYPE_COMMUNITY:
    case SYSDT_TYPE_CMNTY_ENHANCE: return community_words();
    case SYSDT_TYPE_BGPLSPREFIX: return ls_words();
    default: return {};
    }
}

Sample sample(std::uint16_t type_id, const char *about, const char *grammar, std::string_view texts)
{
    Sample sample{about, grammar, lines_of(texts), words_of(type_id), kinds_of(type_id)};
    for (const KindSample &of_kind : sample.kinds)
        sample.texts.insert(sample.texts.end(), of_kind.texts.begin(), of_kind.texts.end());
    return sample;
}

} // namespace

KindSample Sample::of_kind(std::uint32_t kind) const
{
    const auto found = std::ranges::find(kinds, kind, &KindSample::kind);
    return found == kinds.end() ? KindSample{kind, {}, {}} : *found;
}

bool is_name_index(std::uint16_t type_id)
{
#define BGPDT_ID(name, id, about) id,
    constexpr std::uint16_t ids[] = {SYSDT_NAME_INDEX_TYPES(BGPDT_ID)};
#undef BGPDT_ID
    return std::ranges::find(ids, type_id) != std::end(ids);
}

Sample sample_of(std::uint16_t type_id)
{
#define BGPDT_TYPE(name, id, kind, size, layout, about, grammar, texts, slots)                                         \
    if (type_id == SYSDT_TYPE_##name)                                                                                  \
        return sample(type_id, about, grammar, texts);

    SYSDT_EXTEND_TYPES(BGPDT_TYPE, )
#define BGPDT_INDEX(name, id, about)                                                                                   \
    if (type_id == SYSDT_TYPE_##name)                                                                                  \
        return sample(type_id, about, "a number up to 4294967295, or its name in a names file", "7");

    SYSDT_NAME_INDEX_TYPES(BGPDT_INDEX)
    return {};
#undef BGPDT_TYPE
#undef BGPDT_INDEX
}

} // namespace bgpdt::toolkit
