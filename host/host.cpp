// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "host/host.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <lua.hpp>
#include <memory>
#include <utility>

#include "host/registry.hpp"
#include "host/thread_memory.hpp"

namespace bgpdt::host {
namespace {

constexpr const char *entry_name = "Bgp_InitDataType";

struct BlockRelease {
    void operator()(void *block) const { SYS_DataTypeFree(block); }
};

struct HelpRelease {
    void operator()(SYSDT_HelpInfo *info) const { SYSDT_ClearHelpInfo(info); }
};

SYSDT_Context context_of(std::uint8_t mode)
{
    SYSDT_Context context{};
    context.mode = mode;
    context.handle = Registry::handle;
    return context;
}

/// A value as callbacks may read it: never null, and as long as the type's binary form at least.
class Readable {
public:
    Readable(const SYSDT_Record &type, std::span<const std::uint8_t> value) : data_(value.data())
    {
        if (value.empty() || value.size() < type.dataLength) {
            padded_.assign(value.begin(), value.end());
            padded_.resize(std::max<std::size_t>(type.dataLength, 1));
            data_ = padded_.data();
        }
    }
    const void *data() const { return data_; }

private:
    Bytes padded_;
    const std::uint8_t *data_;
};

std::uint32_t length_of(std::span<const std::uint8_t> value) { return static_cast<std::uint32_t>(value.size()); }

/// Sees that a type that asked for memory in vain fails for that, whatever it makes of it.
class MemoryWatch {
public:
    MemoryWatch() { thread_memory.refused = false; }
    std::uint32_t status(std::uint32_t answered, bool delivered = true) const
    {
        const bool failed = answered != SYSDT_OK || !delivered;
        return failed && thread_memory.refused ? SYSDT_ERR_NO_MEMORY : answered;
    }
};

/// What a conversion callback writes to.
struct Outputs {
    std::uint16_t kind = 0;
    std::uint16_t length = 0;
    void *data = nullptr;

    /// Takes the block over and releases it.
    Converted take(std::uint32_t status) const
    {
        const std::unique_ptr<void, BlockRelease> block(data);
        Converted converted{status, kind, {}};
        if (status == SYSDT_OK && data != nullptr) {
            const auto *const bytes = static_cast<const std::uint8_t *>(data);
            converted.data.assign(bytes, bytes + length);
        }
        return converted;
    }
};

/// A script callback on its way through the engine: plain data, since errors cross it by longjmp.
struct ScriptCall {
    const SYSDT_Record *type;
    std::uint32_t length;
    const void *source;
    void *destination;
    std::uint32_t status;
};

constexpr const char *script_field = "value";
constexpr int call_index = 1; // where an engine function finds its ScriptCall

ScriptCall &call_of(lua_State *lua) { return *static_cast<ScriptCall *>(lua_touserdata(lua, call_index)); }

/// Engine function: LuaSet into a fresh table; returns the field.
int set_in_engine(lua_State *lua)
{
    ScriptCall &call = call_of(lua);
    lua_createtable(lua, 0, 1);
    const int holder = lua_gettop(lua);
    call.status = call.type->luaSet(lua, holder, script_field, 0, call.length, call.source);
    lua_settop(lua, holder); // what the callback left takes the field's room
    lua_getfield(lua, holder, script_field);
    return 1;
}

/// Engine function: LuaGet of its second argument, put into a fresh table.
int get_in_engine(lua_State *lua)
{
    ScriptCall &call = call_of(lua);
    lua_createtable(lua, 0, 1);
    lua_insert(lua, -2);
    lua_setfield(lua, -2, script_field);
    call.status = call.type->luaGet(lua, lua_gettop(lua), script_field, 0, call.length, call.destination);
    return 0;
}

/// Runs an engine function on the call and the arguments on top of the stack: pops them, pushes the results.
/// A failure, with the error and without results, when the engine raised one.
std::uint32_t run(lua_State *lua, lua_CFunction function, ScriptCall &call, int arguments, int results,
                  std::string &error)
{
    lua_pushcfunction(lua, function);
    lua_insert(lua, -1 - arguments);
    lua_pushlightuserdata(lua, &call);
    lua_insert(lua, -1 - arguments);
    const MemoryWatch memory;
    const int outcome = lua_pcall(lua, arguments + 1, results, 0);
    call.status = memory.status(call.status);
    if (outcome == LUA_OK)
        return SYSDT_OK;
    error = lua_type(lua, -1) == LUA_TSTRING ? lua_tostring(lua, -1)
                                             : std::string("an error of type ") + luaL_typename(lua, -1);
    lua_pop(lua, 1);
    return outcome == LUA_ERRMEM ? SYSDT_ERR_NO_MEMORY : SYSDT_ERR_FAIL;
}

/// Values that a script call pushes before the engine takes care of its own stack.
constexpr int call_slots = 4;

bool has_room(lua_State *lua, std::string &error)
{
    error.clear();
    if (lua_checkstack(lua, call_slots) == 0) {
        error = "the script stack is full";
        return false;
    }
    return true;
}

std::string loader_message()
{
    const char *const message = dlerror();
    return message != nullptr ? message : "the loader gives no reason";
}

/// Where the module that holds the address begins.
const void *module_base(const void *address)
{
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

std::string_view text_of(std::span<const std::uint8_t> data)
{
    std::string_view all(reinterpret_cast<const char *>(data.data()), data.size());
    if (all.ends_with('\0'))
        all.remove_suffix(1);
    return all;
}

/// Lends the block while it lives.
class Loan {
public:
    explicit Loan(LentBlock &block) : before_(std::exchange(thread_memory.lent, &block)) {}
    ~Loan() { thread_memory.lent = before_; }
    Loan(const Loan &) = delete;
    Loan &operator=(const Loan &) = delete;

private:
    LentBlock *const before_;
};

} // namespace

std::string_view Converted::text() const { return text_of(data); }

std::string_view Delivery::text() const { return text_of(data); }

struct Host::State {
    using Entry = std::uint32_t(std::uint32_t);

