// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What Help gives.
#include "conversion.hpp"
#include "facts.hpp"

namespace bgpdt::test {

namespace {

class HelpFact {
public:
    HelpFact(const Line &line, const Subject &subject, Report &report) : line_(line), subject_(subject), report_(report)
    {
    }

    void helps();
    void silent();

private:
    void expect_text(std::uint8_t mode);
    void expect_none(const std::string &situation, const Asked &asked, std::uint32_t status);
    void every_mode();

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    AttackHost &host_ = AttackHost::instance();
};

void HelpFact::expect_text(std::uint8_t mode)
{
    report_.situation(in_mode(mode));
    host_.begin();
    Helped result = ask(subject_, {mode}, report_);
    if (report_.same_status(SYSDT_OK, result.status) && report_.require(!result.untouched(), "there is no help"))
        report_.same("the help", line_.text, result.text(subject_, report_));
    settle(report_);
}

void HelpFact::expect_none(const std::string &situation, const Asked &asked, std::uint32_t status)
{
    report_.situation(in_mode(asked.mode) + situation);
    host_.begin();
    const Helped result = ask(subject_, asked, report_);
    report_.same_status(status, result.status);
    report_.require(result.untouched(), "the help information was touched");
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
        if (subject_.expect.has(dispatches))
            expect_none(", null fourth argument", {mode, {1, 1}, HelpNull::fourth}, SYSDT_ERR_NULL_PTR);
        expect_none(", first word 0", {mode, {0, 1}}, subject_.passed_on(SYSDT_ERR_PARAM));
        expect_none(", second word 0", {mode, {1, 0}}, subject_.passed_on(SYSDT_ERR_PARAM));
    }
    every_mode();
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
    for (const std::uint8_t mode : line_.modes)
        expect_none("", {mode}, SYSDT_OK);
}

} // namespace

void check_help(const Line &line, const Subject &subject, Report &report)
{
    HelpFact fact(line, subject, report);
    if (line.verb == Verb::help)
        fact.helps();
    else
        fact.silent();
}

} // namespace bgpdt::test
