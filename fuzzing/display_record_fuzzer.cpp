// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes the listing of attribute bitmaps from display records.
///
///      0      1       2
///     +------+-------+---- ... ----+
///     | mode | flags | record      |   flags as in input.hpp
///     +------+-------+---- ... ----+
///
/// With the flag `relative_index` the record is told in short: its head is filled in and its entries counted, and an
/// entry is a byte that chooses its kind, one for its length, and so many bytes.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "bgp_datatype/values.h"
#include "display_model.hpp"
#include "host/host.hpp"
#include "input.hpp"
#include "memory.hpp"
#include "property.hpp"
#include "support/conversion.hpp"
#include "support/setting.hpp"

namespace bgpdt::fuzzing {

namespace {

using Bytes = std::span<const std::uint8_t>;
using test::Outputs;

constexpr std::size_t text_room = 4096; ///< FormatOut's block
constexpr std::uint16_t kinds[] = {25, 0x0122, 2, 4, 6, 21, 22, 38, 99};
constexpr std::size_t count_at = 24;
constexpr std::size_t entries_at = 44;

struct Answer {
    std::uint32_t status;
    std::uint16_t kind;
    std::uint16_t length;
    Bytes text;
};

class Fuzzer {
public:
    static Fuzzer &instance()
    {
        static auto *const fuzzer = new Fuzzer; // lives as long as the process
        return *fuzzer;
    }

    void run(Bytes input);

private:
    Fuzzer() : print_(host_.find("ATTRIDBITMAP")->formatOut)
    {
        describe_with([] { instance().describe(); });
    }

    Answer print(Bytes record, std::uint8_t variant, bool lent, bool odd) const;
    void without_memory(Bytes record, Failing failing) const;
    void describe() const;
    bool lists() const { return mode_ == 0 || mode_ == 1 || mode_ == 5 || mode_ == 6; }
    static Bytes spelt_out(Bytes entries);

