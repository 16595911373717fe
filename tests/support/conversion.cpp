// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "conversion.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace bgpdt::test {

namespace {

template <class Pointer>
Pointer unless(bool null, Pointer pointer)
{
    return null ? nullptr : pointer;
}

Guarded terminated(const std::string &text)
{
    Guarded copy(text.size() + 1);
    std::copy_n(text.data(), text.size() + 1, copy.data());
    return copy;
}

Converted result_of(std::uint32_t status, const Outputs &outputs, Report &report)
{
    report.require(outputs.intact(), "an output was written beyond its ends");
    return {status, outputs.kind, outputs.length, outputs.data};
}

} // namespace

Context::Context(std::uint8_t mode) : page_(sizeof(SYSDT_Context))
{
    get()->mode = mode;
    get()->variant = 0;
    get()->handle = owner_handle;
    before_ = page_.bytes();
}

void Context::check(Report &report) const
{
    report.require(page_.intact() && page_.bytes() == before_, "the context was changed");
}

Converted parse(const Subject &subject, const std::string &text, std::uint8_t mode, Report &report, Null null,
                std::optional<std::uint32_t> length)
{
    Context context(mode);
    Guarded copy = terminated(text);
    Outputs outputs(forbidden_address());
    const std::uint32_t status = subject.format_in(
        unless(null == Null::context, context.get()), 0, length.value_or(static_cast<std::uint32_t>(copy.size())),
        unless(null == Null::input, reinterpret_cast<char *>(copy.data())), unless(null == Null::kind, &outputs.kind),
        unless(null == Null::length, &outputs.length), unless(null == Null::data, &outputs.data));
    report.require(copy.intact(), "the text was written beyond its ends");
    context.check(report);
    return result_of(status, outputs, report);
}

Converted print(const Subject &subject, Guarded &value, std::uint32_t length, std::uint8_t mode, void *block,
                Report &report, Null null)
{
    Context context(mode);
    Outputs outputs(block);
    const void *data = value.constant();
    const std::uint32_t status =
        subject.format_out(unless(null == Null::context, context.get()), subject.kind, length,
                           unless(null == Null::input, data), unless(null == Null::kind, &outputs.kind),
                           unless(null == Null::length, &outputs.length), unless(null == Null::data, &outputs.data));
    context.check(report);
    return result_of(status, outputs, report);
}

bool Helped::untouched() const
{
    return info.count == 0xBEEF && info.entries == static_cast<char **>(forbidden_address());
}

std::string Helped::text(const Subject &subject, Report &report)
{
    report.same<std::uint32_t>("the number of entries", 1, info.count);
    if (!report.require(info.entries[0] != nullptr, "the help information was neither filled nor cleared")) {
        std::free(info.entries);
        return {};
    }
    const Block *block = AttackHost::instance().find(info.entries[0]);
    const std::size_t size = block == nullptr ? 0 : strnlen(info.entries[0], block->memory.size()) + 1;
    const Bytes bytes = delivered({SYSDT_OK, 0, 0, info.entries[0]}, size, subject.expect.memory[2], report);
    std::free(info.entries);
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(bytes.empty() ? 0 : size - 1)};
}

Helped ask(const Subject &subject, const Asked &asked, Report &report)
{
    Context context(asked.mode);
    Guarded words(sizeof(SYSDT_HelpRequest));
    std::copy_n(reinterpret_cast<const std::uint8_t *>(asked.words), sizeof asked.words, words.data());
    Helped result{SYSDT_OK, {0xBEEF, static_cast<char **>(forbidden_address())}};
    const auto *request = reinterpret_cast<const SYSDT_HelpRequest *>(words.constant());
    result.status = subject.help(unless(asked.null == HelpNull::context, context.get()), 0, 0,
                                 unless(asked.null == HelpNull::fourth, forbidden_address()),
                                 unless(asked.null == HelpNull::request, request),
                                 unless(asked.null == HelpNull::info, &result.info));
    context.check(report);
    return result;
}

void expect_nothing_delivered(const Converted &result, const void *data_before, bool cleared, Report &report)
{
    report.same<std::uint32_t>("out kind", cleared ? 0 : Outputs::untouched_kind, result.kind);
    report.same<std::uint32_t>("out length", cleared ? 0 : Outputs::untouched_length, result.length);
    report.same<const void *>("out data", data_before, result.data);
}

Bytes delivered(const Converted &result, std::size_t block_size, char allocator, Report &report)
{
    AttackHost &host = AttackHost::instance();
    const Block *block = host.find(result.data);
    if (!report.require(block != nullptr, "out data is no block of the host's"))
        return {};
    report.same<std::uint32_t>("the block's size", static_cast<std::uint32_t>(block_size),
                               static_cast<std::uint32_t>(block->memory.size()));
    if (!block->lent()) {
        report.require((allocator == 'h') == block->handle.has_value(), "the block is of the other allocator");
        report.require(block->handle.value_or(owner_handle) == owner_handle, "the block has another owner");
    }
    report.require(result.length <= block->memory.size(), "out length is beyond the block");
    return host.collect(result.data).value();
}

std::size_t delivered_request(const Converted &result)
{
    const Block *block = AttackHost::instance().find(result.data);
    return block == nullptr ? 0 : block->request;
}

void settle(Report &report) { report.fail(AttackHost::instance().settle()); }

std::string in_mode(std::uint8_t mode) { return "mode " + std::to_string(mode); }

} // namespace bgpdt::test
