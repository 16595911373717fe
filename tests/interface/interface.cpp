// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Prints what the plug-in registers, and the rows of its dispatch tables, by the names of the functions in every slot.
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <stdexcept>
#include <string>

#include "bgp_datatype/bgp_datatype.h"
#include "host/host.hpp"
#include "support/setting.hpp"
#include "support/subject.hpp"

namespace bgpdt::test {

namespace {

template <class Callback>
void print_slot(const char *slot, Callback *callback)
{
    if (callback == nullptr)
        return;
    Dl_info symbol{};
    void *const address = reinterpret_cast<void *>(callback);
    if (dladdr(address, &symbol) == 0 || symbol.dli_saddr != address)
        throw std::runtime_error(std::string("a callback for ") + slot + " has no name");
    std::printf("    %-9s  %s\n", slot, symbol.dli_sname);
}

template <class Row>
void print_slots(const Row &row)
{
    print_slot("FormatIn", row.formatIn);
    print_slot("FormatOut", row.formatOut);
    print_slot("Check", row.check);
    print_slot("Help", row.help);
    print_slot("Compare", row.compare);
    print_slot("LuaSet", row.luaSet);
    print_slot("LuaGet", row.luaGet);
}

void print_type(const SYSDT_Record &record)
{
    std::printf("type %.*s: id 0x%04x, %u bytes, base kind 0x%02x\n", int{sizeof record.name}, record.name,
                unsigned{record.typeId}, unsigned{record.dataLength}, unsigned{record.baseKind});
    print_slots(record);
    print_slot("reserved", static_cast<char *>(record.reserved));
    print_slot("Endian", record.endian);
}

void print_rows(const host::Host &host, const std::string &type)
{
    for (const SYSDT_DispatchRow &row : dispatch_rows(host, type)) {
        std::printf("row %" PRIu32 " of %s: %.*s\n", row.kind, type.c_str(), int{sizeof row.name}, row.name);
        print_slots(row);
    }
}

void print_readers(const host::Host &host)
{
    std::printf("readers of script tables\n");
    const auto *rows = static_cast<const SYSDT_ScriptReadRow *>(host.symbol("g_astBOL_PREFIX_LuaGetTable"));
    for (std::uint32_t row = 0; row < SYSDT_BOL_KINDS; ++row)
        print_slot(std::to_string(rows[row].index).c_str(), rows[row].reader);
}

} // namespace

} // namespace bgpdt::test

int main()
{
    using namespace bgpdt;
    try {
        const host::Host host(test::plugin_path());
        for (const SYSDT_Record *record : host.types())
            test::print_type(*record);
        test::print_rows(host, "BOLPREFIX");
        test::print_rows(host, "BOLRD");
        test::print_readers(host);
        return 0;
    } catch (const std::exception &error) {
        (void)std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
