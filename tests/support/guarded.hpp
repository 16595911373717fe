// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Bytes whose every neighbour is watched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace bgpdt::test {

using Bytes = std::vector<std::uint8_t>;

/// Where the bytes stand on their pages.
enum class Place {
    end, ///< their last byte is the last of the page: an inaccessible page follows
    odd, ///< at an odd address behind the page's first byte
};

/// Bytes between inaccessible pages, with canaries on what is left of their own. Pages are used again.
class Guarded {
public:
    static constexpr std::uint8_t poison = 0xA5; ///< what fresh bytes hold

    explicit Guarded(std::size_t size, Place place = Place::end, std::uint8_t fill = poison);
    explicit Guarded(std::span<const std::uint8_t> content, Place place = Place::end);
    ~Guarded();
    Guarded(Guarded &&other) noexcept;
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;
    Guarded &operator=(Guarded &&) = delete;

    std::uint8_t *data() { return pages_.writable + offset_; }
    /// The same bytes through a read-only mapping.
    const std::uint8_t *constant() const { return pages_.readable + offset_; }
    std::size_t size() const { return size_; }
    Bytes bytes() const { return {constant(), constant() + size_}; }
    /// Whether the neighbours are as they were.
    bool intact() const;

    /// Two views of one memory, of `size` bytes between inaccessible pages.
    struct Pages {
        std::uint8_t *writable;
        const std::uint8_t *readable;
        std::size_t size;
    };

private:
    std::span<std::uint8_t> before();
    std::span<std::uint8_t> behind();

    Pages pages_;
    std::size_t offset_;
    std::size_t size_;
};

/// An address that nothing may touch.
void *forbidden_address();

/// Runs the action; what is wrong if it touched memory that it must not, else empty. The action's frames are left
/// without running destructors then.
std::string memory_fault(const std::function<void()> &action);

} // namespace bgpdt::test
