// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "replacement.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

namespace bgpdt::tool {
namespace {

namespace fs = std::filesystem;

constexpr mode_t usual_mode = 0666; ///< less the umask
constexpr mode_t permissions = 0777;

fs::path folder_of(const fs::path &path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

fs::path descriptor_path(int number) { return "/proc/self/fd/" + std::to_string(number); }

/// A file without a name that can be given one.
int open_unnamed(const fs::path &folder)
{
    const int file = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, usual_mode);
    if (file >= 0 && access(descriptor_path(file).c_str(), F_OK) != 0) {
        static_cast<void>(close(file));
        return -1;
    }
    return file;
}

void keep_attributes(int file, const struct stat &of)
{
    if (fchown(file, of.st_uid, of.st_gid) != 0)
        static_cast<void>(fchown(file, static_cast<uid_t>(-1), of.st_gid));
    static_cast<void>(fchmod(file, of.st_mode & permissions));
}

} // namespace

fs::path followed(const fs::path &name)
{
    constexpr int most_links = 40; // as for the system
    fs::path path = name;
    std::error_code error;
    for (int i = 0; i < most_links && fs::is_symlink(path, error); ++i)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

Replacement::Replacement(fs::path path) : path_(std::move(path)), file_(open_unnamed(folder_of(path_)))
{
    if (!file_.is_open()) {
        static_cast<void>(take_name([this](const char *name) {
            file_ = Descriptor(open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usual_mode));
            return file_.is_open();
        }));
    }
    struct stat old {};
    if (file_.is_open() && stat(path_.c_str(), &old) == 0)
        keep_attributes(file_.number(), old);
}

/// @param make  makes a file of the name; false, with EEXIST, if there is one
template <class Make>
bool Replacement::take_name(Make make)
{
    constexpr int most_tries = 1000;
    const std::string begin = ".bgpdt-" + std::to_string(getpid()) + "-";
    for (int i = 0; i < most_tries; ++i) {
        fs::path name = folder_of(path_) / (begin + std::to_string(i));
        const SignalsHeld held;
        if (make(name.c_str())) {
            name_.emplace(std::move(name)); // which takes no memory: the file is there
            return true;
        }
        if (errno != EEXIST)
            break;
    }
    return false;
}

bool Replacement::commit()
{
    const fs::path unnamed = descriptor_path(file_.number());
    const auto link = [&unnamed](const char *name) {
        return linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    };
    if (!(name_ || take_name(link)) || !file_.close())
        return false;
    const SignalsHeld held;
    if (rename(name_->path(), path_.c_str()) != 0)
        return false;
    name_->release();
    return true;
}

} // namespace bgpdt::tool
