// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "common/contract.hpp"

namespace bgpdt {

u32 copy_out(Allocator allocator, const Context &context, u32 length, const void *data, Output out)
{
    if (length > UINT16_MAX)
        return SYSDT_ERR_FAIL;
    void *const block = *out.data != nullptr ? *out.data : take(allocator, context, length);
    if (block == nullptr) {
        *out.length = 0;
        return SYSDT_ERR_FAIL; // not SYSDT_ERR_NO_MEMORY: a copy that cannot be made is a failed conversion
    }
    std::memcpy(block, data, length);
    *out.data = block;
    out.report(SYSDT_KIND_BINARY, length);
    return SYSDT_OK;
}

bool help_is_due(const HelpText &help, const Context *context, const HelpRequest *request, const HelpInfo *info,
                 u32 &status)
{
    if (context == nullptr || request == nullptr || info == nullptr) {
        status = SYSDT_ERR_NULL_PTR;
        return false;
    }
    const bool served = contains(help.served, context->mode);
    const bool asked = request->first != 0 && request->second != 0;
    status = served && !asked ? SYSDT_ERR_PARAM : SYSDT_OK;
    return served && asked;
}

u32 store_help(const HelpText &help, const Context &context, HelpInfo &info)
{
    if (const u32 status = SYSDT_InitHelpInfo(context.handle, &info, 1); status != SYSDT_OK)
        return help.silent ? SYSDT_OK : status;
    char *const entry = static_cast<char *>(take(help.allocator, context, help.text.size() + 1));
    if (entry == nullptr) {
        SYSDT_ClearHelpInfo(&info);
        return SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(entry, help.text.data(), help.text.size());
    entry[help.text.size()] = '\0';
    info.entries[0] = entry;
    return SYSDT_OK;
}

u32 give_help(const HelpText &help, const Context *context, const HelpRequest *request, HelpInfo *info)
{
    u32 status = SYSDT_OK;
    return help_is_due(help, context, request, info, status) ? store_help(help, *context, *info) : status;
}

i32 compare_bytes(u32 length, const void *first, const void *second)
{
    const int order = std::memcmp(first, second, length);
    return (order > 0) - (order < 0);
}

u32 set_script_value(void *state, i32 table, const char *name, u32 length, const void *data, std::size_t size,
                     const Layout &layout)
{
    if (const u32 status = script::check_call(state, name, data, length, size); status != SYSDT_OK)
        return status;
    script::set_value(state, table, name, layout, static_cast<const u8 *>(data));
    return SYSDT_OK;
}

u32 get_script_value(void *state, i32 table, const char *name, u32 length, void *data, std::size_t size,
                     const Layout &layout)
{
    if (const u32 status = script::check_call(state, name, data, length, size); status != SYSDT_OK)
        return status;
    return script::get_value(state, table, name, layout, static_cast<u8 *>(data));
}

} // namespace bgpdt
