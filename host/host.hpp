// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The stand-alone host: loads the plug-in as a router would and calls its records.
///
/// The services that the plug-in imports are defined with C linkage beside this class (host.h tells their contracts).
/// Everything here is independent of any particular type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)
#include "bgp_datatype/host.h"
#include "host/registration.hpp"
#include "host/script_record.hpp"

struct lua_State;

namespace bgpdt::host {

using Bytes = std::vector<std::uint8_t>;

/// What a conversion answered.
struct Converted {
    std::uint32_t status = 0; ///< 0 or a SYSDT_ERR_ code
    std::uint16_t kind = 0;   ///< the reported kind
    Bytes data;               ///< the delivered block's reported length; empty when nothing was delivered

    bool ok() const { return status == SYSDT_OK; }
    /// The text in `data`, without its terminating NUL.
    std::string_view text() const;
};

/// A plug-in that the program has in itself, where nothing can be loaded.
struct LinkedPlugin {
    struct Symbol {
        const char *name;
        void *address;
    };
    std::uint32_t (*entry)(std::uint32_t handle);
    std::span<const Symbol> symbols; ///< its tables
};

/// A loaded plug-in and the records it registered. Only one may live at a time: the services are the process's.
///
/// Conversions and what else calls a record's operations may run in several threads at once, those with script values
/// on a Lua state for each thread; no load_names() meanwhile, and no plug-in that raises diagnostics in its operations.
class Host {
public:
    /// Loads the plug-in and lets it register its types; by default all are taken.
    /// @throws HostError with the reason if it cannot be loaded, or another Host lives
    explicit Host(const std::filesystem::path &plugin, Admission admission = {});
    /// Lets a plug-in of the program's own register its types.
    /// @throws HostError as above
    explicit Host(const LinkedPlugin &plugin, Admission admission = {});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// The names behind the name-index types: lines of "INDEX NAME", comments behind '#'. They replace those of a
    /// file loaded before.
    /// @throws HostError with file and line; the names are then those from before
    void load_names(const std::filesystem::path &file);

    /// The registered records in the order of their registration.
    std::span<const SYSDT_Record *const> types() const;
    /// The record of that name, or null.
    const SYSDT_Record *find(std::string_view name) const;
    /// The diagnostics raised so far.
    std::span<const Diagnostic> diagnostics() const;
    /// An exported symbol of the plug-in, or null.
    void *symbol(const char *name) const;

    // The slot behind an operation must not be null. Where a type fails for want of memory, the status is
    // SYSDT_ERR_NO_MEMORY, whatever the type makes of it. Values shorter than the type's binary form are handed over with
    // their own length, but padded with zeros in memory, since types may read the whole form whatever the length says.

    /// The text is handed over as given (a copy; trimming does not reach the caller).
    Converted parse(const SYSDT_Record &type, std::string_view text, std::uint8_t mode);
    Converted print(const SYSDT_Record &type, std::span<const std::uint8_t> value, std::uint8_t mode);
    std::uint32_t check(const SYSDT_Record &type, std::span<const std::uint8_t> value);
    /// The length handed over is that of the shorter value.
    std::int32_t compare(const SYSDT_Record &type, std::span<const std::uint8_t> first,
                         std::span<const std::uint8_t> second);
    /// Swaps in place. SYSDT_ERR_LENGTH, without a call, for less than the type's binary form.
    std::uint32_t swap(const SYSDT_Record &type, std::span<std::uint8_t> value);
    /// The help texts; none when the mode gives none. A failure's status comes back in `status`.
    std::vector<std::string> help(const SYSDT_Record &type, std::uint8_t mode, std::uint32_t &status);

    /// Calls LuaSet so that the value's script form stands on top of the Lua stack; nothing is pushed on a failure.
    /// Engine errors raised inside the callback come back in `error`, and the status is then SYSDT_ERR_FAIL, or
    /// SYSDT_ERR_NO_MEMORY if the engine's memory is out.
    std::uint32_t push_script_value(lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> value,
                                    std::string &error);
    /// The same as plain data, without an engine: the status that the type answers, or nothing where only an engine can
    /// tell what comes of it.
    std::optional<std::uint32_t> record_script_value(ScriptRecord &record, const SYSDT_Record &type,
                                                     std::span<const std::uint8_t> value);
    /// Calls LuaGet on the script value on top of the Lua stack (left there) into a cleared buffer of `size` bytes.
    /// Errors come back as from push_script_value.
    std::uint32_t read_script_value(lua_State *lua, const SYSDT_Record &type, std::size_t size, Bytes &value,
                                    std::string &error);

private:
    struct State;
    State *state_;
};

/// A block that a thread lends to its conversions in place of one from the heap, again and again.
struct LentBlock {
    static constexpr std::size_t size = 4352; ///< holds what any of the router's types delivers

    bool taken = false;
    alignas(std::max_align_t) unsigned char bytes[size]; // left as they are: clearing them would cost more than a parse
};

/// What a Converter's conversion answered.
struct Delivery {
    std::uint32_t status = 0;
    std::uint16_t kind = 0;
    std::span<const std::uint8_t> data; ///< as Converted's, until the converter's next conversion

    bool ok() const { return status == SYSDT_OK; }
    std::string_view text() const;
};

/// Converts values of one type, in one mode and one thread at a time, without taking memory. Converters of other threads
/// do not meet it. The slot behind an operation must not be null.
class Converter {
public:
    /// @param type  of a living Host
    Converter(const SYSDT_Record &type, std::uint8_t mode);
    ~Converter();
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    /// @param text  characters with a NUL behind them, all of which may be changed
    Delivery parse(std::span<char> text);
    /// @param value  at least as long as the type's binary form
    Delivery print(std::span<const std::uint8_t> value);

private:
    template <class Call>
    Delivery convert(Call call);
    void release();

    const SYSDT_Record &type_;
    SYSDT_Context context_;
    LentBlock lent_;
    void *delivered_ = nullptr;
};

/// "SYSDT_ERR_FAIL" and its like; "0x801799" for what has no name.
std::string status_name(std::uint32_t status);

} // namespace bgpdt::host

#pragma GCC visibility pop
