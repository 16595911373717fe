// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The files that streams come from and go to. "-" is standard input or output.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "descriptor.hpp"
#include "replacement.hpp"

namespace bgpdt::tool {

/// What tells a file from others, whatever its name: of one that is not there yet, its folder and its name in it.
struct FileId {
    dev_t device;
    ino_t number;
    std::string name;

    bool operator==(const FileId &) const = default;
};

/// A piece of the input: whole lines, or a part of a line that no block holds.
class Block {
public:
    static constexpr std::size_t capacity = std::size_t{128} << 10;

    std::span<char> text() const { return {characters_.get(), size}; }

    std::size_t size = 0;
    std::size_t file = 0;     ///< which of the inputs
    std::uint64_t number = 0; ///< of the block, from 0
    bool begins = true;       ///< false if the line began in the block before
    bool ends = true;         ///< false if the line goes on in the next block

private:
    std::unique_ptr<char[]> characters_{new char[capacity + 1]}; ///< with room for a NUL
};

class Input {
public:
    /// @param names   none is standard input
    /// @param record  the size of a record; 0 if records are lines
    Input(std::vector<std::string> names, std::size_t record);

    /// The next block; false at the end of the last file.
    /// @throws UsageError
    bool next(Block &block);

    /// Ends a wait for input, in whatever thread it is; what is read from then on counts no more.
    void interrupt();

    const std::string &name(std::size_t file) const { return names_[file]; }
    /// Of all the files; nothing if one is no regular file.
    std::optional<std::uint64_t> size() const;
    /// Whether one of them is that file.
    bool reads(const FileId &file) const;

private:
    bool open_next();
    bool wait() const;
    std::size_t read(char *to, std::size_t count);
    std::size_t whole(std::string_view text) const;
    void cut(Block &block, std::size_t size);

    std::vector<std::string> names_;
    std::size_t record_;
    std::size_t opened_ = 0;
    std::uint64_t blocks_ = 0;
    Descriptor file_;
    Descriptor interruption_;
    bool within_line_ = false;
    std::size_t rest_size_ = 0;
    std::unique_ptr<char[]> rest_{new char[Block::capacity]}; ///< read, but of the next block
};

/// Standard output, a device, a pipe, or what one of the standard descriptors stands for, is written as it goes; any
/// other file is replaced when all is written, or stays as it is.
class Output {
public:
    /// What it is for is told in what is thrown.
    /// @throws UsageError
    Output(const std::string &name, std::string purpose);

    void write(std::string_view text);
    /// Makes sure that all has arrived, in its place.
    void close();

    int descriptor() const { return replacement_ ? replacement_->descriptor() : file_.number(); }
    const std::string &purpose() const { return purpose_; }
    bool is_replaced() const { return replacement_.has_value(); }
    /// Nothing of what is no regular file, and so may be written by many.
    const std::optional<FileId> &id() const { return id_; }

private:
    void replace(const std::string &name);
    void require(bool done) const;

    std::string purpose_;
    std::string place_; ///< its path in front of what is wrong with it
    Descriptor file_;
    std::optional<Replacement> replacement_;
    std::optional<FileId> id_;
};

} // namespace bgpdt::tool
