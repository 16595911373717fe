// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines of route distinguishers turned into hexadecimal, standard input to standard output, with no error messages. The
/// argument says by which converter: "floor", with whole blocks read and written; "bare", the same without the calls of
/// the host; "plain", the plain port with the C library's lines. Exit status 1 if a line was none.
#include <unistd.h>

#include <string_view>

#include "octets.hpp"

namespace bgpdt::bench {
namespace {

constexpr std::size_t block_size = std::size_t{1} << 20;

// ------------------------------------------------------------------------------------------------ whole blocks

char input[block_size];
char output[block_size];
std::size_t written = 0;

bool flush()
{
    for (std::size_t at = 0; at < written;) {
        const ssize_t size = write(STDOUT_FILENO, output + at, written - at);
        if (size <= 0)
            return false;
        at += static_cast<std::size_t>(size);
    }
    written = 0;
    return true;
}

bool put_line(const SYSDT_Octets &value)
{
    if (written + 2 * sizeof value + 1 > block_size && !flush())
        return false;
    u8 bytes[sizeof value];
    std::memcpy(bytes, value.octets, sizeof value.octets);
    put(bytes + sizeof value.octets, value.form);
    char *to = output + written;
    for (const u8 byte : bytes) {
        *to++ = "0123456789abcdef"[byte >> 4];
        *to++ = "0123456789abcdef"[byte & 0xF];
    }
    *to++ = '\n';
    written = static_cast<std::size_t>(to - output);
    return true;
}

bool read_bare(char *line, SYSDT_Octets &value)
{
    u32 form = 0;
    const bool read = floor_octets_at<rd_codes, false>(line, value.octets, form);
    value.form = form;
    return read;
}

bool convert_bare(char *line)
{
    SYSDT_Octets value{};
    return read_bare(line, value) && put_line(value);
}

/// As a host converts: the value comes in a block, which is released.
template <auto parse, bool (*print)(const SYSDT_Octets &)>
bool convert(char *line)
{
    SYSDT_Context context{};
    u16 kind = 0;
    u16 length = 0;
    void *block = nullptr;
    if (format_in<parse, SYSDT_Octets, SYSDT_TYPE_VRFRD>(&context, 0, 0, line, &kind, &length, &block) != SYSDT_OK)
        return false;
    const bool done = print(*static_cast<const SYSDT_Octets *>(block));
    SYS_DataTypeFree(block);
    return done;
}

template <bool (*convert_line)(char *)>
bool by_blocks()
{
    std::size_t have = 0;
    bool all = true;
    for (ssize_t size; (size = read(STDIN_FILENO, input + have, block_size - have)) > 0;) {
        have += static_cast<std::size_t>(size);
        char *line = input;
        const char *const end = input + have;
        while (auto *const line_end =
                   static_cast<char *>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)))) {
            *line_end = '\0';
            all = convert_line(line) && all;
            line = line_end + 1;
        }
        have = static_cast<std::size_t>(end - line);
        std::memmove(input, line, have);
    }
    return flush() && all && have == 0;
}

// ------------------------------------------------------------------------------------------------ the C library's lines

bool port_rd(char *text, SYSDT_Octets &out) { return port_octets(text, rd_codes, false, out); }

bool print_line(const SYSDT_Octets &value)
{
    const u8 *const b = value.octets;
    char hex[32];
    (void)std::snprintf(hex, sizeof hex, "%02x%02x%02x%02x%02x%02x%02x%02x%08x", b[0], b[1], b[2], b[3], b[4], b[5],
                        b[6], b[7], value.form);
    return std::puts(hex) >= 0;
}

bool by_lines()
{
    char line[256];
    bool all = true;
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        line[std::strcspn(line, "\n")] = '\0';
        all = convert<port_rd, print_line>(line) && all;
    }
    return all;
}

} // namespace
} // namespace bgpdt::bench

int main(int argc, char **argv)
{
    using namespace bgpdt::bench;
    const std::string_view converter = argc == 2 ? argv[1] : "";
    const auto run = converter == "plain"   ? by_lines
                     : converter == "floor" ? by_blocks<convert<floor_octets<rd_codes, false>, put_line>>
                     : converter == "bare"  ? by_blocks<convert_bare>
                                            : nullptr;
    if (run == nullptr) {
        (void)std::fputs("usage: bgpdt_bench_batch floor|bare|plain <lines >hexadecimal\n", stderr);
        return 2;
    }
    return run() ? 0 : 1;
}
