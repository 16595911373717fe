// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Loaded in front of the C library: a disk that is full when standard output is closed, as network file systems tell it.
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

extern "C" int close(int descriptor)
{
    struct stat file {};
    struct stat output {};
    const bool same = fstat(descriptor, &file) == 0 && fstat(STDOUT_FILENO, &output) == 0 && S_ISREG(file.st_mode) &&
                      file.st_dev == output.st_dev && file.st_ino == output.st_ino;
    const int closed = static_cast<int>(syscall(SYS_close, descriptor));
    errno = same ? ENOSPC : errno;
    return same ? -1 : closed;
}
