// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "memory.hpp"

#include <algorithm>
#include <cstring>

#include "bgp_datatype/host.h"
#include "property.hpp"

#if __has_feature(address_sanitizer)
#include <sanitizer/asan_interface.h>
#endif

namespace bgpdt::fuzzing {

namespace {

constexpr std::uint8_t canary = 0xC3;

// AddressSanitizer sees every step into a gap at once; without it the gaps hold canaries, which are looked at in the
// end.
#if __has_feature(address_sanitizer)
constexpr bool poisons = true;
void close(const void *from, std::size_t size) { ASAN_POISON_MEMORY_REGION(from, size); }
void open(const void *from, std::size_t size) { ASAN_UNPOISON_MEMORY_REGION(from, size); }
#else
constexpr bool poisons = false;
void close(void *from, std::size_t size) { std::memset(from, canary, size); }
void open(const void *, std::size_t) {}
#endif

std::size_t rounded(std::size_t size) { return (size + 7) / 8 * 8; }

} // namespace

Memory &Memory::instance()
{
    static auto *const memory = new Memory; // lives as long as the process
    return *memory;
}

Memory::Memory() { close(bytes_.data(), bytes_.size()); }

void Memory::reset()
{
    close(bytes_.data(), used_);
    count_ = 0;
    used_ = gap;
    taken_ = 0;
    begin(0);
}

void Memory::begin(std::uint8_t fill, Failing failing)
{
    fill_ = fill;
    failing_ = failing;
    failed_ = false;
    requests_ = 0;
}

Block &Memory::reserve(std::size_t size, Owner owner, std::size_t shift)
{
    const std::size_t room = rounded(size + shift) + gap;
    require(count_ < blocks_.size() && room <= bytes_.size() - used_, "a conversion takes a bounded amount of memory");
    Block &block = blocks_[count_++];
    block = {bytes_.data() + used_ + shift, size, owner, true};
    open(bytes_.data() + used_, size + shift);
    used_ += room;
    return block;
}

std::uint8_t *Memory::place(std::span<const std::uint8_t> bytes, bool odd)
{
    Block &block = reserve(bytes.size(), Owner::caller, odd ? 1 : 0);
    std::copy(bytes.begin(), bytes.end(), block.data);
    return block.data;
}

std::uint8_t *Memory::lend(std::size_t size)
{
    Block &block = reserve(size, Owner::caller);
    std::memset(block.data, fill_, size);
    return block.data;
}

Block *Memory::find_live(const void *block)
{
    // Blocks are released about as they were taken: the last first.
    for (std::size_t i = count_; i-- > 0;)
        if (blocks_[i].data == block && blocks_[i].live)
            return &blocks_[i];
    return nullptr;
}

const Block *Memory::find(const void *block) const { return const_cast<Memory *>(this)->find_live(block); }

const Block *Memory::collect(const void *block)
{
    Block *const found = find_live(block);
    if (found != nullptr) {
        taken_ -= found->owner == Owner::caller ? 0 : 1;
        found->live = false;
    }
    return found;
}

bool Memory::intact() const
{
    if (poisons)
        return true;
    const auto whole = [](const std::uint8_t *from, const std::uint8_t *to) {
        return std::all_of(from, to, [](std::uint8_t byte) { return byte == canary; });
    };
    const std::uint8_t *at = bytes_.data();
    for (std::size_t i = 0; i < count_; ++i) {
        const Block &block = blocks_[i];
        if (!whole(at, block.data))
            return false;
        at = block.data + block.size;
    }
    return whole(at, bytes_.data() + used_);
}

void *Memory::take(std::uint32_t size, Owner owner)
{
    ++requests_;
    if (failing_.first != 0 && (requests_ == failing_.first || (failing_.onward && requests_ > failing_.first))) {
        failed_ = true;
        return nullptr;
    }
    ++taken_;
    Block &block = reserve(size, owner);
    std::memset(block.data, fill_, size);
    return block.data;
}

void Memory::release(void *block)
{
    if (block == nullptr)
        return;
    Block *const found = find_live(block);
    require(found != nullptr, "only a block that is taken is released");
    taken_ -= found->owner == Owner::caller ? 0 : 1;
    found->live = false;
    if (poisons)
        close(found->data, found->size);
}

} // namespace bgpdt::fuzzing

using bgpdt::fuzzing::Memory;
using bgpdt::fuzzing::Owner;
using bgpdt::fuzzing::require;

// In front of the host's own.
#pragma GCC visibility push(default)

void *SYS_DataTypeMallocByHandle(uint32_t handle, uint32_t size)
{
    require(handle == Memory::owner_handle, "memory is taken with the context's handle");
    return Memory::instance().take(size, Owner::handle);
}

void *SYS_DataTypeMalloc(uint32_t size) { return Memory::instance().take(size, Owner::plain); }

void SYS_DataTypeFree(void *block) { Memory::instance().release(block); }

#pragma GCC visibility pop
