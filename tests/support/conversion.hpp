// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Single calls of FormatIn, FormatOut and Help with everything around their arguments watched.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "attack_host.hpp"
#include "report.hpp"
#include "subject.hpp"

namespace bgpdt::test {

/// The handle of every context.
inline constexpr std::uint32_t owner_handle = 0x5EED0001;

/// Which pointer argument is null; the order is that in which they stand.
enum class Null { nothing, context, input, kind, length, data };
inline constexpr Null every_null[] = {Null::context, Null::input, Null::kind, Null::length, Null::data};

/// The three outputs, with canaries between them.
struct Outputs {
    static constexpr std::uint16_t untouched_kind = 0xBEEF;
    static constexpr std::uint16_t untouched_length = 0xDEAD;

    explicit Outputs(void *block) : data(block) {}
    bool intact() const { return before == 0xC3C3 && between == 0xC3C3 && behind == 0xC3C3; }

    std::uint16_t before = 0xC3C3;
    std::uint16_t kind = untouched_kind;
    std::uint16_t between = 0xC3C3;
    std::uint16_t length = untouched_length;
    std::uint16_t behind = 0xC3C3;
    void *data;
};

/// A conversion context on a page of its own, told apart from every other by its handle.
class Context {
public:
    explicit Context(std::uint8_t mode);
    SYSDT_Context *get() { return reinterpret_cast<SYSDT_Context *>(page_.data()); }
    void check(Report &report) const;

private:
    Guarded page_;
    Bytes before_;
};

struct Converted {
    std::uint32_t status;
    std::uint16_t kind;
    std::uint16_t length;
    void *data;
};

/// FormatIn of the text, told to be `length` bytes long or what it is; out data holds an address that nothing may touch
/// before.
Converted parse(const Subject &subject, const std::string &text, std::uint8_t mode, Report &report,
                Null null = Null::nothing, std::optional<std::uint32_t> length = std::nullopt);

/// FormatOut of the value, told to be `length` bytes long, into the block or one of its own.
Converted print(const Subject &subject, Guarded &value, std::uint32_t length, std::uint8_t mode, void *block,
                Report &report, Null null = Null::nothing);

/// Which pointer argument of Help is null.
enum class HelpNull { nothing, context, fourth, request, info };

struct Asked {
    std::uint8_t mode;
    std::uint32_t words[2] = {1, 1};
    HelpNull null = HelpNull::nothing;
};

struct Helped {
    std::uint32_t status;
    SYSDT_HelpInfo info;

    /// Whether the information is as it was before the call.
    bool untouched() const;
    /// Collects the only entry, a block of its text's size, and gives the information up.
    std::string text(const Subject &subject, Report &report);
};

/// Help with information that nothing may touch before it is prepared.
Helped ask(const Subject &subject, const Asked &asked, Report &report);

/// The common end of a call: no outputs touched, no block taken.
void expect_nothing_delivered(const Converted &result, const void *data_before, bool cleared, Report &report);

/// Checks the delivered block's size and owner and collects it: its bytes, empty if there is none.
Bytes delivered(const Converted &result, std::size_t block_size, char allocator, Report &report);
/// Which request for memory the delivered block answered; 0 if none did.
std::size_t delivered_request(const Converted &result);

/// What AttackHost has against the call.
void settle(Report &report);

/// "mode 2"
std::string in_mode(std::uint8_t mode);

} // namespace bgpdt::test
