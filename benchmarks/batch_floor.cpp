// SPDX-License-Identifier: Apache-2.0
/// @file
/// The least that turning lines of route distinguishers into hexadecimal takes: standard input to standard output by one
/// hand-written reader, with no type and no error messages: "floor" with the calls of the host that a conversion owes
/// (trim, blank test, a block taken and released), by function pointers; "bare" without. Exit status 1 if a line was none.
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <string_view>

#include "bgp_datatype/host.h"

namespace {

// As the plug-in's calls go: by pointers that the compiler does not see through.
char *(*volatile trim)(char *) = SYSDT_BTrim;
uint32_t (*volatile has_blank)(const char *) = NCF_IsSpaceInString;
void *(*volatile take)(uint32_t, uint32_t) = SYS_DataTypeMallocByHandle;
void (*volatile release)(void *) = SYS_DataTypeFree;

constexpr std::size_t block = std::size_t{1} << 20;
constexpr std::size_t line_size = 25; // of the output

char input[block];
char output[block];
std::size_t written = 0;

bool flush()
{
    for (std::size_t at = 0; at < written;) {
        const ssize_t size = write(STDOUT_FILENO, output + at, written - at);
        if (size <= 0) {
            return false;
        }
        at += static_cast<std::size_t>(size);
    }
    written = 0;
    return true;
}

/// At most ten digits.
bool read_number(const char *&at, const char *end, std::uint64_t &number)
{
    const char *const first = at;
    std::uint64_t value = 0;
    for (; at != end && static_cast<unsigned>(*at - '0') < 10 && at - first < 11; ++at) {
        value = value * 10 + static_cast<unsigned>(*at - '0');
    }
    number = value;
    return at != first;
}

void store(std::uint8_t *to, unsigned width, std::uint64_t number)
{
    for (unsigned i = width; i-- > 0; number >>= 8) {
        to[i] = static_cast<std::uint8_t>(number);
    }
}

/// RFC 4364 and the text form behind it, as VRFRD stores them.
bool parse(const char *at, const char *end, std::uint8_t (&value)[12])
{
    std::uint64_t part[4];
    std::uint64_t number = 0;
    unsigned parts = 0;
    do {
        if (!read_number(at, end, part[parts++])) {
            return false;
        }
    } while (at != end && *at == '.' && parts < 4 && ++at);
    if (at == end || *at++ != ':' || !read_number(at, end, number) || at != end) {
        return false;
    }
    if (parts == 1 && part[0] <= UINT16_MAX && number <= UINT32_MAX) {
        store(value + 2, 2, part[0]);
        store(value + 4, 4, number);
        value[11] = 1;
        return (part[0] | number) != 0;
    }
    if (number > UINT16_MAX) {
        return false;
    }
    store(value + 6, 2, number);
    value[1] = parts == 4 ? 1 : 2;
    if (parts == 1 && part[0] <= UINT32_MAX) {
        store(value + 2, 4, part[0]);
        value[11] = 2;
        return true;
    }
    if (parts == 2 && (part[0] | part[1]) <= UINT16_MAX) {
        store(value + 2, 2, part[0]);
        store(value + 4, 2, part[1]);
        value[11] = 3;
        return (part[0] | part[1] | number) != 0;
    }
    for (unsigned i = 0; i < parts; ++i) {
        value[2 + i] = static_cast<std::uint8_t>(part[i]);
    }
    return parts == 4 && (part[0] | part[1] | part[2] | part[3]) <= UINT8_MAX;
}

bool put(const std::uint8_t (&value)[12])
{
    if (written + line_size > block && !flush()) {
        _exit(2);
    }
    char *to = output + written;
    for (const std::uint8_t byte : value) {
        *to++ = "0123456789abcdef"[byte >> 4];
        *to++ = "0123456789abcdef"[byte & 0xF];
    }
    *to = '\n';
    written += line_size;
    return true;
}

bool convert_bare(char *line, char *end)
{
    std::uint8_t value[12]{};
    return parse(line, end, value) && put(value);
}

bool convert(char *line, char *end)
{
    using Value = std::uint8_t[12];
    *end = '\0';
    line = trim(line);
    Value value{};
    if (has_blank(line) != 0 || !parse(line, line + std::strlen(line), value)) {
        return false;
    }
    void *const block = take(1, sizeof value);
    std::memcpy(block, value, sizeof value);
    const bool done = put(*static_cast<const Value *>(block));
    release(block);
    return done;
}

} // namespace

int main(int argc, char **argv)
{
    const bool bare = argc > 1 && std::string_view(argv[1]) == "bare";
    std::size_t have = 0;
    bool all = true;
    while (true) {
        const ssize_t size = read(STDIN_FILENO, input + have, block - have);
        if (size <= 0) {
            break;
        }
        have += static_cast<std::size_t>(size);
        char *line = input;
        while (auto *const end =
                   static_cast<char *>(std::memchr(line, '\n', have - static_cast<std::size_t>(line - input)))) {
            all = (bare ? convert_bare : convert)(line, end) && all;
            line = end + 1;
        }
        have -= static_cast<std::size_t>(line - input);
        std::memmove(input, line, have);
    }
    return !flush() ? 2 : all && have == 0 ? 0 : 1;
}
