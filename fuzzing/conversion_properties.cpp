// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What FormatIn and FormatOut keep to.
#include <algorithm>
#include <cstring>

#include "bgp_datatype/fields.hpp"
#include "records_fuzzer.hpp"
#include "subjects.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Expectation;
using test::Outputs;
using test::Subject;

/// A context whose every other byte must stay as it is.
class Context {
public:
    explicit Context(std::uint8_t mode)
    {
        std::memset(&context_, 0xC7, sizeof context_);
        context_.mode = mode;
        context_.handle = Memory::owner_handle;
        before_ = context_;
    }
    SYSDT_Context *get() { return &context_; }
    bool intact() const { return std::memcmp(&context_, &before_, sizeof context_) == 0; }

private:
    SYSDT_Context context_;
    SYSDT_Context before_;
};

bool is_host_string(const Subject &subject) { return subject.kind == SYSDT_TYPE_CVRFNAME; }

/// What FormatIn reports: some types hand back values of another.
test::Reported reported(const Subject &subject, std::uint16_t length)
{
    switch (subject.kind) {
    case SYSDT_TYPE_EVNPREFIX:
    case SYSDT_TYPE_VPNV4MCPREFIX:
    case SYSDT_TYPE_MDTPREFIX: return {SYSDT_TYPE_BOLPREFIX, SYSDT_BOL_SIZE};
    case SYSDT_TYPE_CVRFNAME: return {SYSDT_KIND_STRING, length};
    default: break;
    }
    const bool is_index = subject.format_in == SYS_DT_UINT32IndexFormatIn;
    return {is_index ? std::uint16_t{SYSDT_KIND_BINARY} : subject.kind, subject.length};
}

bool may_answer(const Subject &subject, std::uint8_t mode, std::uint32_t status)
{
    const auto is = [&](std::uint32_t code) { return status == subject.passed_on(code); };
    switch (subject.expect.in_letter(mode)) {
    case 'p': return is(SYSDT_OK) || is(subject.expect.unparsed);
    case 'q': return is(SYSDT_OK) || is(subject.expect.unparsed) || is(SYSDT_ERR_UNSUPPORTED);
    case 'f': return is(SYSDT_ERR_FAIL);
    default: return is(SYSDT_ERR_UNSUPPORTED);
    }
}

Owner owner_of(const Expectation &expect, std::size_t conversion)
{
    return static_cast<Owner>(expect.memory[conversion]);
}

/// A refused conversion's outputs, while memory was there.
void expect_nothing(const Answer &answer, const void *data_before, bool cleared)
{
    require(answer.data == data_before, "a conversion that delivers nothing leaves out data alone");
    require(cleared ? answer.kind == 0 && answer.length == 0 : answer.untouched(),
            "a conversion that delivers nothing leaves kind and length alone, or cleared where that is promised");
}

void expect_parsed(const Subject &subject, Answer &answer)
{
    const Block *const block = memory().find(answer.data);
    require(block != nullptr && memory().taken() == 1, "FormatIn delivers the one block that it took");
    const auto expected = reported(subject, answer.length);
    require(answer.kind == expected.kind && answer.length == expected.length, "FormatIn reports its kind and length");
    require(block->size == answer.length, "the delivered block is as long as is reported");
    require(subject.expect.has(test::dispatches) || block->owner == owner_of(subject.expect, 0),
            "the value's block is of the type's allocator");
    answer.delivered = {block->data, answer.length};
    memory().collect(answer.data);
}

} // namespace

bool is_status(std::uint32_t status)
{
    switch (status) {
    case SYSDT_OK:
    case SYSDT_ERR_FAIL:
    case SYSDT_ERR_NULL_PTR:
    case SYSDT_ERR_NO_MEMORY:
    case SYSDT_ERR_PARAM:
    case SYSDT_ERR_UNSUPPORTED:
    case SYSDT_ERR_LENGTH:
    case SYSDT_ERR_INVALID_VALUE:
    case SYSDT_ERR_MISMATCH:
    case SYSDT_ERR_OUTPUT:
    case SYSDT_ERR_TOO_LONG: return true;
    default: return false;
    }
}

