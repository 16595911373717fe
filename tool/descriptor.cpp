// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace bgpdt::tool {

bool has_arrived(int descriptor)
{
    const int copy = dup(descriptor);
    return copy < 0 || ::close(copy) == 0;
}

Descriptor::Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(number_, other.number_);
    return *this;
}

bool Descriptor::close()
{
    const int number = std::exchange(number_, -1);
    if (number > STDERR_FILENO)
        return ::close(number) == 0;
    return number <= STDIN_FILENO || has_arrived(number);
}

void guard_standard_descriptors()
{
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number)
        if (fcntl(number, F_GETFD) < 0)
            static_cast<void>(open("/", O_PATH)); // takes the lowest; nor can /dev/stdout be written then
}

bool write_all(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t size = ::write(descriptor, text.data(), text.size());
        if (size >= 0) {
            text.remove_prefix(static_cast<std::size_t>(size));
        } else if (errno == EAGAIN) { // it does not wait by itself
            pollfd ready{descriptor, POLLOUT, 0};
            static_cast<void>(::poll(&ready, 1, -1));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace bgpdt::tool