    host::Host host_{test::plugin_path()};
    SYSDT_FormatOut *print_;
    std::uint8_t mode_ = 0;
    Bytes record_;
};

Memory &memory() { return Memory::instance(); }

SYSDT_Context context_of(std::uint8_t mode, std::uint8_t variant)
{
    SYSDT_Context context{};
    context.mode = mode;
    context.variant = variant;
    context.handle = Memory::owner_handle;
    return context;
}

Answer Fuzzer::print(Bytes record, std::uint8_t variant, bool lent, bool odd) const
{
    SYSDT_Context context = context_of(mode_, variant);
    const std::uint8_t *const copy = memory().place(record, odd);
    std::uint8_t *const block = lent ? memory().lend(text_room) : nullptr;
    Outputs out(block);
    const std::uint32_t status = print_(&context, SYSDT_TYPE_ATTRIDBITMAP, static_cast<std::uint32_t>(record.size()),
                                        copy, &out.kind, &out.length, &out.data);
    require(out.intact(), "FormatOut writes to its outputs alone");
    require(std::ranges::equal(record, Bytes{copy, record.size()}), "FormatOut leaves the record alone");
    Answer answer{status, out.kind, out.length, {}};
    if (out.kind == SYSDT_KIND_STRING) {
        const Block *const delivered = memory().find(out.data);
        require(delivered != nullptr && delivered->size == text_room, "a listing is delivered in its block");
        require(lent ? out.data == block : memory().taken() == 1, "no other block is left taken");
        require(out.length > 0 && out.length <= text_room, "a listing's length lies inside its block");
        answer.text = {delivered->data, out.length};
    } else {
        require(out.data == block && memory().taken() == 0, "without a listing nothing is delivered or left taken");
    }
    memory().collect(out.data);
    memory().collect(block);
    return answer;
}

void Fuzzer::without_memory(Bytes record, Failing failing) const
{
    memory().begin(0xA5, failing);
    SYSDT_Context context = context_of(mode_, 0);
    const std::uint8_t *const copy = memory().place(record);
    Outputs out(nullptr);
    const std::uint32_t status = print_(&context, SYSDT_TYPE_ATTRIDBITMAP, static_cast<std::uint32_t>(record.size()),
                                        copy, &out.kind, &out.length, &out.data);
    if (memory().failed()) {
        require(status == (failing.first == 1 ? SYSDT_ERR_NO_MEMORY : SYSDT_OK),
                "only memory that is out for the block itself is told");
        require(out.kind == 0 && out.length == 0 && out.data == nullptr && memory().taken() == 0,
                "without memory nothing is delivered or left taken");
    }
    memory().collect(out.data);
}

/// Whether the answer is the listing, or the lack of one, that the model tells.
void expect_listing(const Answer &answer, Bytes record)
{
    const auto expected = listing_of(record);
    require(answer.status == SYSDT_OK, "listing succeeds whatever the record");
    if (!expected) {
        require(answer.kind == 0 && answer.length == 0, "a record that cannot be listed clears kind and length");
        return;
    }
    require(answer.kind == SYSDT_KIND_STRING, "a record that can be listed is");
    const auto *const text = reinterpret_cast<const char *>(answer.text.data());
    if (expected->size() + 1 != answer.length || std::strcmp(expected->c_str(), text) != 0) {
        std::fprintf(stderr, "expected: %s\nlisted:   %.*s\n", expected->c_str(), answer.length, text);
        broken("the listing is the model's");
    }
}

Bytes Fuzzer::spelt_out(Bytes entries)
{
    static std::vector<std::uint8_t> record;
    record.assign(entries_at, 0);
    std::uint16_t count = 0;
    while (entries.size() >= 2) {
        const std::uint16_t kind = kinds[entries[0] % std::size(kinds)];
        const auto length = static_cast<std::uint16_t>(std::min<std::size_t>(entries[1], entries.size() - 2));
        for (const std::uint16_t number : {kind, length}) {
            std::uint8_t bytes[sizeof number];
            std::memcpy(bytes, &number, sizeof number);
            record.insert(record.end(), std::begin(bytes), std::end(bytes));
        }
        record.insert(record.end(), entries.begin() + 2, entries.begin() + 2 + length);
        entries = entries.subspan(2U + length);
        ++count;
    }
    std::memcpy(record.data() + count_at, &count, sizeof count);
    return record;
}

void Fuzzer::run(Bytes input)
{
    memory().reset();
    mode_ = mode_of(input[0]);
    const std::uint8_t flags = input[1];
    record_ = (flags & relative_index) != 0 ? spelt_out(input.subspan(2)) : input.subspan(2);
    const bool lent = (flags & callers_block) != 0;
    if ((flags & failing_request) != 0 && lists())
        without_memory(record_, {static_cast<std::size_t>(flags & failing_request), (flags & failing_onward) != 0});
    memory().begin(0xA5);
    const Answer first = print(record_, 0, lent, (flags & odd_address) != 0);
    memory().begin(0x5A);
    const Answer second = print(record_, flags, !lent, false);
    require(first.status == second.status && first.kind == second.kind && std::ranges::equal(first.text, second.text),
            "a second FormatOut gives the same answer, whatever the output variant");
    if (lists()) {
        expect_listing(first, record_);
    } else {
        const bool skips = mode_ == 2 || mode_ == 3;
        require(first.status == (skips ? SYSDT_OK : SYSDT_ERR_UNSUPPORTED), "the mode has its own status");
        require(first.kind == Outputs::untouched_kind && first.length == Outputs::untouched_length,
                "a mode that lists nothing touches nothing");
    }
    require(memory().intact(), "nothing is written beside the blocks");
}

void Fuzzer::describe() const
{
    std::fprintf(stderr, "display record in mode %u:", mode_);
    for (const std::uint8_t byte : record_)
        std::fprintf(stderr, "%02x", byte);
    std::fprintf(stderr, "\n");
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    bgpdt::fuzzing::Fuzzer::instance();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size >= 2 && size <= bgpdt::fuzzing::most_bytes)
        bgpdt::fuzzing::Fuzzer::instance().run({data, size});
    return 0;
}
