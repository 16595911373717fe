// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The rows of whatever Python calls a column: a list, an array of Arrow's, anything that can be walked through.
#pragma once

#include <array>
#include <memory>
#include <string_view>
#include <vector>

#include "arrow.hpp"
#include "state.hpp"

namespace bgpdt::python {

/// Some rows of a column, copied: what changes the column meanwhile does not reach them.
class Chunk {
public:
    static constexpr std::size_t most = 8192;

    void clear()
    {
        count_ = 0;
        used_ = 0;
        validity_ = {};
    }
    bool is_full() const { return count_ == most; }
    std::size_t count() const { return count_; }

    void add(std::string_view row)
    {
        if (row.size() > bytes_.size() - used_)
            bytes_.resize(2 * (used_ + row.size()));
        row.copy(bytes_.data() + used_, row.size());
        used_ += row.size();
        set_bit(validity_.data(), count_);
        offsets_[++count_] = used_;
    }
    void add_none() { offsets_[++count_] = used_; }

    bool has(std::size_t row) const { return has_bit(validity_.data(), row); }
    std::string_view at(std::size_t row) const
    {
        return {bytes_.data() + offsets_[row], static_cast<std::size_t>(offsets_[row + 1] - offsets_[row])};
    }
    /// As the library takes a column.
    bgpdt_column column() const
    {
        return {sizeof(bgpdt_column), count_,        offsets_.data(), sizeof offsets_[0],
                bytes_.data(),        bytes_.size(), validity_.data()};
    }

private:
    std::size_t count_ = 0;
    std::size_t used_ = 0;
    std::array<std::uint64_t, most + 1> offsets_{};
    std::array<std::uint8_t, most / 8> validity_{};
    std::vector<char> bytes_ = std::vector<char>(16 * most);
};

enum class Wanted : std::uint8_t { texts, values };

/// What gives rows.
class Rows {
public:
    Rows() = default;
    virtual ~Rows() = default;
    Rows(const Rows &) = delete;
    Rows &operator=(const Rows &) = delete;

    /// Adds the next rows to the chunk, until it is full or there are no more.
    /// @throws Raised
    virtual void fill(Chunk &chunk) = 0;
};

/// @throws Raised: TypeError for what is no column
std::unique_ptr<Rows> rows_of(const Type &type, PyObject *column, Wanted wanted);

/// Those of what speaks Arrow's C data interface; null for anything else.
std::unique_ptr<Rows> arrow_rows(PyObject *column);

} // namespace bgpdt::python