bool Answer::same_as(const Answer &other) const
{
    return status == other.status && kind == other.kind && length == other.length &&
           std::ranges::equal(delivered, other.delivered);
}

std::string_view Answer::text() const
{
    const std::size_t end = kind == SYSDT_KIND_STRING && length != 0 ? 1 : 0;
    return {reinterpret_cast<const char *>(delivered.data()), delivered.size() - end};
}

Answer parse(const Subject &subject, std::string_view text, std::uint8_t mode, bool odd)
{
    static thread_local char terminated[most_bytes + 1];
    std::memcpy(terminated, text.data(), text.size());
    terminated[text.size()] = '\0';
    const std::size_t size = text.size() + 1;
    auto *const copy =
        reinterpret_cast<char *>(memory().place({reinterpret_cast<const std::uint8_t *>(terminated), size}, odd));
    Context context(mode);
    Outputs out(memory().untouchable());
    const std::uint32_t status =
        subject.format_in(context.get(), 0, static_cast<std::uint32_t>(size), copy, &out.kind, &out.length, &out.data);
    memory().collect(copy);
    Answer answer{status, out.kind, out.length, out.data};
    require(out.intact() && context.intact(), "FormatIn writes to its outputs alone");
    if (memory().failed()) {
        require(memory().taken() == (answer.ok() && out.data != memory().untouchable() ? 1 : 0),
                "FormatIn without memory leaves nothing taken");
        memory().collect(out.data);
    } else if (subject.expect.has(test::inert_in)) {
        require(answer.ok(), "a FormatIn that does nothing succeeds");
        expect_nothing(answer, memory().untouchable(), false);
    } else {
        require(may_answer(subject, mode, status), "FormatIn answers the type's own status");
        if (answer.ok()) {
            expect_parsed(subject, answer);
        } else {
            expect_nothing(answer, memory().untouchable(), false);
            require(memory().taken() == 0, "a refused text leaves no block taken");
        }
    }
    return answer;
}

namespace {

/// Check takes what FormatIn delivers; what it prints as parses to the same value, and that prints as the same text.
void expect_sound(const Case &input, const Answer &parsed)
{
    const Subject &subject = input.subject;
    const Trial value{subject, input.mode, {}, parsed.delivered};
    if (subject.check != nullptr && promised(Property::check, value)) {
        require(subject.check(parsed.delivered.data(), 0, parsed.length, parsed.delivered.data()) == SYSDT_OK,
                "Check takes what FormatIn delivers");
    }
    const char letter = answering(subject, parsed.delivered).out_letter(input.mode);
    if (subject.format_out == nullptr || (letter != 't' && letter != 'b'))
        return;
    const Answer printed = print(subject, parsed.delivered, parsed.length, input.mode, false);
    const Trial shown{subject, input.mode, printed.text(), parsed.delivered};
    if (!promised(Property::reprint, shown))
        return;
    require(printed.ok(), "a parsed value prints");
    const Answer again = parse(subject, printed.text(), input.mode);
    require(again.ok(), "what a parsed value prints as parses");
    require(std::ranges::equal(again.delivered, parsed.delivered),
            "what a parsed value prints as parses to the same value");
}

} // namespace

void fuzz_parse(const Case &input)
{
    const Subject &subject = input.subject;
    if (subject.format_in == nullptr)
        return;
    if (input.failing().first != 0) {
        memory().begin(fills[0], input.failing());
        parse(subject, input.text(), input.mode, input.has(odd_address));
    }
    memory().begin(fills[0]);
    const Answer first = parse(subject, input.text(), input.mode, input.has(odd_address));
    memory().begin(fills[1]);
    const Answer second = parse(subject, input.text(), input.mode, !input.has(odd_address));
    require(first.same_as(second), "a second FormatIn gives the same answer");
    if (first.ok() && !first.delivered.empty() && !is_host_string(subject))
        expect_sound(input, first);
}

