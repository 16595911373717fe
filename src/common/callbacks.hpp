// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The exported callbacks, a line each: the name in full, so that grep finds it, and the type's declaration.
#pragma once

#include "common/contract.hpp"
#if BGPDT_SMALL // FormatIn and FormatOut of all types are then one body each
#include "common/any_type.hpp"
#endif

#define BGPDT_FORMAT_IN(name, type)                                                                                    \
    std::uint32_t name(SYSDT_Context *context, std::uint32_t, std::uint32_t, char *text, std::uint16_t *kind,          \
                       std::uint16_t *length, void **data)                                                             \
    {                                                                                                                  \
        return ::bgpdt::format_in(context, text, ::bgpdt::OutputOf<type>{kind, length, data});                         \
    }

#define BGPDT_FORMAT_OUT(name, type)                                                                                   \
    std::uint32_t name(SYSDT_Context *context, std::uint32_t, std::uint32_t size, const void *value,                   \
                       std::uint16_t *kind, std::uint16_t *length, void **data)                                        \
    {                                                                                                                  \
        return ::bgpdt::format_out(context, size, value, ::bgpdt::OutputOf<type>{kind, length, data});                 \
    }

#define BGPDT_CHECK(name, type)                                                                                        \
    std::uint32_t name(const void *, std::uint32_t, std::uint32_t length, const void *data)                            \
    {                                                                                                                  \
        return ::bgpdt::check<type>(length, data);                                                                     \
    }

#define BGPDT_HELP(name, type)                                                                                         \
    std::uint32_t name(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *,                             \
                       const SYSDT_HelpRequest *request, SYSDT_HelpInfo *info)                                         \
    {                                                                                                                  \
        return ::bgpdt::give_help((type).help, context, request, info);                                                \
    }

/// Orders values by their bytes.
#define BGPDT_COMPARE_BYTES(name)                                                                                      \
    std::int32_t name(const void *, std::uint32_t length, const void *first, const void *second)                       \
    {                                                                                                                  \
        return ::bgpdt::compare_bytes(length, first, second);                                                          \
    }

#define BGPDT_LUA_SET(name, type)                                                                                      \
    std::uint32_t name(void *state, std::int32_t table, const char *field, std::uint32_t, std::uint32_t length,        \
                       const void *data)                                                                               \
    {                                                                                                                  \
        return ::bgpdt::set_script_value(state, table, field, length, data, sizeof(::bgpdt::ValueOf<type>),            \
                                         (type).layout);                                                               \
    }

#define BGPDT_LUA_GET(name, type)                                                                                      \
    std::uint32_t name(void *state, std::int32_t table, const char *field, std::uint32_t, std::uint32_t length,        \
                       void *data)                                                                                     \
    {                                                                                                                  \
        return ::bgpdt::get_script_value(state, table, field, length, data, sizeof(::bgpdt::ValueOf<type>),            \
                                         (type).layout);                                                               \
    }

/// Reverses every number of the layout.
#define BGPDT_ENDIAN(name, type)                                                                                       \
    std::uint32_t name(void *, std::uint32_t, std::uint32_t, void *data)                                               \
    {                                                                                                                  \
        ::bgpdt::reverse_numbers((type).layout, {static_cast<std::uint8_t *>(data), (type).layout.size()});            \
        return SYSDT_OK;                                                                                               \
    }
