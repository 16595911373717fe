// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Columns: values, texts or fields of many rows in blocks of memory, as Arrow lays them out, and what makes them.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "arrow.hpp"
#include "state.hpp"

namespace bgpdt::python {

/// Memory that grows at its end.
class Block {
public:
    Block() = default;
    Block(Block &&other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)),
          room_(std::exchange(other.room_, 0))
    {
    }
    Block &operator=(Block &&other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(room_, other.room_);
        return *this;
    }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;
    ~Block() { std::free(data_); }

    /// Makes room for more bytes, which are to be written.
    std::uint8_t *grow(std::size_t bytes)
    {
        if (bytes > room_ - size_)
            reserve(size_ + std::max(size_, bytes));
        size_ += bytes;
        return data_ + size_ - bytes;
    }
    template <class Number>
    void add(Number number)
    {
        std::memcpy(grow(sizeof number), &number, sizeof number);
    }
    std::uint8_t *data() { return data_; }
    const std::uint8_t *data() const { return data_; }
    std::size_t size() const { return size_; }

private:
    void reserve(std::size_t room)
    {
        auto *data = static_cast<std::uint8_t *>(std::realloc(data_, room));
        if (data == nullptr)
            throw std::bad_alloc();
        data_ = data;
        room_ = room;
    }

    std::uint8_t *data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
};

/// Rows of one format of Arrow's.
struct Rowset {
    std::string format; ///< "w:12" values, "U" texts, "L" numbers, "+s" fields
    std::string name = {};
    std::size_t count = 0;
    std::size_t missing = 0; ///< how many rows have nothing
    Block validity = {};     ///< bits
    Block fixed = {};        ///< of values and numbers
    Block offsets = {};      ///< of texts: 64-bit, one more than there are rows
    Block bytes = {};        ///< of texts
    std::vector<Rowset> fields = {};

    void note(bool there)
    {
        if (count % 8 == 0)
            *validity.grow(1) = 0;
        if (there)
            set_bit(validity.data(), count);
        missing += there ? 0 : 1;
        ++count;
    }
    bool has(std::size_t row) const { return has_bit(validity.data(), row); }
    void add_text(std::string_view text)
    {
        text.copy(reinterpret_cast<char *>(bytes.grow(text.size())), text.size());
        offsets.add(static_cast<std::uint64_t>(bytes.size()));
        note(true);
    }
    void add_no_text()
    {
        offsets.add(static_cast<std::uint64_t>(bytes.size()));
        note(false);
    }
    std::string_view text(std::size_t row) const
    {
        std::uint64_t ends[2];
        std::memcpy(ends, offsets.data() + row * sizeof ends[0], sizeof ends);
        return {reinterpret_cast<const char *>(bytes.data()) + ends[0], static_cast<std::size_t>(ends[1] - ends[0])};
    }
};

inline Rowset texts_named(std::string name)
{
    Rowset texts{"U", std::move(name)};
    texts.offsets.add(std::uint64_t{0});
    return texts;
}

/// The rows that a type refused, and what stood there.
struct Refused {
    std::vector<std::size_t> rows = {};
    Rowset texts = texts_named("text");
};

/// What a column holds. It never changes, and is shared with whoever imports it.
struct Content {
    Rowset rows;
    Refused refused = {};
};
using SharedContent = std::shared_ptr<const Content>;

/// The object of a column.
/// @param mode  in which its texts were parsed; null: it is none of parsed values
Ref new_column(Type &type, Content content, const bgpdt_type *parsed_by);
/// Makes the class.
Ref new_column_class(PyObject *module);

/// As capsules of Arrow's.
Ref schema_of(const SharedContent &content);
Ref array_of(const SharedContent &content);
Ref stream_of(const SharedContent &content);

/// bgpdt.parse_many, print_many and explain_many.
Ref parse_many(PyObject *module, const Call &call);
Ref print_many(PyObject *module, const Call &call);
Ref explain_many(PyObject *module, const Call &call);

} // namespace bgpdt::python
