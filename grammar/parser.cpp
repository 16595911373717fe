// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "parser.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "bgp_datatype/bgp_datatype.h"
#include "bgp_datatype/fields.hpp"
#include "toolkit/display_record.hpp"

namespace bgpdt::grammar {
namespace {

constexpr std::uint8_t text_mode = 2; // in which every type reads texts as they are, and most print them

bool is_bitmap(const SYSDT_Record &record) { return record.typeId == SYSDT_TYPE_ATTRIDBITMAP; }

/// The host's own strings print as another form in mode 2, and bitmaps are not listed in it.
std::uint8_t printing_mode(const SYSDT_Record &record)
{
    return record.baseKind == SYSDT_KIND_STRING || is_bitmap(record) ? 1 : text_mode;
}

} // namespace

Parser::Row Parser::row_of(const host::Host &host, const std::string &name)
{
    const std::size_t blank = name.find(' ');
    const SYSDT_Record *const type = host.find(name.substr(0, blank));
    if (type == nullptr)
        throw std::invalid_argument("there is no type of " + name);
    Row row{*type, {}};
    if (type->typeId == SYSDT_TYPE_L2VPNPREFIX)
        row.kind = SYSDT_BOL_L2VPN;
    if (blank == name.npos)
        return row;
    const auto &rows =
        *static_cast<const decltype(g_astBOL_PREFIX_ProcTable) *>(host.symbol("g_astBOL_PREFIX_ProcTable"));
    const auto *const found = std::ranges::find(rows, name.substr(blank + 1), [](const SYSDT_DispatchRow &entry) {
        return std::string(entry.name, strnlen(entry.name, sizeof entry.name));
    });
    if (found == std::end(rows))
        throw std::invalid_argument("there is no kind " + name);
    row.kind = found->kind;
    row.record.formatIn = found->formatIn;
    row.record.formatOut = found->formatOut;
    return row;
}

Parser::Parser(const host::Host &host, const std::string &name)
    : row_(row_of(host, name)), reader_(row_.record, text_mode), writer_(row_.record, printing_mode(row_.record)),
      text_(1 << 16)
{
}

bool Parser::takes(std::string_view text)
{
    std::memcpy(text_.data(), text.data(), text.size());
    text_[text.size()] = '\0';
    const host::Delivery delivery = reader_.parse({text_.data(), text.size()});
    value_ = delivery.data;
    if (!delivery.ok() || !row_.kind)
        return delivery.ok();
    std::uint32_t kind = 0;
    std::memcpy(&kind, value_.data(), sizeof kind);
    return kind == *row_.kind;
}

std::string_view Parser::printed(std::span<const std::uint8_t> value)
{
    const std::string_view text =
        (is_bitmap(row_.record) ? writer_.print(toolkit::printable(row_.record, value)) : writer_.print(value)).text();
    return text.find_first_not_of('\0') == text.npos ? "" : text;
}

std::size_t Parser::value_size() const { return bgpdt::value_size(row_.record); }

} // namespace bgpdt::grammar
