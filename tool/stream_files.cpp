// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "stream_files.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <utility>

#include "errors.hpp"
#include "toolkit/shown_text.hpp"

namespace bgpdt::tool {
namespace {

constexpr std::string_view standard = "-";

std::optional<struct stat> regular_file(int descriptor)
{
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? std::optional(status) : std::nullopt;
}

std::optional<struct stat> regular_file(const std::filesystem::path &path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? std::optional(status) : std::nullopt;
}

/// As it will be opened.
std::optional<struct stat> regular_input(const std::string &name)
{
    return name == standard ? regular_file(STDIN_FILENO) : regular_file(std::filesystem::path(name));
}

std::optional<FileId> id_of(const std::optional<struct stat> &file)
{
    return file ? std::optional(FileId{file->st_dev, file->st_ino, {}}) : std::nullopt;
}

/// Nothing, with errno, if its folder is not there.
std::optional<FileId> id_of_new(const std::filesystem::path &path)
{
    const std::string folder = path.has_parent_path() ? path.parent_path().string() : ".";
    struct stat status {};
    return stat(folder.c_str(), &status) == 0
               ? std::optional(FileId{status.st_dev, status.st_ino, path.filename().string()})
               : std::nullopt;
}

[[noreturn]] void fail_reading(const std::string &name)
{
    throw UsageError(name + " cannot be read: " + std::strerror(errno));
}

} // namespace

Input::Input(std::vector<std::string> names, std::size_t record)
    : names_(std::move(names)), record_(record), interruption_(eventfd(0, EFD_CLOEXEC))
{
    if (names_.empty())
        names_.emplace_back(standard);
}

bool Input::open_next()
{
    if (opened_ == names_.size())
        return false;
    const std::string &name = names_[opened_++];
    file_ = Descriptor(name == standard ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file_.is_open())
        fail_reading(name);
    static_cast<void>(posix_fadvise(file_.number(), 0, 0, POSIX_FADV_SEQUENTIAL));
    return true;
}

void Input::interrupt() { static_cast<void>(eventfd_write(interruption_.number(), 1)); }

/// Waits for something to read. False if that is interrupted for good.
bool Input::wait() const
{
    pollfd ready[] = {{interruption_.number(), POLLIN, 0}, {file_.number(), POLLIN, 0}};
    while (::poll(ready, std::size(ready), -1) < 0 && errno == EINTR) {
    }
    return (ready[0].revents & POLLIN) == 0;
}

std::size_t Input::read(char *to, std::size_t count)
{
    ssize_t size = 0;
    do {
        size = wait() ? ::read(file_.number(), to, count) : 0;
    } while (size < 0 && (errno == EINTR || errno == EAGAIN));
    if (size < 0)
        fail_reading(names_[opened_ - 1]);
    return static_cast<std::size_t>(size);
}

/// How much of the text is whole records; of a line that goes on from the block before, its end alone.
std::size_t Input::whole(std::string_view text) const
{
    if (record_ != 0)
        return text.size() - text.size() % record_;
    const std::size_t end = within_line_ ? text.find('\n') : text.rfind('\n');
    return end == std::string_view::npos ? 0 : end + 1;
}

/// Keeps what is behind the size for the next block.
void Input::cut(Block &block, std::size_t size)
{
    rest_size_ = block.size - size;
    std::memcpy(rest_.get(), block.text().data() + size, rest_size_);
    block.size = size;
    block.begins = !std::exchange(within_line_, !block.ends);
    block.file = opened_ - 1;
    block.number = blocks_++;
}

bool Input::next(Block &block)
{
    char *const text = block.text().data();
    std::memcpy(text, rest_.get(), rest_size_);
    block.size = rest_size_;
    block.ends = true;
    std::size_t searched = 0;
    while (true) {
        // What was searched before holds no end of a line; of records the sum counts.
        const std::string_view fresh(text + searched, block.size - searched);
        const std::size_t found = record_ != 0 ? whole({text, block.size}) : whole(fresh);
        if (found != 0) {
            cut(block, found + (record_ != 0 ? 0 : searched));
            return true;
        }
        if (block.size == Block::capacity) {
            block.ends = false;
            cut(block, block.size);
            return true;
        }
        searched = block.size;
        const std::size_t added = file_.is_open() ? read(text + block.size, Block::capacity - block.size) : 0;
        block.size += added;
        if (added != 0)
            continue;
        static_cast<void>(file_.close());
        if (block.size != 0 || within_line_) {
            cut(block, block.size); // a last line without an end, or nothing but its end; a part of a record
            return true;
        }
        if (!open_next())
            return false;
    }
}

std::optional<std::uint64_t> Input::size() const
{
    std::uint64_t size = 0;
    for (const std::string &name : names_) {
        const auto file = regular_input(name);
        if (!file)
            return std::nullopt;
        size += static_cast<std::uint64_t>(file->st_size);
    }
    return size;
}

bool Input::reads(const FileId &file) const
{
    return std::ranges::any_of(names_, [&](const std::string &name) {
        errno = 0;
        const auto input = regular_input(name);
        if (!input && errno != 0 && errno != ENOENT)
            fail_reading(name);
        return id_of(input) == file;
    });
}

Output::Output(const std::string &name, std::string purpose)
    : purpose_(std::move(purpose)), place_(name == standard ? "" : name + ": ")
{
    file_ = Descriptor(name == standard ? STDOUT_FILENO : open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    require(file_.is_open() || errno == ENOENT);
    id_ = id_of(regular_file(file_.number()));
    for (const int number : {STDOUT_FILENO, STDERR_FILENO}) {
        if (id_ && id_ == id_of(regular_file(number))) {
            file_ = Descriptor(number); // at the place where others write
            return;
        }
    }
    if (id_ || !file_.is_open())
        replace(name);
}

void Output::replace(const std::string &name)
{
    const std::filesystem::path path = followed(name);
    errno = path.has_filename() ? ENOENT : EISDIR;
    require(path.has_filename() && id_ == id_of(regular_file(path))); // else it has no name of its own
    id_ = id_ ? id_ : id_of_new(path);
    require(id_.has_value());
    file_ = Descriptor();
    replacement_.emplace(path);
    if (replacement_->descriptor() < 0)
        throw UsageError(purpose_ + " cannot be written: " + place_ +
                         "no file can be made in its folder: " + std::strerror(errno));
}

void Output::write(std::string_view text)
{
    require(write_all(descriptor(), isatty(descriptor()) == 1 ? toolkit::shown_lines(text) : text));
}

void Output::close() { require(replacement_ ? replacement_->commit() : file_.close()); }

void Output::require(bool done) const
{
    if (!done)
        throw UsageError(purpose_ + " cannot be written: " + place_ + std::strerror(errno));
}

} // namespace bgpdt::tool
