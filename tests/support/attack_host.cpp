// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "attack_host.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

#include "bgp_datatype/host.h"
#include "bgp_datatype/values.h"
#include "script_value.hpp"

namespace bgpdt::test {

namespace {

constexpr std::uint8_t released_fill = 0xDD;

} // namespace

AttackHost &AttackHost::instance()
{
    static auto *host = new AttackHost;
    return *host;
}

void AttackHost::begin(Failing failing)
{
    blocks_.clear();
    problems_.clear();
    script_steps.clear();
    requests_.clear();
    help_clears = 0;
    failing_ = failing;
}

std::vector<std::string> AttackHost::settle()
{
    for (const Block &block : blocks_) {
        const auto fail_block = [&](const char *what) {
            fail("a block of " + std::to_string(block.memory.size()) + " bytes was " + what);
        };
        if (!block.memory.intact())
            fail_block("written beyond its ends");
        if (block.live && !block.lent())
            fail_block("neither delivered nor released");
        if (!block.live && block.memory.bytes() != Bytes(block.memory.size(), released_fill))
            fail_block("written after its release");
    }
    std::vector<std::string> problems;
    problems.swap(problems_);
    blocks_.clear();
    return problems;
}

void *AttackHost::lend(std::size_t size, Place place)
{
    blocks_.push_back({Guarded(size, place), std::nullopt, 0, true});
    return blocks_.back().memory.data();
}

const Block *AttackHost::find(const void *block) const
{
    const auto found = std::ranges::find_if(
        blocks_, [&](const Block &known) { return known.live && const_cast<Block &>(known).memory.data() == block; });
    return found == blocks_.end() ? nullptr : &*found;
}

std::optional<Bytes> AttackHost::collect(void *block)
{
    const Block *found = find(block);
    if (found == nullptr)
        return std::nullopt;
    Bytes bytes = found->memory.bytes();
    release(block);
    return bytes;
}

std::size_t AttackHost::live() const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(blocks_, [](const Block &block) { return block.live && !block.lent(); }));
}

bool AttackHost::refuses(Request request)
{
    requests_.push_back(request);
    return failing_.hits(requests_.size());
}

void *AttackHost::take(std::uint32_t size, std::optional<std::uint32_t> handle)
{
    if (refuses(Request::memory))
        return nullptr;
    blocks_.push_back({Guarded(size), handle, requests_.size(), true});
    return blocks_.back().memory.data();
}

void AttackHost::release(void *block)
{
    if (block == nullptr)
        return;
    auto *found = const_cast<Block *>(find(block));
    if (found == nullptr) {
        fail("a block was released that is not taken");
        return;
    }
    found->live = false;
    std::memset(found->memory.data(), released_fill, found->memory.size());
}

} // namespace bgpdt::test

namespace {

using bgpdt::test::AttackHost;
using bgpdt::test::Request;

/// The host's own service behind the one defined here.
template <class Function>
Function *forward(const char *name)
{
    auto *function = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
    if (function == nullptr)
        std::abort();
    return function;
}

/// The number on top of the stack, or the one below it, in brackets as a key.
std::string number_key(void *state, std::int32_t index)
{
    return "[" + std::to_string(SYSDT_SPTI_ToUInt(state, index)) + "]";
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

void *SYS_DataTypeMallocByHandle(uint32_t handle, uint32_t size) { return AttackHost::instance().take(size, handle); }

void *SYS_DataTypeMalloc(uint32_t size) { return AttackHost::instance().take(size, std::nullopt); }

void SYS_DataTypeFree(void *block) { AttackHost::instance().release(block); }

uint32_t SYSDT_InitHelpInfo(uint32_t handle, SYSDT_HelpInfo *info, uint32_t count)
{
    static_cast<void>(handle);
    if (AttackHost::instance().refuses(Request::help_record))
        return AttackHost::refusal;
    info->count = count;
    info->entries = static_cast<char **>(std::calloc(count, sizeof(char *)));
    return 0;
}

void SYSDT_ClearHelpInfo(SYSDT_HelpInfo *info)
{
    ++AttackHost::instance().help_clears;
    for (uint32_t i = 0; i < info->count; ++i)
        SYS_DataTypeFree(info->entries[i]);
    std::free(info->entries);
    *info = {};
}

uint32_t KPL_CheckBySymbolForIPV4(SYSDT_Context *, const SYSDT_HelpRequest *, SYSDT_HelpInfo *)
{
    return AttackHost::instance().refuses(Request::symbol_help) ? AttackHost::refusal : SYSDT_OK;
}

int32_t SYSDT_Ipv4Ipv6Compare(uint32_t length, const void *first, const void *second)
{
    static auto *const next = forward<decltype(SYSDT_Ipv4Ipv6Compare)>("SYSDT_Ipv4Ipv6Compare");
    if (length != sizeof(SYSDT_EvpnAddress))
        AttackHost::instance().fail("addresses were compared over " + std::to_string(length) + " bytes");
    return next(length, first, second);
}

void SYSDT_SPTI_CreateTable(void *state, int32_t array_slots, int32_t record_slots)
{
    static auto *const next = forward<decltype(SYSDT_SPTI_CreateTable)>("SYSDT_SPTI_CreateTable");
    AttackHost::instance().script_steps.push_back(bgpdt::test::room_text(array_slots, record_slots));
    next(state, array_slots, record_slots);
}

void SYSDT_SPTI_SetField(void *state, int32_t index, const char *key)
{
    static auto *const next = forward<decltype(SYSDT_SPTI_SetField)>("SYSDT_SPTI_SetField");
    AttackHost::instance().script_steps.emplace_back(key);
    next(state, index, key);
}

void SYSDT_SPTI_SetTable(void *state, int32_t index)
{
    static auto *const next = forward<decltype(SYSDT_SPTI_SetTable)>("SYSDT_SPTI_SetTable");
    AttackHost::instance().script_steps.push_back(number_key(state, -2));
    next(state, index);
}

} // extern "C"
#pragma GCC visibility pop