    explicit State(Admission admission)
    {
        if (host::registry != nullptr)
            throw HostError("another host lives in this process: the services can belong to one plug-in only");
        registry.admission = std::move(admission);
        host::registry = &registry;
    }
    ~State()
    {
        host::registry = nullptr;
        if (module != nullptr)
            dlclose(module);
    }
    State(const State &) = delete;
    State &operator=(const State &) = delete;

    void load(const std::filesystem::path &plugin)
    {
        // An absolute path keeps the loader from searching its own folders for a bare file name.
        module = dlopen(std::filesystem::absolute(plugin).c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr)
            throw HostError("cannot load the plug-in: " + loader_message());
        void *const entry = dlsym(module, entry_name);
        if (entry == nullptr)
            throw HostError(plugin.string() + " is no plug-in of data types: it does not export " + entry_name);
        base = module_base(entry);
        initialize(reinterpret_cast<Entry *>(entry), plugin.string());
    }

    void initialize(Entry *entry, const std::string &name)
    {
        const std::uint32_t status = entry(Registry::handle);
        if (registry.failure)
            std::rethrow_exception(registry.failure);
        if (status != SYSDT_OK)
            throw HostError(name + " could not be initialized: " + entry_name + " answered " + status_name(status));
    }

    void *loaded_symbol(const char *name) const
    {
        void *const address = dlsym(module, name); // looks into the modules that the plug-in needs, too
        return address != nullptr && module_base(address) == base ? address : nullptr;
    }

    void *linked_symbol(const char *name) const
    {
        const auto has_name = [name](const LinkedPlugin::Symbol &row) { return std::string_view(row.name) == name; };
        const auto found = std::ranges::find_if(symbols, has_name);
        return found == symbols.end() ? nullptr : found->address;
    }

