// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What Check, Help, Compare and Endian keep to.
#include <algorithm>
#include <array>
#include <cstring>

#include "bgp_datatype/fields.hpp"
#include "records_fuzzer.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Subject;

/// The lengths that Check takes; both are the same but for BOL prefixes, of which one row checks the bare key.
std::array<std::size_t, 2> checked_lengths(const Subject &subject)
{
    switch (subject.kind) {
    case SYSDT_TYPE_BOLPREFIX:
        if (subject.sub_kind) {
            const bool bare = *subject.sub_kind == SYSDT_BOL_RPD;
            return bare ? std::array{sizeof(SYSDT_Rpd), sizeof(SYSDT_Rpd)}
                        : std::array<std::size_t, 2>{SYSDT_BOL_SIZE, SYSDT_BOL_SIZE};
        }
        return {SYSDT_BOL_SIZE, sizeof(SYSDT_Rpd)};
    case SYSDT_TYPE_EVNPREFIX:
    case SYSDT_TYPE_L2VPNPREFIX:
    case SYSDT_TYPE_VPNV4MCPREFIX:
    case SYSDT_TYPE_MDTPREFIX: return {SYSDT_BOL_SIZE, SYSDT_BOL_SIZE};
    default: return {subject.length, subject.length};
    }
}

} // namespace

void fuzz_check(const Case &input)
{
    const Subject &subject = input.subject;
    if (subject.check == nullptr)
        return;
    const std::size_t size = input.payload.size();
    const std::uint8_t *const value = memory().place(input.payload, input.has(odd_address));
    const std::uint32_t status = subject.check(value, 0, static_cast<std::uint32_t>(size), value);
    const auto lengths = checked_lengths(subject);
    const bool fits = size == lengths[0] || size == lengths[1];
    require(fits ? status == SYSDT_OK || status == SYSDT_ERR_INVALID_VALUE
                 : status == subject.passed_on(SYSDT_ERR_LENGTH),
            "Check agrees with the length");
    require(std::ranges::equal(input.payload, Bytes{value, size}), "Check leaves the value alone");
    require(subject.check(value, 0, static_cast<std::uint32_t>(size), value) == status,
            "a second Check gives the same answer");
}

namespace {

SYSDT_HelpInfo untouched_info() { return {77, nullptr}; }

/// The text as the one entry, and nothing else taken.
void expect_help(const Subject &subject, const SYSDT_HelpInfo &info)
{
    require(info.count == 1 && info.entries != nullptr && info.entries[0] != nullptr, "help is one entry");
    require(memory().taken() == 2, "help takes two blocks");
    const Block *const text = memory().find(info.entries[0]);
    require(text != nullptr && text->owner == static_cast<Owner>(subject.expect.memory[2]),
            "the help text's block is of the type's allocator");
    require(std::strlen(info.entries[0]) + 1 == text->size && text->size > 1, "the help text fills its block");
}

std::uint32_t help(const Case &input)
{
    const Subject &subject = input.subject;
    SYSDT_Context context{};
    context.mode = input.mode;
    context.handle = Memory::owner_handle;
    const SYSDT_HelpRequest request{1, input.has(stripped_request) ? 0U : 1U};
    SYSDT_HelpInfo info = untouched_info();
    const std::uint32_t status = subject.help(&context, 0, 0, &request, &request, &info);
    const bool served = subject.expect.helps_in(input.mode);
    if (memory().failed()) {
        // Another row may have given help.
        require(info.entries == nullptr || (status == SYSDT_OK && subject.expect.has(test::dispatches)),
                "help without memory gives none");
        SYSDT_ClearHelpInfo(&info);
        require(memory().taken() == 0, "help without memory leaves nothing taken");
    } else if (served && request.second != 0) {
        require(status == SYSDT_OK, "help is given");
        expect_help(subject, info);
        SYSDT_ClearHelpInfo(&info);
    } else {
        require(status == (served ? subject.passed_on(SYSDT_ERR_PARAM) : std::uint32_t{SYSDT_OK}),
                "help that is not given has its status");
        require(info.count == untouched_info().count && info.entries == nullptr && memory().taken() == 0,
                "help that is not given leaves the help information alone");
    }
    return status;
}

} // namespace

