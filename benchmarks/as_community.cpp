// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// AS numbers and communities: ASNUM, ASNUM_ENHANCE, COMMUNITY, CMNTY_ENHANCE, LARGECOMMUNITY, EXTCOMMUNITY(_BW).
#include "as_number.hpp"
#include "octets.hpp"

namespace bgpdt::bench {
namespace {

// ------------------------------------------------------------------------------------------------ AS numbers

bool floor_parse_as(char *text, SYSDT_AsNum &out)
{
    const char *at = SYSDT_BTrim(text);
    return floor_as(at, out) && *at == '\0';
}

char *floor_print_as(const SYSDT_AsNum &value, char *out)
{
    return value.asNumValue == 0 ? out : put_as(out, value.asNumValue, value.asType);
}

bool floor_parse_as_list(char *text, SYSDT_AsNumList &out)
{
    const char *at = SYSDT_BTrim(text);
    for (SYSDT_AsNumEntry &entry : out.entry) {
        if (!floor_as(at, entry))
            return false;
        if (*at == '\0')
            return true;
        if (*at != ' ')
            return false;
        while (*at == ' ')
            ++at;
    }
    return false;
}

char *floor_print_as_list(const SYSDT_AsNumList &value, char *out)
{
    const char *const start = out;
    for (const SYSDT_AsNumEntry &entry : value.entry) {
        if (entry.asNumValue == 0)
            continue;
        if (out != start)
            out = put(out, ' ');
        out = put_as(out, entry.asNumValue, entry.asType);
    }
    return out;
}

template <class Entry>
bool port_token(const char *text, Entry &out, const port::Counts &counts)
{
    unsigned high = 0;
    unsigned long long low = 0;
    if (counts.dots == 0) {
        if (std::sscanf(text, "%llu", &low) != 1 || low == 0 || low > UINT32_MAX)
            return false;
        out.asNumValue = static_cast<u32>(low);
        out.asType = 0;
        return true;
    }
    if (counts.dots != 1 || std::sscanf(text, "%u.%llu", &high, &low) != 2 || high == 0)
        return false;
    if (high > 65535 || low > 65535)
        return false;
    out.asNumValue = high << 16 | static_cast<u32>(low);
    out.asType = 1;
    return true;
}

template <class Take>
bool port_tokens(const char *text, std::size_t longest, std::size_t most, Take token)
{
    std::size_t entry = 0;
    while (*text != '\0') {
        const std::size_t length = std::strcspn(text, " ");
        if (length != 0) {
            char copy[32];
            if (length > longest || entry == most)
                return false;
            std::memcpy(copy, text, length);
            copy[length] = '\0';
            if (!token(copy, entry++))
                return false;
        }
        text += length + (text[length] == ' ' ? 1 : 0);
    }
    return true;
}

bool port_parse_as_list(char *text, SYSDT_AsNumList &out)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    return length >= 1 && length <= 3071 &&
           port_tokens(text, 11, SYSDT_AS_LIST_ENTRIES, [&out](char *token, std::size_t i) {
               token = port::look(token, 1, 11);
               const port::Counts counts = port::count(token);
               return counts.others + counts.colons + counts.hyphens == 0 && port_token(token, out.entry[i], counts);
           });
}

int port_print_as(const SYSDT_AsNum &value, char *out, std::size_t size)
{
    return value.asNumValue == 0 ? 0 : port_as(value.asNumValue, value.asType, out, size);
}

int port_print_as_list(const SYSDT_AsNumList &value, char *out, std::size_t size)
{
    int length = 0;
    for (const SYSDT_AsNumEntry &entry : value.entry) {
        if (entry.asNumValue == 0)
            continue;
        char *const at = out + length;
        const std::size_t left = size - static_cast<std::size_t>(length);
        const char *const blank = length == 0 ? "" : " ";
        length += entry.asType != 0
                      ? std::snprintf(at, left, "%s%u.%u", blank, entry.asNumValue >> 16, entry.asNumValue & 0xFFFF)
                      : std::snprintf(at, left, "%s%u", blank, entry.asNumValue);
    }
    return length;
}

// ------------------------------------------------------------------------------------------------ communities

struct Name {
    const char *text;
    std::size_t length;
    u32 community;
};
constexpr Name names[] = {{"internet", 8, 0},
                          {"no-advertise", 12, 0xFFFFFF02},
                          {"no-export", 9, 0xFFFFFF01},
                          {"no-export-subconfed", 19, 0xFFFFFF03}};

/// With the block that holds the small letters.
bool floor_name(const SYSDT_Context &context, const char *text, std::size_t length, u32 &community)
{
    char *const lowered = static_cast<char *>(SYS_DataTypeMallocByHandle(context.handle, static_cast<u32>(length + 1)));
    if (lowered == nullptr)
        return false;
    SMP_ToLowerString(text, lowered);
    bool found = false;
    for (const Name &name : names) {
        if (name.length == length && std::memcmp(lowered, name.text, length) == 0) {
            community = name.community;
            found = true;
            break;
        }
    }
    SYS_DataTypeFree(lowered);
    return found;
}

/// A number or a pair, at the cursor.
template <class Entry>
bool floor_community(const char *&at, Entry &out)
{
    u32 first;
    u32 second;
    if (!number(at, first))
        return false;
    out.type = *at == ':';
    if (*at != ':') {
        out.community = first;
        return true;
    }
    ++at;
    if (first > 65535 || !number(at, second, 65535))
        return false;
    out.community = first << 16 | second;
    return true;
}

bool is_digit(char character) { return character >= '0' && character <= '9'; }

bool floor_parse_community(const SYSDT_Context &context, char *text, SYSDT_Community &out)
{
    const char *at = SYSDT_BTrim(text);
    if (is_digit(*at))
        return floor_community(at, out) && *at == '\0';
    u32 community;
    if (!floor_name(context, at, std::strlen(at), community))
        return false;
    out.community = community;
    return true;
}

/// A name, a number or a pair.
char *put_community(char *out, u32 community, u32 type)
{
    if (community - 0xFFFFFF01 < 3) {
        return community == 0xFFFFFF01   ? put(out, "no-export")
               : community == 0xFFFFFF02 ? put(out, "no-advertise")
                                         : put(out, "no-export-subconfed");
    }
    if (community == 0)
        return put(out, "internet");
    return type == 0 ? put(out, community) : put(put(put(out, community >> 16), ':'), community & 0xFFFF);
}

char *floor_print_community(const SYSDT_Community &value, char *out)
{
    return value.community == 0 && value.type == 2 ? out : put_community(out, value.community, value.type);
}

bool floor_parse_community_list(const SYSDT_Context &context, char *text, SYSDT_CommunityList &out)
{
    for (SYSDT_CommunityEntry &entry : out.entry)
        entry.type = SYSDT_COMMUNITY_EMPTY;
    const char *at = SYSDT_BTrim(text);
    for (SYSDT_CommunityEntry &entry : out.entry) {
        if (is_digit(*at)) {
            if (!floor_community(at, entry))
                return false;
        } else {
            char token[20];
            std::size_t length = 0;
            for (; *at != ' ' && *at != '\0'; ++at) {
                if (length == 19)
                    return false;
                token[length++] = *at;
            }
            token[length] = '\0';
            u32 community;
            if (!floor_name(context, token, length, community))
                return false;
            entry.community = community;
            entry.type = 0;
        }
        if (*at == '\0')
            return true;
        if (*at != ' ')
            return false;
        while (*at == ' ')
            ++at;
    }
    return false;
}

char *floor_print_community_list(const SYSDT_CommunityList &value, char *out)
{
    bool first = true;
    for (const SYSDT_CommunityEntry &entry : value.entry) {
        if (entry.type == SYSDT_COMMUNITY_EMPTY)
            continue;
        if (!first)
            out = put(out, ' ');
        first = false;
        out = put_community(out, entry.community, entry.type);
    }
    return out;
}

template <class Entry>
bool port_community(const SYSDT_Context &context, char *text, Entry &out)
{
    text = port::look(text, 1, 19);
    if (text == nullptr)
        return false;
    const port::Counts counts = port::count(text);
    if (counts.dots + counts.hyphens + counts.others != 0) {
        const auto size = static_cast<u32>(std::strlen(text) + 1);
        char *const lowered = static_cast<char *>(SYS_DataTypeMallocByHandle(context.handle, size));
        if (lowered == nullptr)
            return false;
        SMP_ToLowerString(text, lowered);
        bool found = false;
        for (const Name &name : names) {
            if (std::strstr(name.text, lowered) == name.text && std::strstr(lowered, name.text) == lowered) {
                out.community = name.community;
                out.type = 0;
                found = true;
                break;
            }
        }
        SYS_DataTypeFree(lowered);
        return found;
    }
    unsigned long long number = 0;
    unsigned high = 0;
    unsigned low = 0;
    if (counts.colons == 0) {
        if (std::sscanf(text, "%llu", &number) != 1 || number > UINT32_MAX)
            return false;
        out.community = static_cast<u32>(number);
        out.type = 0;
        return true;
    }
    if (counts.colons != 1 || std::sscanf(text, "%u:%u", &high, &low) != 2 || high > 65535 || low > 65535)
        return false;
    out.community = high << 16 | low;
    out.type = 1;
    return true;
}

bool port_parse_community_list(const SYSDT_Context &context, char *text, SYSDT_CommunityList &out)
{
    for (SYSDT_CommunityEntry &entry : out.entry)
        entry.type = SYSDT_COMMUNITY_EMPTY;
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    return length >= 1 && length <= 392 &&
           port_tokens(text, 19, SYSDT_COMMUNITY_LIST_ENTRIES,
                       [&](char *token, std::size_t i) { return port_community(context, token, out.entry[i]); });
}

int port_community_text(u32 community, u32 type, char *out, std::size_t size)
{
    switch (community) {
    case 0xFFFFFF01: return std::snprintf(out, size, "%s", "no-export");
    case 0xFFFFFF02: return std::snprintf(out, size, "%s", "no-advertise");
    case 0xFFFFFF03: return std::snprintf(out, size, "%s", "no-export-subconfed");
    case 0: return std::snprintf(out, size, "%s", "internet");
    default:
        return type == 0 ? std::snprintf(out, size, "%u", community)
                         : std::snprintf(out, size, "%u:%u", community >> 16, community & 0xFFFF);
    }
}

int port_print_community(const SYSDT_Community &value, char *out, std::size_t size)
{
    return value.community == 0 && value.type == 2 ? 0 : port_community_text(value.community, value.type, out, size);
}

int port_print_community_list(const SYSDT_CommunityList &value, char *out, std::size_t size)
{
    std::size_t length = 0;
    bool first = true;
    for (const SYSDT_CommunityEntry &entry : value.entry) {
        if (entry.type == SYSDT_COMMUNITY_EMPTY)
            continue;
        if (!first)
            length += static_cast<std::size_t>(std::snprintf(out + length, size - length, " "));
        first = false;
        length +=
            static_cast<std::size_t>(port_community_text(entry.community, entry.type, out + length, size - length));
    }
    return static_cast<int>(length);
}

bool floor_parse_large(char *text, SYSDT_LargeCommunity &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 a;
    u32 b;
    u32 c;
    if (!number_and(at, a, ':') || !number_and(at, b, ':') || !last_number(at, c))
        return false;
    out = {{a, b, c}, 0};
    return true;
}

char *floor_print_large(const SYSDT_LargeCommunity &value, char *out)
{
    out = put(put(out, value.largeCommunity[0]), ':');
    return put(put(put(out, value.largeCommunity[1]), ':'), value.largeCommunity[2]);
}

bool port_parse_large(char *text, SYSDT_LargeCommunity &out)
{
    text = port::look(text, 5, 32);
    if (text == nullptr)
        return false;
    const port::Counts counts = port::count(text);
    unsigned long long a = 0;
    unsigned long long b = 0;
    unsigned long long c = 0;
    if (counts.dots + counts.hyphens + counts.others != 0 || counts.colons != 2 ||
        std::sscanf(text, "%llu:%llu:%llu", &a, &b, &c) != 3 || a > UINT32_MAX || b > UINT32_MAX || c > UINT32_MAX)
        return false;
    out = {{static_cast<u32>(a), static_cast<u32>(b), static_cast<u32>(c)}, 0};
    return true;
}

int port_print_large(const SYSDT_LargeCommunity &value, char *out, std::size_t size)
{
    return std::snprintf(out, size, "%u:%u:%u", value.largeCommunity[0], value.largeCommunity[1],
                         value.largeCommunity[2]);
}

// ------------------------------------------------------------------------------------------------ extended

bool floor_parse_ext(char *text, SYSDT_Octets &out) { return floor_octets<target_codes, true>(text, out); }
bool port_parse_ext(char *text, SYSDT_Octets &out) { return port_octets(text, target_codes, true, out); }

char *floor_print_ext(const SYSDT_Octets &value, char *out)
{
    const u8 *const at = value.octets;
    switch (get<u16>(at)) {
    case 0x0002: return put_2_4(out, at);
    case 0x0102: return put_ipv4_2(out, at);
    case 0x0202:
        return value.form == VRF_RD_FORM_AS4DOT ? put_2_2_2(out, at)
               : value.form == VRF_RD_FORM_AS4  ? put_4_2(out, at)
                                                : out;
    default: return out;
    }
}

int port_print_ext(const SYSDT_Octets &value, char *out, std::size_t size)
{
    const u8 *const b = value.octets;
    const unsigned n1 = static_cast<unsigned>(b[2] << 8 | b[3]);
    const unsigned n2 = static_cast<unsigned>(b[4] << 8 | b[5]);
    const unsigned n3 = static_cast<unsigned>(b[6] << 8 | b[7]);
    switch (b[0] << 8 | b[1]) {
    case 0x0002: return std::snprintf(out, size, "%u:%u", n1, n2 << 16 | n3);
    case 0x0102: return std::snprintf(out, size, "%u.%u.%u.%u:%u", b[2], b[3], b[4], b[5], n3);
    case 0x0202:
        return value.form == VRF_RD_FORM_AS4DOT ? std::snprintf(out, size, "%u.%u:%u", n1, n2, n3)
               : value.form == VRF_RD_FORM_AS4  ? std::snprintf(out, size, "%u:%u", n1 << 16 | n2, n3)
                                                : 0;
    default: return -1;
    }
}

char *floor_print_bandwidth(const SYSDT_ExtCommunityBw &value, char *out)
{
    if (value.bandwidth == 0)
        return out;
    out = value.asnNn == 23456 ? put(out, "as-trans:") : put(put(out, static_cast<u32>(value.asnNn)), ':');
    u64 rest = value.bandwidth;
    if (rest <= UINT32_MAX)
        return put(out, static_cast<u32>(rest));
    char digits[20];
    char *at = digits + sizeof digits;
    while (rest >= 100) {
        at -= 2;
        put_pair(at, static_cast<u32>(rest % 100));
        rest /= 100;
    }
    out = put_small(out, static_cast<u32>(rest));
    const auto left = static_cast<std::size_t>(digits + sizeof digits - at);
    std::memcpy(out, at, left);
    return out + left;
}

int port_print_bandwidth(const SYSDT_ExtCommunityBw &value, char *out, std::size_t size)
{
    const unsigned long long bandwidth = value.bandwidth;
    return bandwidth == 0         ? 0
           : value.asnNn == 23456 ? std::snprintf(out, size, "as-trans:%llu", bandwidth)
                                  : std::snprintf(out, size, "%u:%llu", value.asnNn, bandwidth);
}

// ------------------------------------------------------------------------------------------------ corpora

std::string community(Random &random)
{
    switch (random.below(4)) {
    case 0: return random.pick({"internet", "no-export", "no-advertise", "no-export-subconfed"});
    case 1: return random.decimal(1, 4294901759U);
    default: return random.u16() + ':' + random.u16();
    }
}

std::string name_in_any_case(Random &random)
{
    std::string name = random.pick({"internet", "no-export", "no-advertise", "no-export-subconfed"});
    for (char &letter : name)
        if (letter != '-' && random.percent(50))
            letter = static_cast<char>(letter - 'a' + 'A');
    return name;
}

template <class Entry>
std::string list(Random &random, u32 most, Entry entry)
{
    std::string text = entry(random);
    for (u32 left = random.below(most); left != 0; --left)
        text += ' ' + entry(random);
    return text;
}

Bytes bandwidth(Random &random)
{
    SYSDT_ExtCommunityBw value{0x030E, static_cast<u16>(random.percent(10) ? 23456 : random.between(1, 65535)), 0};
    value.bandwidth = random.percent(50) ? random.number() : random.next() >> random.below(32);
    Bytes bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

} // namespace

bool port_parse_as(char *text, SYSDT_AsNum &out)
{
    text = port::look(text, 1, 11);
    if (text == nullptr)
        return false;
    const port::Counts counts = port::count(text);
    return counts.others + counts.colons + counts.hyphens == 0 && port_token(text, out, counts);
}

void add_as_and_communities(Kinds &kinds)
{
    constexpr Converter floor_as_number{format_in<floor_parse_as, SYSDT_AsNum, SYSDT_TYPE_ASNUM>,
                                        floor_out<floor_print_as, SYSDT_AsNum, 33>};
    constexpr Converter port_as_number{format_in<port_parse_as, SYSDT_AsNum, SYSDT_TYPE_ASNUM>,
                                       port_out<port_print_as, SYSDT_AsNum, 33>};
    kinds.push_back({"AS plain", "ASNUM",
                     [](Random &random) { return random.percent(50) ? random.as2() : random.as4(); }, floor_as_number,
                     port_as_number});
    kinds.push_back({"AS dotted", "ASNUM", &Random::as_dotted, floor_as_number, port_as_number});

    constexpr Converter floor_list{format_in<floor_parse_as_list, SYSDT_AsNumList, SYSDT_TYPE_ASNUM_ENHANCE>,
                                   floor_out<floor_print_as_list, SYSDT_AsNumList, 3072>};
    constexpr Converter port_list{format_in<port_parse_as_list, SYSDT_AsNumList, SYSDT_TYPE_ASNUM_ENHANCE>,
                                  port_out<port_print_as_list, SYSDT_AsNumList, 3072>};
    kinds.push_back({"AS list", "ASNUM_ENHANCE",
                     [](Random &random) {
                         return list(random, 16, [](Random &r) {
                             return r.percent(20) ? r.as_dotted() : r.percent(50) ? r.as2() : r.as4();
                         });
                     },
                     floor_list, port_list});

    constexpr Converter floor_one{format_in<floor_parse_community, SYSDT_Community, SYSDT_TYPE_COMMUNITY>,
                                  floor_out<floor_print_community, SYSDT_Community, 33>};
    constexpr Converter port_one{format_in<port_community<SYSDT_Community>, SYSDT_Community, SYSDT_TYPE_COMMUNITY>,
                                 port_out<port_print_community, SYSDT_Community, 33>};
    kinds.push_back({"community name", "COMMUNITY", name_in_any_case, floor_one, port_one});
    kinds.push_back({"community number", "COMMUNITY", [](Random &random) { return random.decimal(1, 4294901759U); },
                     floor_one, port_one});
    kinds.push_back({"community pair", "COMMUNITY", [](Random &random) { return random.as2() + ':' + random.u16(); },
                     floor_one, port_one});

    constexpr Converter floor_some{format_in<floor_parse_community_list, SYSDT_CommunityList, SYSDT_TYPE_CMNTY_ENHANCE>,
                                   floor_out<floor_print_community_list, SYSDT_CommunityList, 393>};
    constexpr Converter port_some{format_in<port_parse_community_list, SYSDT_CommunityList, SYSDT_TYPE_CMNTY_ENHANCE>,
                                  port_out<port_print_community_list, SYSDT_CommunityList, 393>};
    kinds.push_back({"community list", "CMNTY_ENHANCE", [](Random &random) { return list(random, 8, community); },
                     floor_some, port_some});

    kinds.push_back({"large community",
                     "LARGECOMMUNITY",
                     [](Random &random) { return random.as4() + ':' + random.decimal() + ':' + random.decimal(); },
                     {format_in<floor_parse_large, SYSDT_LargeCommunity, SYSDT_TYPE_LARGECOMMUNITY>,
                      floor_out<floor_print_large, SYSDT_LargeCommunity>},
                     {format_in<port_parse_large, SYSDT_LargeCommunity, SYSDT_TYPE_LARGECOMMUNITY>,
                      port_out<port_print_large, SYSDT_LargeCommunity>}});

    constexpr Converter floor_ext{format_in<floor_parse_ext, SYSDT_Octets, SYSDT_TYPE_EXTCOMMUNITY>,
                                  floor_out<floor_print_ext, SYSDT_Octets>};
    constexpr Converter port_ext{format_in<port_parse_ext, SYSDT_Octets, SYSDT_TYPE_EXTCOMMUNITY>,
                                 port_out<port_print_ext, SYSDT_Octets>};
    for (const auto &[form, text] : octet_forms)
        kinds.push_back({"ext. community " + std::string(form), "EXTCOMMUNITY", text, floor_ext, port_ext});
    kinds.push_back({"bandwidth",
                     "EXTCOMMUNITY_BW",
                     {},
                     {nullptr, floor_out<floor_print_bandwidth, SYSDT_ExtCommunityBw>},
                     {nullptr, port_out<port_print_bandwidth, SYSDT_ExtCommunityBw>},
                     Shape::decimal,
                     bandwidth});
}

} // namespace bgpdt::bench