    Registry registry;
    void *module = nullptr; ///< null for a plug-in of the program's own
    const void *base = nullptr;
    std::span<const LinkedPlugin::Symbol> symbols;
};

Host::Host(const std::filesystem::path &plugin, Admission admission)
{
    auto state = std::make_unique<State>(std::move(admission));
    state->load(plugin);
    state_ = state.release();
}

Host::Host(const LinkedPlugin &plugin, Admission admission)
{
    auto state = std::make_unique<State>(std::move(admission));
    state->symbols = plugin.symbols;
    state->initialize(plugin.entry, "the plug-in");
    state_ = state.release();
}

Host::~Host() { delete state_; }

void Host::load_names(const std::filesystem::path &file) { state_->registry.names = Names(file); }

std::span<const SYSDT_Record *const> Host::types() const { return state_->registry.records; }

const SYSDT_Record *Host::find(std::string_view name) const
{
    const auto has_name = [name](const SYSDT_Record *record) {
        return std::string_view(record->name, strnlen(record->name, sizeof record->name)) == name;
    };
    const auto &records = state_->registry.records;
    const auto found = std::find_if(records.begin(), records.end(), has_name);
    return found == records.end() ? nullptr : *found;
}

std::span<const Diagnostic> Host::diagnostics() const { return state_->registry.diagnostics; }

void *Host::symbol(const char *name) const
{
    return state_->module != nullptr ? state_->loaded_symbol(name) : state_->linked_symbol(name);
}

Converted Host::parse(const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    std::string copy(text);
    SYSDT_Context context = context_of(mode);
    Outputs out;
    const MemoryWatch memory;
    const auto length = static_cast<std::uint32_t>(copy.size() + 1);
    const std::uint32_t status = type.formatIn(&context, 0, length, copy.data(), &out.kind, &out.length, &out.data);
    return out.take(memory.status(status, out.data != nullptr));
}

Converted Host::print(const SYSDT_Record &type, std::span<const std::uint8_t> value, std::uint8_t mode)
{
    const Readable readable(type, value);
    SYSDT_Context context = context_of(mode);
    Outputs out;
    const MemoryWatch memory;
    const std::uint32_t status =
        type.formatOut(&context, type.typeId, length_of(value), readable.data(), &out.kind, &out.length, &out.data);
    return out.take(memory.status(status, out.data != nullptr));
}

std::uint32_t Host::check(const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    const Readable readable(type, value);
    return type.check(&type, 0, length_of(value), readable.data());
}

std::int32_t Host::compare(const SYSDT_Record &type, std::span<const std::uint8_t> first,
                           std::span<const std::uint8_t> second)
{
    const Readable readable_first(type, first);
    const Readable readable_second(type, second);
    return type.compare(&type, std::min(length_of(first), length_of(second)), readable_first.data(),
                        readable_second.data());
}

std::uint32_t Host::swap(const SYSDT_Record &type, std::span<std::uint8_t> value)
{
    if (value.size() < type.dataLength)
        return SYSDT_ERR_LENGTH;
    SYSDT_Context context = context_of(0);
    return type.endian(&context, 0, 0, value.data());
}

std::vector<std::string> Host::help(const SYSDT_Record &type, std::uint8_t mode, std::uint32_t &status)
{
    SYSDT_Context context = context_of(mode);
    const SYSDT_HelpRequest request{1, 1};
    SYSDT_HelpInfo info{};
    const MemoryWatch memory;
    status = type.help(&context, 0, 0, &request, &request, &info);
    status = memory.status(status, info.entries != nullptr);
    const std::unique_ptr<SYSDT_HelpInfo, HelpRelease> release(&info);
    std::vector<std::string> texts;
    const std::uint32_t count = status == SYSDT_OK && info.entries != nullptr ? info.count : 0;
    for (std::uint32_t i = 0; i < count; ++i)
        if (info.entries[i] != nullptr)
            texts.emplace_back(info.entries[i]);
    return texts;
}

std::uint32_t Host::push_script_value(lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> value,
                                      std::string &error)
{
    if (!has_room(lua, error))
        return SYSDT_ERR_FAIL;
    const Readable readable(type, value);
    ScriptCall call{&type, length_of(value), readable.data(), nullptr, SYSDT_ERR_FAIL};
    if (const std::uint32_t status = run(lua, set_in_engine, call, 0, 1, error); status != SYSDT_OK)
        return status;
    if (call.status != SYSDT_OK)
        lua_pop(lua, 1);
    return call.status;
}

std::optional<std::uint32_t> Host::record_script_value(ScriptRecord &record, const SYSDT_Record &type,
                                                       std::span<const std::uint8_t> value)
{
    const Readable readable(type, value);
    const MemoryWatch memory;
    record.begin();
    ScriptRecord *const before = std::exchange(script_record, &record);
    const std::uint32_t answered =
        type.luaSet(&record, record.top(), script_field, 0, length_of(value), readable.data());
    script_record = before;
    if (record.memory_out())
        return SYSDT_ERR_NO_MEMORY;
    if (!record.is_complete())
        return {};
    const std::uint32_t status = memory.status(answered);
    return status != SYSDT_OK || record.finish(script_field) ? std::optional(status) : std::nullopt;
}

std::uint32_t Host::read_script_value(lua_State *lua, const SYSDT_Record &type, std::size_t size, Bytes &value,
                                      std::string &error)
{
    value.assign(std::max<std::size_t>(size, 1), 0); // never a null pointer
    ScriptCall call{&type, static_cast<std::uint32_t>(size), nullptr, value.data(), SYSDT_ERR_FAIL};
    std::uint32_t status = SYSDT_ERR_FAIL;
    if (has_room(lua, error)) {
        lua_pushvalue(lua, -1);
        status = run(lua, get_in_engine, call, 1, 0, error);
    }
    value.resize(size);
    return status == SYSDT_OK ? call.status : status;
}

Converter::Converter(const SYSDT_Record &type, std::uint8_t mode) : type_(type), context_(context_of(mode)) {}

Converter::~Converter() { release(); }

inline void Converter::release()
{
    void *const block = std::exchange(delivered_, nullptr);
    if (block == lent_.bytes)
        lent_.taken = false;
    else if (block != nullptr)
        SYS_DataTypeFree(block);
}

template <class Call>
Delivery Converter::convert(Call call)
{
    const Loan loan(lent_);
    release();
    Outputs out;
    const MemoryWatch memory;
    const std::uint32_t answered = call(out);
    const std::uint32_t status = memory.status(answered, out.data != nullptr);
    delivered_ = out.data;
    const auto *const bytes = static_cast<const std::uint8_t *>(out.data);
    const bool complete = status == SYSDT_OK && bytes != nullptr;
    return {status, out.kind, {bytes, complete ? out.length : std::size_t{0}}};
}

Delivery Converter::parse(std::span<char> text)
{
    return convert([&](Outputs &out) {
        const auto length = static_cast<std::uint32_t>(text.size() + 1);
        return type_.formatIn(&context_, 0, length, text.data(), &out.kind, &out.length, &out.data);
    });
}

Delivery Converter::print(std::span<const std::uint8_t> value)
{
    return convert([&](Outputs &out) {
        return type_.formatOut(&context_, type_.typeId, length_of(value), value.data(), &out.kind, &out.length,
                               &out.data);
    });
}

std::string status_name(std::uint32_t status)
{
    struct Name {
        std::uint32_t status;
        const char *name;
    };
    static constexpr std::array names{
        Name{SYSDT_OK, "SYSDT_OK"},
        Name{SYSDT_ERR_FAIL, "SYSDT_ERR_FAIL"},
        Name{SYSDT_ERR_NULL_PTR, "SYSDT_ERR_NULL_PTR"},
        Name{SYSDT_ERR_NO_MEMORY, "SYSDT_ERR_NO_MEMORY"},
        Name{SYSDT_ERR_PARAM, "SYSDT_ERR_PARAM"},
        Name{SYSDT_ERR_UNSUPPORTED, "SYSDT_ERR_UNSUPPORTED"},
        Name{SYSDT_ERR_LENGTH, "SYSDT_ERR_LENGTH"},
        Name{SYSDT_ERR_INVALID_VALUE, "SYSDT_ERR_INVALID_VALUE"},
        Name{SYSDT_ERR_MISMATCH, "SYSDT_ERR_MISMATCH"},
        Name{SYSDT_ERR_OUTPUT, "SYSDT_ERR_OUTPUT"},
        Name{SYSDT_ERR_TOO_LONG, "SYSDT_ERR_TOO_LONG"},
    };
    for (const Name &known : names)
        if (known.status == status)
            return known.name;
    char digits[] = "0x00000000";
    (void)std::snprintf(digits, sizeof digits, "0x%06lX", static_cast<unsigned long>(status));
    return digits;
}

} // namespace bgpdt::host