void fuzz_help(const Case &input)
{
    if (input.subject.help == nullptr)
        return;
    memory().begin(fills[0], input.failing());
    help(input);
    memory().begin(fills[1]);
    help(input);
}

namespace {

bool is_order(std::int32_t result) { return result >= -1 && result <= 1; }

/// Compare of two of three values of one length.
class Comparing {
public:
    explicit Comparing(const Case &input) : subject_(input.subject), length_(input.payload.size() / 3)
    {
        for (std::size_t i = 0; i < values_.size(); ++i)
            values_[i] = place(input.payload.subspan(i * length_, length_), input.has(odd_address));
    }

    std::int32_t operator()(std::size_t first, std::size_t second) const
    {
        return subject_.compare(nullptr, static_cast<std::uint32_t>(length_), values_[first], values_[second]);
    }
    std::size_t length() const { return length_; }
    Bytes value(std::size_t i) const { return {values_[i], length_}; }

private:
    /// A whole value where its numbers are looked at whatever the length.
    const std::uint8_t *place(Bytes value, bool odd) const
    {
        std::uint8_t padded[16]{};
        const bool whole = subject_.expect.has(test::whole_value) && !subject_.expect.has(test::bytewise);
        if (!whole || value.size() >= sizeof padded)
            return memory().place(value, odd);
        std::copy(value.begin(), value.end(), padded);
        return memory().place(Bytes{padded}.first(std::max<std::size_t>(value.size(), subject_.length)), odd);
    }

    const Subject &subject_;
    std::size_t length_;
    std::array<const std::uint8_t *, 3> values_{};
};

} // namespace

void fuzz_compare(const Case &input)
{
    if (input.subject.compare == nullptr)
        return;
    const Comparing compare(input);
    const std::int32_t ab = compare(0, 1);
    const std::int32_t ba = compare(1, 0);
    const std::int32_t aa = compare(0, 0);
    require(is_order(ab) || is_status(static_cast<std::uint32_t>(ab)), "Compare gives an order or a status");
    require(is_order(ab) ? ba == -ab : ba == ab, "Compare the other way round gives the opposite");
    require(aa == 0 || !is_order(aa), "a value equals itself");
    require(compare(0, 1) == ab, "a second Compare gives the same answer");
    if (input.subject.expect.has(test::bytewise)) {
        const int bytes = std::memcmp(compare.value(0).data(), compare.value(1).data(), compare.length());
        require(ab == (bytes > 0) - (bytes < 0), "the order is that of the bytes");
    }
    const std::int32_t bc = compare(1, 2);
    const std::int32_t ac = compare(0, 2);
    require(!is_order(ab) || !is_order(bc) || is_order(ac),
            "what compares with one that compares with a third does too");
    if (is_order(ab) && is_order(bc) && (ab == bc || ab == 0 || bc == 0))
        require(ac == (ab != 0 ? ab : bc), "the order is transitive");
    for (std::size_t i = 0; i < 3; ++i) {
        require(std::ranges::equal(compare.value(i), input.payload.subspan(i * compare.length(), compare.length())),
                "Compare leaves the values alone");
    }
}

void fuzz_swap(const Case &input)
{
    const Subject &subject = input.subject;
    if (subject.endian == nullptr || input.payload.size() < subject.length)
        return;
    const Bytes before = input.payload.first(subject.length);
    std::uint8_t *const value = memory().place(before, input.has(odd_address));
    // A BGP-LS key's route type is read once it is turned, so every second call turns that word alone.
    const int calls = subject.kind == SYSDT_TYPE_BGPLSPREFIX ? 4 : 2;
    for (int i = 0; i < calls; ++i) {
        require(subject.endian(value, 0, 0, value) == SYSDT_OK, "Endian succeeds");
        require(memory().intact(), "Endian writes to the value alone"); // a second call would undo it
    }
    require(std::ranges::equal(before, Bytes{value, before.size()}), "swapping twice is the identity");
}

} // namespace bgpdt::fuzzing
