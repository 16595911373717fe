// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The checks of the vectors find what they are for: every fault that a type may have is a problem of some line.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/address_sanitizer.hpp"
#include "support/attack_host.hpp"
#include "support/facts.hpp"
#include "support/faults.hpp"
#include "support/faulty_type.hpp"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace bgpdt::test::facts {

namespace {

void watch_for_leaks([[maybe_unused]] bool on)
{
#ifdef __SANITIZE_ADDRESS__
    on ? __lsan_enable() : __lsan_disable();
#endif
}

/// A fault leaves frames whose destructors do not run; their memory is lost, and that is all right.
class LossAllowed {
public:
    LossAllowed() { watch_for_leaks(false); }
    ~LossAllowed() { watch_for_leaks(true); }
    LossAllowed(const LossAllowed &) = delete;
    LossAllowed &operator=(const LossAllowed &) = delete;
};

/// All problems of the lines.
std::string problems(Fault fault, const std::string &lines)
{
    const LossAllowed loss;
    Vectors vectors;
    read_vectors(vectors, "type ASNUM\n" + lines, "x.vec");
    for (const std::string &error : vectors.errors)
        ADD_FAILURE() << error;
    std::string all;
    for (const Line &line : vectors.lines) {
        Report report;
        const Subject subject = faulty_type(fault);
        FaultCount count;
        check_line(line, subject, report);
        inject_faults(line, subject, report, count);
        for (const std::string &problem : report.problems())
            all += problem + "\n";
    }
    return all;
}

constexpr const char *every_line = R"(
in@1,2,6 "5"               00000005_00000000
bad      "55"              INVALID_VALUE
out@1,2  00000005_00000000 "5"
copy@3   00000005_00000000 00000005_00000000
check    00000005_00000000 0
check    00                LENGTH
cmp      00000005_00000000 00000004_00000000 1
set      00000005_00000002 { asNumValue = 5, asType = 2 }
tables   00000005_00000002 2: asNumValue asType
noset    00                PARAM
get      { asNumValue = 5, asType = 2 } 00000005_00000002
noget    { asType = 2 }    PARAM
swap     01020304_05060708 04030201_08070605
help@1,6 "STRING<1-11>"
nohelp   
)";

TEST(Facts, ASoundTypeHasNoProblems) { EXPECT_EQ("", problems(Fault::none, every_line)); }

TEST(Facts, EveryFaultIsFound)
{
    const std::vector<std::pair<Fault, const char *>> faults{
        {Fault::other_value, "the value is 00000005_00000001, not 00000005_00000000"},
        {Fault::other_kind, "out kind is 254"},
        {Fault::other_length, "out length is 9"},
        {Fault::takes_mode_7, "mode 7: the status is 0, not UNSUPPORTED"},
        {Fault::takes_mode_0, "mode 0: the status is 0, not FAIL"},
        {Fault::takes_what_it_must_refuse, "the status is 0, not INVALID_VALUE"},
        {Fault::no_null_test, "touched memory that is not its own"},
        {Fault::reads_behind_text, "touched memory that is not its own"},
        {Fault::writes_behind_block, "touched memory that is not its own"},
        {Fault::writes_before_text, "the text was written beyond its ends"},
        {Fault::leaks, "neither delivered nor released"},
        {Fault::plain_block, "the block is of the other allocator"},
        {Fault::other_owner, "the block has another owner"},
        {Fault::released_twice, "a block was released that is not taken"},
        {Fault::written_after_release, "written after its release"},
        {Fault::keeps_length_without_memory, "request 1 refused: out length is 8"},
        {Fault::fails_without_status, "request 1 refused: the status is 0, not NO_MEMORY"},
        {Fault::touches_outputs_on_refusal, "out kind is 0 "},
        {Fault::changes_context, "the context was changed"},
        {Fault::other_text, "the text is \"5 \", not \"5\""},
        {Fault::no_terminator_counted, "out length is 1"},
        {Fault::ignores_lent_block, "the wrong block was delivered"},
        {Fault::small_block, "the block's size is 32"},
        {Fault::writes_behind_lent_block, "touched memory that is not its own"},
        {Fault::writes_to_input, "touched memory that is not its own"},
        {Fault::reads_behind_input, "touched memory that is not its own"},
        {Fault::releases_lent_block, "out data is no block of the host's"},
        {Fault::believes_length, "told another length: "},
        {Fault::no_copy_kind, "out kind is 25"},
        {Fault::check_ignores_length, "the status is 0, not LENGTH"},
        {Fault::compare_one_way, "the order is -1, not 1"},
        {Fault::swaps_half, "swap: the value is "},
        {Fault::swaps_once, "swap twice: this is not the identity"},
        {Fault::help_short_block, "the block's size is 14"},
        {Fault::help_in_mode_2, "the help information was touched"},
        {Fault::help_without_clear, "the help information was neither filled nor cleared"},
        {Fault::set_other_order, "the order of storing is \"asType asNumValue field\""},
        {Fault::set_other_room, "the making of the tables is \"(0,3) asNumValue asType field\""},
        {Fault::set_other_value, "the table is { field = { asNumValue = 6, asType = 3 } }"},
        {Fault::set_leaves_value, "the script stack has another height"},
        {Fault::set_short, "touched memory that is not its own"},
        {Fault::set_half_done, "all after it refused: the table is { field = 0 }, not { }"},
        {Fault::set_holds_block, "neither delivered nor released"},
        {Fault::get_leaves_more, "the script stack has another height"},
        {Fault::get_other_value, "the value is 00000006_00000003"},
        {Fault::get_short, "touched memory that is not its own"},
    };
    for (const auto &[fault, problem] : faults) {
        const std::string found = problems(fault, every_line);
        EXPECT_NE(std::string::npos, found.find(problem)) << problem << "\nis not among\n" << found;
    }
    EXPECT_EQ(static_cast<std::size_t>(Fault::get_short), faults.size()) << "a fault is not tried";
}

