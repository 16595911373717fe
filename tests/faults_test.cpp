// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every vector line, and the registration, with each request to the host refused in turn.
#include <cstdio>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/values.h"
#include "host/host.hpp"
#include "support/every_line.hpp"
#include "support/faults.hpp"
#include "support/registry.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

FaultCount all_faults;

TEST(Faults, OfEveryVectorLineAreHandled)
{
    check_every_line([](const Line &line, const Subject &subject, Report &report) {
        inject_faults(line, subject, report, all_faults);
    });
    EXPECT_LT(10000U / line_share(), all_faults.injected);
    EXPECT_EQ(0U, all_faults.leaked);
}

/// A refused record is reported and no other record misses anything.
class RegistrationFault {
public:
    explicit RegistrationFault(const host::Host &host)
        : host_(host), init_(reinterpret_cast<std::uint32_t (*)(std::uint32_t)>(host.symbol("Bgp_InitDataType")))
    {
    }

    std::size_t call(Failing failing, Report &report) const
    {
        const std::uint32_t status = failing.onward ? 0x801799U : 0xFFFFFFFFU;
        const std::size_t raised_before = host_.diagnostics().size();
        Registry registry(failing, status);
        report.same_status(SYSDT_OK, init_(7));
        report.same<std::uint32_t>("the number of registrations", record_count,
                                   static_cast<std::uint32_t>(registry.calls.size()));
        auto raised = host_.diagnostics().subspan(raised_before);
        for (std::size_t number = 1; number <= record_count; ++number) {
            if (failing.hits(number) && report.require(!raised.empty(), "a refusal is not reported")) {
                expect_diagnostic(raised.front(), number, status, report);
                raised = raised.subspan(1);
            }
        }
        report.require(raised.empty(), "more is reported than was refused");
        return registry.calls.size();
    }

private:
    static constexpr std::uint32_t record_count = SYSDT_NAME_INDEX_TYPE_COUNT + SYSDT_EXTEND_TYPE_COUNT;

    static void expect_diagnostic(const host::Diagnostic &diagnostic, std::size_t number, std::uint32_t status,
                                  Report &report)
    {
        const bool name_index = number <= SYSDT_NAME_INDEX_TYPE_COUNT;
        const std::string what = name_index ? "RegisterDataType Ret:" : "RegisterDataTypeExt Ret:";
        report.same("the source", std::string("kpl_datatype_func_bgp_init"), diagnostic.source);
        report.same<std::uint32_t>("the line", name_index ? 197 : 210, diagnostic.line);
        report.same("the message", what + std::to_string(status), diagnostic.message);
    }

    const host::Host &host_;
    std::uint32_t (*const init_)(std::uint32_t);
};

TEST(Faults, OfTheRegistrationAreReported)
{
    const host::Host host(plugin_path());
    const RegistrationFault fault(host);
    Report report;
    const auto call = [&](Failing failing, Report &told) { return fault.call(failing, told); };
    fail_in_turn("", call, report, all_faults);
    for (const std::string &problem : report.problems())
        ADD_FAILURE() << problem;
}

} // namespace

} // namespace bgpdt::test

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const int failed = RUN_ALL_TESTS();
    const bgpdt::test::FaultCount &count = bgpdt::test::all_faults;
    std::printf("proved: %zu faults injected, %zu handled, %zu leaked\n", count.injected, count.handled, count.leaked);
    return failed;
}
