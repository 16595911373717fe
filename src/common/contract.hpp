// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The conversion contract, written once: what every callback does, as templates over a type's declaration.
///
/// A type declares its facts as one constant Type<Value> with static storage; a callback is one call of a template
/// below with that constant. What a type does in its own way stays in its file, built from the same pieces.
#pragma once

#include <algorithm>
#include <cstring>
#include <span>

#include "bgp_datatype/fields.hpp"
#include "common/modes.hpp"
#include "common/script.hpp"
#include "common/writer.hpp"

namespace bgpdt {

/// Which of the host's allocators a block comes from.
enum class Allocator : u8 {
    handle, ///< bound to the context's handle
    plain,
};

/// What mode 3 of FormatOut gives.
enum class Mode3 : u8 {
    copy,      ///< the value's bytes, kind 6
    bare_text, ///< the text, kind 6, its length without the terminator
    text,      ///< the text, as in the other modes
};

/// How much of FormatOut's input is read.
enum class Input : u8 {
    whole,  ///< the type's full length, whatever length was passed
    passed, ///< at most the passed length; what is missing reads as zero
};

/// What FormatOut does with its block when the value cannot be printed.
enum class OnPrintFailure : u8 {
    hand_back,   ///< the block goes out all the same; kind and length stay as they are
    release_own, ///< a block that this call took is released
    release,     ///< the block is released, the caller's too, and out data is null
};

/// The help text, and when and how it is given.
struct HelpText {
    std::string_view text;
    u8 served = modes(1, 6);
    bool silent = false; ///< a host that prepares no entry is not an error
    Allocator allocator = Allocator::handle;
};

/// The facts of a type. Defaults are what most types do.
template <class Binary>
struct Type {
    using Value = Binary;

    u16 kind; ///< what FormatIn reports

    ModeScreen input = strict_screen;
    /// Parses the text into a cleared value; any status but 0 is the type's refusal.
    u32 (*parse)(u32 handle, char *text, Value &value) = nullptr;
    u32 refusal = SYSDT_ERR_INVALID_VALUE;
    bool no_memory_clears_data = false; ///< FormatIn without memory sets out data to null

    ModeScreen output = with_copy_screen;
    Mode3 mode3 = Mode3::copy;
    bool clears_before_output = false; ///< kind and length are cleared before the mode is looked at
    u16 block = 257;                   ///< size of the block that FormatOut takes for text
    u16 limit = 256;                   ///< the most it writes there, the terminator included
    Input reads = Input::whole;
    /// Prints the value; any status but 0 is FormatOut's.
    u32 (*print)(const Value &value, u8 mode, Writer &out) = nullptr;
    OnPrintFailure on_print_failure = OnPrintFailure::hand_back;

    Allocator allocator = Allocator::handle; ///< of FormatIn's and FormatOut's blocks

    u32 (*check)(const Value &value) = nullptr; ///< what Check tests beyond the length

    HelpText help{};
    Layout layout{}; ///< what scripts see, and what Endian swaps
};

/// The three outputs of a conversion.
struct Output {
    u16 *kind;
    u16 *length;
    void **data;

    bool complete() const { return kind != nullptr && length != nullptr && data != nullptr; }

    void report(u32 new_kind, u32 new_length) const
    {
        *kind = static_cast<u16>(new_kind);
        *length = static_cast<u16>(new_length);
    }
};

inline void *take(Allocator allocator, const Context &context, std::size_t size)
{
    return allocator == Allocator::handle ? SYS_DataTypeMallocByHandle(context.handle, static_cast<u32>(size))
                                          : SYS_DataTypeMalloc(static_cast<u32>(size));
}

template <const auto &type>
using ValueOf = typename std::remove_cvref_t<decltype(type)>::Value;

/// The outputs of a conversion, and the type whose they are. The conversions are templates over this: from a type that
/// the compiler knows they become code of that type's own. (Where size counts, any_type.hpp tells them another.)
template <const auto &declared>
struct OutputOf : Output {
    using Value = ValueOf<declared>;
    using Passed = Output; ///< what must be handed on of it: the compiler knows the rest
    static constexpr const auto &type = declared;
    static constexpr std::size_t size = sizeof(Value);