TEST(Facts, AWrongFactIsFound)
{
    for (const char *line : {"in \"5\" 00000006_00000000",
                             "in \"55\" 00000005_00000000",
                             "in@0 \"5\" 00000005_00000000",
                             "in \"5\" 00000005_00000000 !reprint",
                             "bad \"5\" INVALID_VALUE",
                             "bad \"55\" FAIL",
                             "bad@7 \"5\" FAIL",
                             "reports 0x100 8\nin \"5\" 00000005_00000000",
                             "out 00000005_00000000 \"6\"",
                             "out@3 00000005_00000000 \"5\"",
                             "bare 00000005_00000000 \"5\"",
                             "copy 00000005_00000000 00000005_00000000",
                             "copy@3 00000005_00000000 00000006_00000000",
                             "skip 00000005_00000000",
                             "noout 00000005_00000000 FAIL none",
                             "noout@0 00000005_00000000 UNSUPPORTED none",
                             "noout@0 00000005_00000000 FAIL back",
                             "noout@0 00000005_00000000 FAIL freed",
                             "noout@0 00000005_00000000 FAIL released",
                             "check 00000005_00000000 LENGTH",
                             "cmp 00000005_00000000 00000004_00000000 -1",
                             "cmp 00000005_00000000 00000005_00000000 FAIL",
                             "cmp 00 0000 0",
                             "set 00000005_00000002 { asNumValue = 5, asType = 1 }",
                             "set 00000005_00000002 { asType = 2, asNumValue = 5 }",
                             "set 00000005_00000002 { asNumValue = 5 }",
                             "set 00000005_00000002 { asNumValue = 5, asType = 2, more = 1 }",
                             "set 00000005_00000002 { asNumValue = 5.0, asType = 2 }",
                             "set 00000005_00000002 { asNumValue = 5, asType = 2 } !reget",
                             "tables 00000005_00000002 3: asNumValue asType",
                             "tables 00000005_00000002 2: asType asNumValue",
                             "tables 00000005_00000002 2: asNumValue asType[1]",
                             "tables 00000005_00000002 -",
                             "tables 00000005 2: asNumValue asType",
                             "noset 00000005_00000002 PARAM",
                             "get { asNumValue = 5, asType = 2 } 00000005_00000003",
                             "get { asNumValue = 5 } 00000005_00000000",
                             "noget { asNumValue = 5, asType = 2 } PARAM",
                             "noget {} FAIL",
                             "noget {} PARAM 00000001_00000000",
                             "swap 01020304_05060708 01020304_05060708",
                             "swap 01020304_05060708 04030201_08070605 !reswap",
                             "help@1 \"STRING<1-12>\"",
                             "help \"STRING<1-11>\"",
                             "nohelp@1"})
        EXPECT_NE("", problems(Fault::none, line)) << line;
}

TEST(AttackHost, FailsTheRequestsItIsTold)
{
    AttackHost &host = AttackHost::instance();
    const auto answers = [&](Failing failing) {
        host.begin(failing);
        std::string signs;
        for (int i = 0; i < 4; ++i) {
            void *block = SYS_DataTypeMalloc(8);
            signs += block == nullptr ? '-' : '+';
            SYS_DataTypeFree(block);
        }
        EXPECT_TRUE(host.settle().empty());
        return signs;
    };
    EXPECT_EQ("++++", answers({}));
    EXPECT_EQ("+-++", answers({2, false}));
    EXPECT_EQ("+---", answers({2, true}));
}

/// Whether the byte can be read.
bool readable(const std::uint8_t *byte)
{
    return memory_fault([&] { static_cast<void>(*static_cast<const volatile std::uint8_t *>(byte)); }).empty();
}

TEST(Guarded, EndsAtAnInaccessiblePage)
{
    for (const std::size_t size : {0U, 1U, 33U, 4096U, 65535U}) {
        Guarded block(size);
        EXPECT_TRUE(size == 0 || readable(block.data() + size - 1));
        EXPECT_FALSE(readable(block.data() + size));
        EXPECT_FALSE(readable(block.constant() + size));
        EXPECT_TRUE(block.intact());
    }
}

TEST(Guarded, WatchesItsNeighbours)
{
    for (const Place place : {Place::end, Place::odd}) {
        Guarded block(12, place);
        EXPECT_EQ(place == Place::odd, (reinterpret_cast<std::uintptr_t>(block.data()) & 1) == 1);
        block.data()[-1] ^= 1;
        EXPECT_FALSE(block.intact());
    }
    Guarded block(12, Place::odd);
    block.data()[12] ^= 1;
    EXPECT_FALSE(block.intact());
}

TEST(Guarded, IsReadOnlyForWhomItIsConstant)
{
    Guarded block(12);
    EXPECT_NE("", memory_fault([&] { *const_cast<volatile std::uint8_t *>(block.constant()) = 0; }));
    block.data()[3] = 7;
    EXPECT_EQ(7, block.constant()[3]);
}

} // namespace

} // namespace bgpdt::test::facts
