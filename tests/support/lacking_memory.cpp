// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "lacking_memory.hpp"

#include <gtest/gtest.h>

#include "share.hpp"

// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace bgpdt::test {

Memory program_memory;

namespace {

void *counted(void *block)
{
    program_memory.blocks += block != nullptr ? 1 : 0;
    return block;
}

} // namespace

int refuse_in_turn(const std::function<bool(Fault fault)> &meets)
{
    int met = 0;
    const int step = static_cast<int>(small_share());
    for (const bool alone : {true, false}) {
        for (int number = 1; meets({number, alone}); number += step) {
            met += step;
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "with request " << number << (alone ? " refused" : " and all after it refused");
                return met;
            }
        }
    }
    return met;
}

} // namespace bgpdt::test

using bgpdt::test::counted;
using bgpdt::test::program_memory;

#pragma GCC visibility push(default) // clang would keep them to the program
extern "C" {

void *malloc(std::size_t size) { return program_memory.grants() ? counted(__libc_malloc(size)) : nullptr; }

void *calloc(std::size_t count, std::size_t size)
{
    return program_memory.grants() ? counted(__libc_calloc(count, size)) : nullptr;
}

void *realloc(void *block, std::size_t size)
{
    if (!program_memory.grants())
        return nullptr;
    return block == nullptr ? counted(__libc_realloc(block, size)) : __libc_realloc(block, size);
}

void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    return program_memory.grants() ? counted(__libc_memalign(alignment, size)) : nullptr;
}

void free(void *block)
{
    program_memory.blocks -= block != nullptr ? 1 : 0;
    __libc_free(block);
}
}
#pragma GCC visibility pop