namespace {

class Printing {
public:
    Printing(const Subject &subject, Bytes value, std::size_t told, std::uint8_t mode)
        : subject_(subject), told_(told), row_(answering(subject, value)),
          structured_(row_.has(test::always_takes) && mode == 2), letter_(row_.out_letter(mode))
    {
    }

    std::size_t block_size() const { return letter_ == 'c' && !structured_ ? told_ : row_.buffer; }
    void expect(Answer &answer, const void *lent, Bytes value) const;

private:
    void expect_delivered(Answer &answer, const void *lent, Bytes value) const;
    void expect_refused(const Answer &answer, const void *lent) const;
    std::size_t text_length(const Answer &answer, const char *text, std::size_t size) const;

    const Subject &subject_;
    std::size_t told_;
    const Expectation &row_;
    bool structured_;
    char letter_;
};

void Printing::expect(Answer &answer, const void *lent, Bytes value) const
{
    const bool lists = letter_ != 's' && subject_.kind == SYSDT_TYPE_ATTRIDBITMAP && answer.ok() && answer.kind == 0;
    if (memory().failed()) {
        const bool taken = answer.data != nullptr && answer.data != lent;
        require(memory().taken() == (taken ? 1 : 0), "FormatOut without memory leaves nothing taken");
        memory().collect(answer.data);
    } else if (letter_ == 's' || lists) {
        require(answer.ok() && memory().taken() == 0, "a FormatOut that lists nothing succeeds and takes nothing");
        expect_nothing(answer, lent, lists);
    } else if (letter_ == 'f' || letter_ == 'u') {
        const std::uint32_t status = letter_ == 'f' ? SYSDT_ERR_FAIL : SYSDT_ERR_UNSUPPORTED;
        require(answer.status == subject_.passed_on(status), "FormatOut refuses a mode with its status");
        require(memory().requests() == 0, "a refused mode takes no block");
        expect_nothing(answer, lent, row_.has(test::clears_first));
    } else if (answer.ok()) {
        expect_delivered(answer, lent, value);
    } else {
        expect_refused(answer, lent);
    }
}

/// Some keys' last section is reported with zeros up to the group's length.
std::size_t Printing::text_length(const Answer &answer, const char *text, std::size_t size) const
{
    const std::size_t length = strnlen(text, size);
    const bool zeros = std::all_of(text + length, text + answer.length, [](char c) { return c == '\0'; });
    return row_.has(test::any_sub_kind) && length == 0 && zeros ? answer.length - 1U : length;
}

void Printing::expect_delivered(Answer &answer, const void *lent, Bytes value) const
{
    const Block *const block = memory().find(answer.data);
    require(block != nullptr, "FormatOut delivers a block");
    require((answer.data == lent) == (lent != nullptr && !structured_),
            "FormatOut writes to the block that it is given");
    require(memory().taken() == (answer.data == lent ? 0 : 1), "FormatOut leaves no other block taken");
    require(block->size == block_size(), "FormatOut's block has the type's size");
    require(block->owner == Owner::caller || block->owner == owner_of(row_, 1), "the block is of the type's allocator");
    require(answer.length <= block->size, "the reported length lies inside the block");
    const auto *const text = reinterpret_cast<const char *>(block->data);
    answer.delivered = {block->data, answer.length};
    if (letter_ == 't' || letter_ == 'b') {
        const bool bare = letter_ == 'b';
        require(answer.kind == (bare ? SYSDT_KIND_BINARY : SYSDT_KIND_STRING), "a text is reported as one");
        require(bare ? answer.length < block->size : answer.length > 0, "a text has room for its NUL");
        require(text_length(answer, text, block->size) + (bare ? 0 : 1) == answer.length,
                "the reported length is the text's");
    } else if (structured_) {
        require(answer.kind == subject_.kind, "a structured form is reported as the type");
    } else {
        require(answer.kind == SYSDT_KIND_BINARY && answer.length == told_, "a copy is reported with its length");
        require(std::ranges::equal(answer.delivered, value.first(told_)), "a copy is the value");
    }
    memory().collect(answer.data);
}

void Printing::expect_refused(const Answer &answer, const void *lent) const
{
    require(is_status(answer.status), "FormatOut answers a documented status");
    require(!subject_.expect.has(test::dispatches) || answer.status == SYSDT_ERR_INVALID_VALUE,
            "a dispatching type has one status for every failure of a row");
    const bool cleared = row_.has(test::clears_first) || row_.has(test::clears_late);
    require(cleared ? answer.kind == 0 && answer.length == 0 : answer.untouched(),
            "a value that does not print leaves kind and length alone, or cleared where that is promised");
    const bool own = answer.data != nullptr && answer.data != lent;
    require(memory().taken() == (own ? 1 : 0),
            "a value that does not print leaves nothing taken but what is handed back");
    require(lent == nullptr || answer.data == lent || (answer.data == nullptr && memory().find(lent) == nullptr),
            "the caller's block is handed back or released");
    memory().collect(answer.data);
}

} // namespace

