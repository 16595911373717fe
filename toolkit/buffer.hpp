// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Characters on their way out. Room is made once for many small pieces, without clearing it.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace bgpdt::toolkit {

class Buffer {
public:
    Buffer() = default;
    Buffer(const Buffer &other) { append(other.text()); }
    Buffer(Buffer &&other) noexcept
        : characters_(std::move(other.characters_)), size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0))
    {
    }
    Buffer &operator=(Buffer other) noexcept
    {
        characters_.swap(other.characters_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }
    ~Buffer() = default;

    /// Room for so many characters behind those that there are; grown() takes them.
    char *room(std::size_t count)
    {
        if (capacity_ - size_ < count)
            grow(count);
        return characters_.get() + size_;
    }
    void grown(std::size_t count) { size_ += count; }

    void append(std::string_view text)
    {
        if (!text.empty()) {
            std::memcpy(room(text.size()), text.data(), text.size());
            grown(text.size());
        }
    }
    void append(char character)
    {
        *room(1) = character;
        grown(1);
    }
    /// Leaves so many characters.
    void cut(std::size_t size) { size_ = size; }
    void clear() { size_ = 0; }

    std::size_t size() const { return size_; }
    std::string_view text() const { return {characters_.get(), size_}; }

private:
    [[gnu::noinline]] void grow(std::size_t count)
    {
        constexpr std::size_t smallest = 256;
        const std::size_t capacity = std::max({smallest, 2 * capacity_, size_ + count});
        std::unique_ptr<char[]> larger(new char[capacity]);
        if (size_ != 0)
            std::memcpy(larger.get(), characters_.get(), size_);
        characters_ = std::move(larger);
        capacity_ = capacity;
    }

    std::unique_ptr<char[]> characters_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace bgpdt::toolkit
