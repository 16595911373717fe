// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Loaded in front of the C library: calls for files, and for memory, that fail. BGPDT_FAULTS="FUNCTION:NUMBER:WHAT,..." says which, each
/// the call of that number, from 1, or with "NUMBER+" that and all after it. WHAT is an error's number, "short" (half of
/// the bytes), or a signal as "-NUMBER", raised in front of the call. FUNCTION is the name of a function below, or
/// "unnamed": opening a file without a name; or "memory". How often each is called goes to the file that BGPDT_CALLS names.
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr const char *functions[] = {"open64", "unnamed", "close",      "dup",    "read",
                                     "write",  "pread64", "rename",     "linkat", "unlink",
                                     "fchmod", "fchown",  "mkostemp64", "stat64", "memory"};
std::atomic<long> calls[std::size(functions)];

/// What becomes of a call.
struct Fate {
    int error = 0;
    bool is_short = false;
};

/// Of the settings that one for the function and the number of its call, if there is one.
Fate fate_of(std::string_view function, long call)
{
    const char *setting = std::getenv("BGPDT_FAULTS");
    for (; setting != nullptr && *setting != '\0'; setting += *setting == ',' ? 1 : 0) {
        const std::string_view text(setting, std::strcspn(setting, ","));
        setting += text.size();
        if (!text.starts_with(function) || text[function.size()] != ':')
            continue;
        char *end = nullptr;
        const long number = std::strtol(text.data() + function.size() + 1, &end, 10);
        const bool for_good = *end == '+';
        if (call < number || (call > number && !for_good))
            continue;
        const std::string_view what(end + (for_good ? 2 : 1));
        if (what.starts_with("short"))
            return {0, true};
        const int error = std::atoi(what.data());
        if (error >= 0)
            return {error, false};
        static_cast<void>(std::raise(-error));
    }
    return {};
}

Fate fate(std::string_view function)
{
    const auto which = std::ranges::find(functions, function) - std::begin(functions);
    return fate_of(function, ++calls[which]);
}

int fails(int error)
{
    errno = error;
    return -1;
}

/// The C library's function.
template <class Signature>
Signature *own(const char *function)
{
    return reinterpret_cast<Signature *>(dlsym(RTLD_NEXT, function));
}

template <class... Parameters>
int call(const char *function, Parameters... arguments)
{
    const int error = fate(function).error;
    return error != 0 ? fails(error) : own<int(Parameters...)>(function)(arguments...);
}

std::size_t some_of(std::size_t size, Fate fate) { return fate.is_short ? (size + 1) / 2 : size; }

struct Report {
    ~Report()
    {
        const char *name = std::getenv("BGPDT_CALLS");
        FILE *file = name != nullptr ? std::fopen(name, "w") : nullptr;
        for (std::size_t i = 0; file != nullptr && i < std::size(functions); ++i)
            static_cast<void>(std::fprintf(file, "%s %ld\n", functions[i], calls[i].load()));
        if (file != nullptr)
            static_cast<void>(std::fclose(file));
    }
} report;

using Main = int(int count, char **words, char **environment);
Main *program_main = nullptr;
std::atomic<bool> has_begun = false; ///< before, libraries take memory of their own, and cannot say that there is none

int begin(int count, char **words, char **environment)
{
    has_begun = true;
    const int status = program_main(count, words, environment);
    has_begun = false;
    return status;
}

bool lacks_memory() { return has_begun && fate("memory").error != 0 && fails(ENOMEM) != 0; }

} // namespace

// glibc's own memory, behind the functions that stand in front of it here.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

int __libc_start_main(Main *main, int count, char **words, void (*begins)(), void (*ends)(), void (*loader_ends)(),
                      void *stack)
{
    using Start = int(Main *, int, char **, void (*)(), void (*)(), void (*)(), void *);
    program_main = main;
    return own<Start>("__libc_start_main")(begin, count, words, begins, ends, loader_ends, stack);
}
}
// NOLINTEND(bugprone-reserved-identifier)

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's have none
extern "C" {

void *malloc(std::size_t size) { return lacks_memory() ? nullptr : __libc_malloc(size); }

void *calloc(std::size_t count, std::size_t size) { return lacks_memory() ? nullptr : __libc_calloc(count, size); }

void *realloc(void *block, std::size_t size) { return lacks_memory() ? nullptr : __libc_realloc(block, size); }

int open64(const char *path, int flags, ...) // NOLINT(cert-dcl50-cpp): as the C library has it
{
    va_list rest;
    va_start(rest, flags);
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const int error = fate((flags & O_TMPFILE) == O_TMPFILE ? "unnamed" : "open64").error;
    return error != 0 ? fails(error) : own<int(const char *, int, ...)>("open64")(path, flags, mode);
}

/// A descriptor is gone though its close failed.
int close(int descriptor)
{
    const int error = fate("close").error;
    const int closed = own<int(int)>("close")(descriptor);
    return error != 0 ? fails(error) : closed;
}

int dup(int descriptor) { return call("dup", descriptor); }

ssize_t read(int descriptor, void *to, size_t size)
{
    const Fate its = fate("read");
    return its.error != 0 ? fails(its.error)
                          : own<ssize_t(int, void *, size_t)>("read")(descriptor, to, some_of(size, its));
}

ssize_t write(int descriptor, const void *from, size_t size)
{
    const Fate its = fate("write");
    return its.error != 0 ? fails(its.error)
                          : own<ssize_t(int, const void *, size_t)>("write")(descriptor, from, some_of(size, its));
}

ssize_t pread64(int descriptor, void *to, size_t size, off64_t at)
{
    const Fate its = fate("pread64");
    return its.error != 0
               ? fails(its.error)
               : own<ssize_t(int, void *, size_t, off64_t)>("pread64")(descriptor, to, some_of(size, its), at);
}

int rename(const char *from, const char *to) { return call("rename", from, to); }

int linkat(int from_folder, const char *from, int to_folder, const char *to, int flags)
{
    return call("linkat", from_folder, from, to_folder, to, flags);
}

int unlink(const char *path) { return call("unlink", path); }

int fchmod(int descriptor, mode_t mode) { return call("fchmod", descriptor, mode); }

int fchown(int descriptor, uid_t owner, gid_t group) { return call("fchown", descriptor, owner, group); }

int mkostemp64(char *path, int flags) { return call("mkostemp64", path, flags); }

int stat64(const char *path, struct stat64 *status) { return call("stat64", path, status); }
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
