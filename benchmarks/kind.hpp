// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A kind of text or value, and the converters that it is measured with: the plug-in's own, a floor and a plain port.
///
/// The floor is the least that a strict converter can do: one pass over well-formed text, every number's range checked,
/// and of the host the trim and the blocks that the contract names. It asks for no white space, as no grammar has any.
/// The plain port is the description, step by step, in sscanf, snprintf and the host's services. Both are written as a
/// parse or a print of the bare value; the templates below make callbacks of them.
#pragma once

#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "bgp_datatype/bgp_datatype.h"
#include "corpus.hpp"

namespace bgpdt::bench {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;

/// FormatIn and FormatOut of one column.
struct Converter {
    SYSDT_FormatIn *parse = nullptr;
    SYSDT_FormatOut *print = nullptr;
};

/// Which of the ratios to the plain port is wanted.
enum class Shape { decimal, structured };

struct Kind {
    std::string name;
    std::string subject; ///< a registered type, "BOLPREFIX/ROW" or "BOLRD/ROW"
    std::function<std::string(Random &)> text;
    Converter floor{};
    Converter port{};
    Shape shape = Shape::decimal;
    std::function<Bytes(Random &)> value = {}; ///< for what is not entered as text
    u8 mode = 2;
};

using Kinds = std::vector<Kind>;

void add_as_and_communities(Kinds &kinds);
void add_vpn_identifiers(Kinds &kinds);
void add_plain_prefixes(Kinds &kinds);
void add_evpn(Kinds &kinds);
void add_mvpn(Kinds &kinds);
void add_policy_keys(Kinds &kinds);
void add_bgpls(Kinds &kinds);
void add_attributes(Kinds &kinds);

template <bool plain = false>
void *take(const SYSDT_Context &context, u32 size)
{
    return plain ? SYS_DataTypeMalloc(size) : SYS_DataTypeMallocByHandle(context.handle, size);
}

/// FormatIn of a parser `bool (char *text, Value &value)`, or with the context in front.
template <auto parse, class Value, u16 kind, bool plain = false>
[[gnu::flatten]] u32 format_in(SYSDT_Context *context, u32, u32, char *text, u16 *out_kind, u16 *out_length,
                               void **out_data)
{
    Value value{};
    if constexpr (requires { parse(*context, text, value); }) {
        if (!parse(*context, text, value))
            return SYSDT_ERR_INVALID_VALUE;
    } else if (!parse(text, value)) {
        return SYSDT_ERR_INVALID_VALUE;
    }
    void *const block = take<plain>(*context, sizeof value);
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    std::memcpy(block, &value, sizeof value);
    *out_kind = kind;
    *out_length = sizeof value;
    *out_data = block;
    return SYSDT_OK;
}

/// FormatOut of a floor `char *(const Value &value, char *out)`, which returns the end of the text.
template <auto print, class Value, u32 size = 257, bool plain = false>
u32 floor_out(SYSDT_Context *context, u32, u32, const void *data, u16 *out_kind, u16 *out_length, void **out_data)
{
    char *const block = static_cast<char *>(*out_data != nullptr ? *out_data : take<plain>(*context, size));
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    char *const end = print(*static_cast<const Value *>(data), block);
    *end = '\0';
    *out_kind = SYSDT_KIND_STRING;
    *out_length = static_cast<u16>(end - block + 1);
    *out_data = block;
    return SYSDT_OK;
}

/// FormatOut of a plain port `int (const Value &value, char *out, size_t size)`, which returns as snprintf does.
template <auto print, class Value, u32 size = 257, bool plain = false>
u32 port_out(SYSDT_Context *context, u32, u32, const void *data, u16 *out_kind, u16 *out_length, void **out_data)
{
    char *const block = static_cast<char *>(*out_data != nullptr ? *out_data : take<plain>(*context, size));
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    Value value{};
    std::memcpy(&value, data, sizeof value);
    *block = '\0';
    const int printed = print(value, block, size - 1);
    if (printed < 0)
        return SYSDT_ERR_FAIL;
    *out_kind = SYSDT_KIND_STRING;
    *out_length = static_cast<u16>(printed + 1);
    *out_data = block;
    return SYSDT_OK;
}

} // namespace bgpdt::bench
