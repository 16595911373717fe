// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "kinds.hpp"

#include <algorithm>
#include <cstring>
#include <set>
#include <span>
#include <type_traits>

#include "bgp_datatype/bgp_datatype.h"
#include "operations.hpp"
#include "samples.hpp"

namespace bgpdt::toolkit {
namespace {

/// The tables behind a type. Without readers, scripts are read by the rows themselves.
struct Tables {
    std::span<const SYSDT_DispatchRow> rows;
    std::span<const SYSDT_ScriptReadRow> readers;
};

/// The table that the plug-in exports under the name, as large as it is declared; empty if it does not.
template <class Table>
std::span<const std::remove_extent_t<Table>> exported(Session &session, const char *name)
{
    using Row = std::remove_extent_t<Table>;
    const auto *first = static_cast<const Row *>(session.host().symbol(name));
    return {first, first == nullptr ? 0 : std::extent_v<Table>};
}

#define BGPDT_EXPORTED(table) exported<decltype(table)>(session, #table)

Tables tables_of(Session &session, const SYSDT_Record &type)
{
    switch (type.typeId) {
    case SYSDT_TYPE_BOLPREFIX:
        return {BGPDT_EXPORTED(g_astBOL_PREFIX_ProcTable), BGPDT_EXPORTED(g_astBOL_PREFIX_LuaGetTable)};
    case SYSDT_TYPE_BOLRD: return {BGPDT_EXPORTED(g_astBOL_RD_ProcTable), {}};
    default: return {};
    }
}

#undef BGPDT_EXPORTED

std::string name_of(const SYSDT_DispatchRow &row) { return {row.name, strnlen(row.name, sizeof row.name)}; }

/// Check, Help and Compare do not ask for the kind.
std::vector<std::string> operations_of(const SYSDT_DispatchRow &row, bool read_from_scripts)
{
    SYSDT_Record slots{};
    slots.formatIn = row.formatIn;
    slots.formatOut = row.formatOut;
    slots.luaSet = row.luaSet;
    std::vector<std::string> words = operations(slots);
    if (read_from_scripts)
        words.emplace_back("value");
    return words;
}

std::string help_of(Session &session, const SYSDT_Record &type, const SYSDT_DispatchRow &row)
{
    SYSDT_Record with_its_help = type;
    with_its_help.help = row.help;
    std::string help;
    for (const std::string &text : help_texts(session, with_its_help))
        help.append(help.empty() ? "" : " or ").append(text);
    return help;
}

} // namespace

std::vector<Kind> kinds(Session &session, const SYSDT_Record &type)
{
    const Tables tables = tables_of(session, type);
    const Sample sample = sample_of(type.typeId);
    std::vector<Kind> kinds;
    std::set<std::string> told;
    for (const SYSDT_DispatchRow &row : tables.rows) {
        const bool read =
            tables.readers.empty() ? row.luaGet != nullptr : tables.readers[kinds.size()].reader != nullptr;
        const bool takes_text = row.formatIn != nullptr;
        std::string help = help_of(session, type, row);
        const bool first = told.insert(help).second;
        kinds.push_back({.number = row.kind,
                         .name = name_of(row),
                         .about = sample.of_kind(row.kind).about,
                         .takes_text = takes_text,
                         .operations = operations_of(row, read),
                         .form = takes_text && first ? std::move(help) : ""});
    }
    return kinds;
}

bool has_kinds(Session &session, const SYSDT_Record &type) { return !tables_of(session, type).rows.empty(); }

std::string kind_name(Session &session, const SYSDT_Record &type, std::uint32_t number)
{
    std::span<const SYSDT_DispatchRow> rows = tables_of(session, type).rows;
    if (const SYSDT_Record *keys = session.host().find("BOLPREFIX"); rows.empty() && keys != nullptr)
        rows = tables_of(session, *keys).rows;
    const auto found = std::ranges::find(rows, number, &SYSDT_DispatchRow::kind);
    return found == rows.end() ? "" : name_of(*found);
}

std::uint32_t kind_of(std::span<const std::uint8_t> value)
{
    std::uint32_t number = 0;
    std::memcpy(&number, value.data(), std::min(value.size(), sizeof number));
    return number;
}

} // namespace bgpdt::toolkit