    /// The value in FormatOut's input, of which a type reads all or only what was passed.
    static Value read_value(u32 length, const void *data)
    {
        Value value;
        if (type.reads == Input::whole || length >= sizeof value) {
            std::memcpy(&value, data, sizeof value);
        } else {
            value = {};
            std::memcpy(&value, data, length);
        }
        return value;
    }
};

/// Delivers a value that was parsed.
template <class Out>
u32 deliver_value(const Context &context, Out out, const typename Out::Value &value)
{
    out.report(out.type.kind, out.size);
    void *const block = take(out.type.allocator, context, out.size);
    if (block == nullptr) {
        *out.length = 0;
        if (out.type.no_memory_clears_data)
            *out.data = nullptr;
        return SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(block, &value, out.size);
    *out.data = block;
    return SYSDT_OK;
}

/// Parses the text and delivers the value: FormatIn behind its screen.
template <class Out>
u32 parse_and_deliver(const Context &context, char *text, Out out)
{
    typename Out::Value value{};
    return out.type.parse(context.handle, text, value) == SYSDT_OK ? deliver_value(context, out, value)
                                                                   : out.type.refusal;
}

template <class Out>
u32 format_in(const Context *context, char *text, Out out)
{
    if (context == nullptr || text == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (const u32 refused = out.type.input.status(context->mode); refused != SYSDT_OK)
        return refused;
    return parse_and_deliver(*context, text, out);
}

/// Hands out the value's bytes as they are: FormatOut in mode 3 of the types that copy.
u32 copy_out(Allocator allocator, const Context &context, u32 length, const void *data, Output out);

/// A printer that is exported by itself: the text goes into a buffer of the caller's, its length is told.
template <std::size_t size, class Value, class Print>
u32 print_to_buffer(const Value *value, char *buffer, u32 *length, Print print)
{
    if (value == nullptr || buffer == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Writer out(buffer, size);
    const u32 status = print(*value, out);
    *length = out.finish();
    return status;
}

/// Prints the value into the caller's block or one of its own: FormatOut behind its screen.
template <class Out>
u32 print_out(const Context &context, u32 length, const void *data, typename Out::Passed passed)
{
    const Out out{passed};
    const auto &type = out.type;
    const bool own = *out.data == nullptr;
    void *const block = own ? take(type.allocator, context, type.block) : *out.data;
    if (block == nullptr) {
        out.report(0, 0);
        return SYSDT_ERR_NO_MEMORY;
    }
    Writer text(static_cast<char *>(block), type.limit);
    // A block of the caller's may hold the value itself, a short value must be completed: these are copied.
    const bool in_place = own && (type.reads == Input::whole || length >= out.size);
    const u32 status = in_place ? type.print(*static_cast<const typename Out::Value *>(data), context.mode, text)
                                : type.print(out.read_value(length, data), context.mode, text);
    const u32 printed = text.finish();
    if (status != SYSDT_OK && type.on_print_failure != OnPrintFailure::hand_back) {
        if (own || type.on_print_failure == OnPrintFailure::release) {
            SYS_DataTypeFree(block);
            *out.data = nullptr;
        }
        return status;
    }
    *out.data = block;
    if (status != SYSDT_OK)
        return status;
    if (type.mode3 == Mode3::bare_text && context.mode == 3)
        out.report(SYSDT_KIND_BINARY, printed);
    else
        out.report(SYSDT_KIND_STRING, printed + 1);
    return SYSDT_OK;
}

template <class Out>
u32 format_out(const Context *context, u32 length, const void *data, Out out)
{
    const auto &type = out.type;
    if (context == nullptr || data == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (type.clears_before_output)
        out.report(0, 0);
    if (const u32 refused = type.output.status(context->mode); refused != SYSDT_OK)
        return refused;
    if (type.mode3 == Mode3::copy && context->mode == 3)
        return copy_out(type.allocator, *context, length, data, out);
    return print_out<Out>(*context, length, data, out);
}

template <const auto &type>
u32 check(u32 length, const void *data)
{
    if (data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    ValueOf<type> value;
    if (length != sizeof value)
        return SYSDT_ERR_LENGTH;
    if constexpr (type.check != nullptr) {
        std::memcpy(&value, data, sizeof value);
        return type.check(value);
    }
    return SYSDT_OK;
}

/// Whether help is to be given; if not, `status` is Help's answer.
bool help_is_due(const HelpText &help, const Context *context, const HelpRequest *request, const HelpInfo *info,
                 u32 &status);

/// Stores the help text as the only entry of the help information.
u32 store_help(const HelpText &help, const Context &context, HelpInfo &info);

u32 give_help(const HelpText &help, const Context *context, const HelpRequest *request, HelpInfo *info);

/// Orders two values by their bytes: 1, 0 or -1.
i32 compare_bytes(u32 length, const void *first, const void *second);

/// LuaSet and LuaGet of a value of `size` bytes.
u32 set_script_value(void *state, i32 table, const char *name, u32 length, const void *data, std::size_t size,
                     const Layout &layout);
u32 get_script_value(void *state, i32 table, const char *name, u32 length, void *data, std::size_t size,
                     const Layout &layout);

} // namespace bgpdt