Answer print(const Subject &subject, Bytes value, std::size_t told, std::uint8_t mode, bool lent, bool odd)
{
    const Printing printing(subject, value, told, mode);
    const std::uint8_t *const copy = memory().place(value, odd);
    std::uint8_t *const block = lent ? memory().lend(printing.block_size()) : nullptr;
    Context context(mode);
    Outputs out(block);
    const std::uint32_t status = subject.format_out(context.get(), subject.kind, static_cast<std::uint32_t>(told), copy,
                                                    &out.kind, &out.length, &out.data);
    require(std::ranges::equal(value, Bytes{copy, value.size()}), "FormatOut leaves the value alone");
    require(out.intact() && context.intact(), "FormatOut writes to its outputs alone");
    Answer answer{status, out.kind, out.length, out.data};
    printing.expect(answer, block, value);
    memory().collect(copy);
    memory().collect(block);
    return answer;
}

namespace {

/// The value in as many bytes as FormatOut may look at.
Bytes readable(const Case &input)
{
    static std::uint8_t padded[most_bytes];
    const std::size_t size = input.payload.size();
    if (!answering(input.subject, input.payload).has(test::whole_value) || size >= input.subject.length)
        return input.payload;
    std::copy_n(input.payload.data(), size, padded);
    std::fill(padded + size, padded + input.subject.length, std::uint8_t{0});
    return {padded, input.subject.length};
}

/// What any value prints as is a text that, if it parses at all, prints as itself.
void expect_same_text(const Case &input, const Answer &printed)
{
    const Subject &subject = input.subject;
    if (subject.format_in == nullptr || subject.expect.has(test::inert_in) || is_host_string(subject))
        return;
    const Answer parsed = parse(subject, printed.text(), input.mode);
    if (!parsed.ok() || !promised(Property::retext, {subject, input.mode, printed.text(), parsed.delivered}))
        return;
    const Answer again = print(subject, parsed.delivered, parsed.length, input.mode, false);
    require(again.ok() && again.text() == printed.text(),
            "what a value prints as, if it parses, prints as the same text");
}

} // namespace

void fuzz_print(const Case &input)
{
    const Subject &subject = input.subject;
    if (subject.format_out == nullptr)
        return;
    const Bytes value = readable(input);
    const char letter = answering(subject, value).out_letter(input.mode);
    const bool any_length = subject.expect.has(test::whole_value) && letter != 'c' && !is_host_string(subject);
    const std::size_t told = input.payload.size();
    const bool lent = input.has(callers_block);
    if (input.failing().first != 0) {
        memory().begin(fills[0], input.failing());
        print(subject, value, told, input.mode, lent);
    }
    memory().begin(fills[0]);
    const Answer first = print(subject, value, told, input.mode, lent, input.has(odd_address));
    memory().begin(fills[1]);
    const Answer second = print(subject, value, any_length && input.has(other_length) ? 0 : told, input.mode, !lent);
    require(first.same_as(second), "a second FormatOut gives the same answer");
    if (first.ok() && first.length != 0 && letter == 't')
        expect_same_text(input, first);
}

} // namespace bgpdt::fuzzing
