// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Loaded in front of the C library: a system without files that have no name, as network file systems are.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

extern "C" int open64(const char *path, int flags, ...) // NOLINT(cert-dcl50-cpp): as the C library has it
{
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
