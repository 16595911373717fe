// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where size counts: one body of each conversion for all types, which is told the type when it is called. What it does
/// is contract.hpp's; here its templates meet a type that the compiler does not know.
#pragma once

#include "common/contract.hpp"

namespace bgpdt {

/// A value whose structure is not told.
struct AnyValue;

/// What the conversions ask of a type.
struct AnyType : Type<AnyValue> {
    u32 size; ///< of a value
};

template <const auto &declared>
inline constexpr AnyType any_type{
    {
        .kind = declared.kind,
        .input = declared.input,
        .parse =
            [](u32 handle, char *text, AnyValue &value) {
                return declared.parse(handle, text, reinterpret_cast<ValueOf<declared> &>(value));
            },
        .refusal = declared.refusal,
        .no_memory_clears_data = declared.no_memory_clears_data,
        .output = declared.output,
        .mode3 = declared.mode3,
        .clears_before_output = declared.clears_before_output,
        .block = declared.block,
        .limit = declared.limit,
        .reads = declared.reads,
        .print =
            [](const AnyValue &value, u8 mode, Writer &out) {
                return declared.print(reinterpret_cast<const ValueOf<declared> &>(value), mode, out);
            },
        .on_print_failure = declared.on_print_failure,
        .allocator = declared.allocator,
    },
    sizeof(ValueOf<declared>),
};

/// The outputs of a conversion of such a type.
struct OutputOfAny : Output {
    using Value = AnyValue;
    using Passed = OutputOfAny;
    const AnyType &type;
    AnyValue &room; ///< for a value: its owner's, which knows how large it is
    u32 size = type.size;

    const Value &read_value(u32 passed, const void *from) const
    {
        std::memset(&room, 0, size);
        std::memcpy(&room, from, type.reads == Input::whole ? size : std::min(passed, size));
        return room;
    }
};

inline u32 parse_and_deliver(const Context &context, char *text, OutputOfAny out)
{
    std::memset(&out.room, 0, out.size);
    return out.type.parse(context.handle, text, out.room) == SYSDT_OK ? deliver_value(context, out, out.room)
                                                                      : out.type.refusal;
}

// Each argument that a callback gets stands where it does there, so that it need not be moved.

[[gnu::noinline]] inline u32 format_in(const Context *context, const AnyType &type, AnyValue &room, char *text,
                                       u16 *kind, u16 *length, void **data)
{
    return format_in(context, text, OutputOfAny{{kind, length, data}, type, room});
}

[[gnu::noinline]] inline u32 format_out(const Context *context, const AnyType &type, u32 size, const void *value,
                                        u16 *kind, u16 *length, void **data, AnyValue &room)
{
    return format_out(context, size, value, OutputOfAny{{kind, length, data}, type, room});
}

template <const auto &declared>
u32 format_in(const Context *context, char *text, OutputOf<declared> out)
{
    ValueOf<declared> room;
    return format_in(context, any_type<declared>, reinterpret_cast<AnyValue &>(room), text, out.kind, out.length,
                     out.data);
}

template <const auto &declared>
u32 format_out(const Context *context, u32 size, const void *value, OutputOf<declared> out)
{
    ValueOf<declared> room;
    return format_out(context, any_type<declared>, size, value, out.kind, out.length, out.data,
                      reinterpret_cast<AnyValue &>(room));
}

} // namespace bgpdt
