// SPDX-License-Identifier: Apache-2.0
/// @file
/// What Help gives.
#include <algorithm>
#include <cstdlib>

#include "conversion.hpp"
#include "facts.hpp"

namespace bgpdt::test {

namespace {

constexpr std::uint32_t failing_status = 0x1234;

/// Which pointer argument is null.
enum class HelpNull { nothing, context, fourth, request, info };

struct Asked {
    std::uint8_t mode;
    std::uint32_t words[2] = {1, 1};
    HelpNull null = HelpNull::nothing;
};

class HelpFact {
public:
    HelpFact(const Line &line, const Subject &subject, Report &report) : line_(line), subject_(subject), report_(report)
    {
    }

    void helps();
    void silent();

private:
    std::uint32_t ask(const Asked &asked);
    void expect_text(std::uint8_t mode);
    void expect_none(const std::string &situation, const Asked &asked, std::uint32_t status);
    void failing_services(std::uint8_t mode);
    void every_mode();

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    AttackHost &host_ = AttackHost::instance();
    SYSDT_HelpInfo info_{};
};

bool untouched(const SYSDT_HelpInfo &info)
{
    return info.count == 0xBEEF && info.entries == static_cast<char **>(forbidden_address());
}

std::uint32_t HelpFact::ask(const Asked &asked)
{
    Context context(asked.mode);
    Guarded words(sizeof(SYSDT_HelpRequest));
    std::copy_n(reinterpret_cast<const std::uint8_t *>(asked.words), sizeof asked.words, words.data());
    info_ = {0xBEEF, static_cast<char **>(forbidden_address())};
    const auto *request = reinterpret_cast<const SYSDT_HelpRequest *>(words.constant());
    const std::uint32_t status = subject_.help(asked.null == HelpNull::context ? nullptr : context.get(), 0, 0,
                                               asked.null == HelpNull::fourth ? nullptr : forbidden_address(),
                                               asked.null == HelpNull::request ? nullptr : request,
                                               asked.null == HelpNull::info ? nullptr : &info_);
    context.check(report_);
    return status;
}

void HelpFact::expect_text(std::uint8_t mode)
{
    report_.situation(in_mode(mode));
    host_.begin();
    if (report_.same_status(SYSDT_OK, ask({mode})) && report_.require(!untouched(info_), "there is no help")) {
        const Converted entry{SYSDT_OK, 0, 0, info_.entries[0]};
        const Bytes text = delivered(entry, line_.text.size() + 1, subject_.expect.memory[2], report_);
        report_.same("the help", Bytes(line_.text.c_str(), line_.text.c_str() + line_.text.size() + 1), text);
        report_.same<std::uint32_t>("the number of entries", 1, info_.count);
        std::free(info_.entries);
    }
    settle(report_);
}

void HelpFact::expect_none(const std::string &situation, const Asked &asked, std::uint32_t status)
{
    report_.situation(in_mode(asked.mode) + situation);
    host_.begin();
    report_.same_status(status, ask(asked));
    report_.require(untouched(info_), "the help information was touched");
    settle(report_);
}

void HelpFact::helps()
{
    for (const std::uint8_t mode : line_.modes) {
        expect_text(mode);
        for (const HelpNull null : {HelpNull::context, HelpNull::request, HelpNull::info}) {
            expect_none(", null pointer " + std::to_string(static_cast<int>(null)), {mode, {1, 1}, null},
                        SYSDT_ERR_NULL_PTR);
        }
        if (subject_.expect.has(dispatches)) {
            expect_none(", null fourth argument", {mode, {1, 1}, HelpNull::fourth}, SYSDT_ERR_NULL_PTR);
        }
        expect_none(", first word 0", {mode, {0, 1}}, subject_.passed_on(SYSDT_ERR_PARAM));
        expect_none(", second word 0", {mode, {1, 0}}, subject_.passed_on(SYSDT_ERR_PARAM));
        failing_services(mode);
    }
    every_mode();
}

void HelpFact::failing_services(std::uint8_t mode)
{
    const bool swallowed = subject_.expect.has(help_swallows);
    report_.situation(in_mode(mode) + ", no help information");
    host_.begin();
    host_.help_status = failing_status;
    report_.same_status(swallowed ? SYSDT_OK : subject_.passed_on(failing_status), ask({mode}));
    report_.require(untouched(info_), "the help information was touched");
    settle(report_);

    report_.situation(in_mode(mode) + ", memory out");
    host_.begin({1, true});
    report_.same_status(subject_.passed_on(SYSDT_ERR_NO_MEMORY), ask({mode}));
    report_.require(host_.help_clears > 0 && info_.entries == nullptr, "the help information was not cleared");
    settle(report_);

    if (subject_.expect.has(help_asks_symbol)) {
        report_.situation(in_mode(mode) + ", symbol refused");
        host_.begin();
        host_.symbol_status = failing_status;
        report_.same_status(failing_status, ask({mode}));
        report_.require(untouched(info_), "the help information was touched");
        settle(report_);
    }
}

void HelpFact::every_mode()
{
    for (int number = 0; number < 256; ++number) {
        const auto mode = static_cast<std::uint8_t>(number);
        if (subject_.expect.helps_in(mode)) {
            expect_text(mode);
        } else {
            expect_none("", {mode}, SYSDT_OK);
            expect_none(", words 0", {mode, {0, 0}}, SYSDT_OK);
        }
    }
}

void HelpFact::silent()
{
    for (const std::uint8_t mode : line_.modes) {
        expect_none("", {mode}, SYSDT_OK);
    }
}

} // namespace

void check_help(const Line &line, const Subject &subject, Report &report)
{
    HelpFact fact(line, subject, report);
    if (line.verb == Verb::help) {
        fact.helps();
    } else {
        fact.silent();
    }
}

} // namespace bgpdt::test
