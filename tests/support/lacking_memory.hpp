// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A program whose memory can be refused: each request in turn. With it malloc and the like are the test's own.
#pragma once

#include <cstddef>
#include <functional>

// glibc's own, behind the functions that stand in front of it here.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace bgpdt::test {

/// Which requests are refused: the one of that number, from 1, alone or with all after it.
struct Fault {
    int number;
    bool alone;
};

/// Memory that can be refused.
class Memory {
public:
    void refuse(Fault fault)
    {
        fault_ = fault;
        requests_ = 0;
        refused_ = 0;
    }
    /// Whether anything was refused, which is over.
    bool relent()
    {
        fault_ = {};
        return refused_ != 0;
    }

    bool grants()
    {
        ++requests_;
        const bool refuses =
            fault_.alone ? requests_ == fault_.number : fault_.number != 0 && requests_ >= fault_.number;
        refused_ += refuses ? 1 : 0;
        return !refuses;
    }

    long blocks = 0; ///< taken and not given back

private:
    Fault fault_{};
    int requests_ = 0;
    int refused_ = 0;
};

/// What malloc and the like give.
extern Memory program_memory;

/// Tries with the first request refused, the second, ... until there is none of that number; each alone, then with all
/// that follow; a share of them under an emulator. Returns about how many there are.
int refuse_in_turn(const std::function<bool(Fault fault)> &meets);

} // namespace bgpdt::test
