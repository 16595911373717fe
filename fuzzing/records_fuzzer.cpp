// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes every callback of the registered records and of the dispatch tables' rows, and the parsers exported beside
/// them, through the host that loads the plug-in. The form of an input is told in input.hpp.
#include "records_fuzzer.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "bgp_datatype/values.h"
#include "host/host.hpp"
#include "subjects.hpp"
#include "support/setting.hpp"

namespace bgpdt::fuzzing {

namespace {

constexpr const char *operations[] = {"parse", "print", "check", "help", "compare",
                                      "set",   "get",   "read",  "swap", "parser"};

class Fuzzer {
public:
    Fuzzer()
        : subjects_(all_subjects(host_)), parsers_(all_parsers(host_)),
          readers_(static_cast<const SYSDT_ScriptReadRow *>(host_.symbol("g_astBOL_PREFIX_LuaGetTable")))
    {
        require(readers_ != nullptr, "the plug-in exports its read table");
        describe_with([] { instance().describe(); });
    }

    static Fuzzer &instance()
    {
        static auto *const fuzzer = new Fuzzer; // lives as long as the process
        return *fuzzer;
    }

    void run(Bytes input)
    {
        memory().reset();
        const Case now{subjects_[input[0] % subjects_.size()], operation(input[1]), mode_of(input[2]), input[3],
                       input.subspan(header_size)};
        now_ = &now;
        choice_ = input[0];
        call(now);
        require(memory().taken() == 0, "no block is left taken");
        require(memory().intact(), "nothing is written beside the blocks");
        now_ = nullptr;
    }

private:
    static Operation operation(std::uint8_t byte)
    {
        return static_cast<Operation>(byte % static_cast<std::uint8_t>(Operation::count));
    }

    void call(const Case &input) const;
    void parse_alone(const Case &input) const;
    void describe() const;
    const Parser &parser() const { return parsers_[choice_ % parsers_.size()]; }

    host::Host host_{test::plugin_path()};
    std::vector<test::Subject> subjects_;
    std::vector<Parser> parsers_;
    const SYSDT_ScriptReadRow *readers_;
    const Case *now_ = nullptr;
    std::uint8_t choice_ = 0;
};

void Fuzzer::call(const Case &input) const
{
    switch (input.operation) {
    case Operation::parse: return fuzz_parse(input);
    case Operation::print: return fuzz_print(input);
    case Operation::check: return fuzz_check(input);
    case Operation::help: return fuzz_help(input);
    case Operation::compare: return fuzz_compare(input);
    case Operation::set: return fuzz_set(input);
    case Operation::get: return fuzz_get(input);
    case Operation::read: return fuzz_read(input, readers_[choice_ % SYSDT_BOL_KINDS].reader);
    case Operation::swap: return fuzz_swap(input);
    default: return parse_alone(input);
    }
}

/// A parser by itself: the same status and, if it succeeds, the same value twice.
void Fuzzer::parse_alone(const Case &input) const
{
    std::uint32_t status[2];
    const std::uint8_t *value[2];
    for (int i = 0; i < 2; ++i) {
        memory().begin(fills[i]);
        std::uint8_t *const text = memory().lend(input.payload.size() + 1);
        std::copy(input.payload.begin(), input.payload.end(), text);
        text[input.payload.size()] = 0;
        std::uint8_t *const out = memory().lend(parser().size);
        std::memset(out, 0, parser().size);
        status[i] = parser()(reinterpret_cast<char *>(text), out);
        value[i] = out;
    }
    require(is_status(status[0]), "a parser answers a documented status");
    require(status[0] == status[1], "a second call of a parser gives the same status");
    require(status[0] != SYSDT_OK || std::memcmp(value[0], value[1], parser().size) == 0,
            "a second call of a parser gives the same value");
}

void Fuzzer::describe() const
{
    if (now_ == nullptr)
        return;
    const bool alone = now_->operation == Operation::function;
    std::fprintf(stderr, "%s %s in mode %u, flags %02x:", operations[static_cast<int>(now_->operation)],
                 alone ? parser().name : now_->subject.name.c_str(), now_->mode, now_->flags);
    for (const std::uint8_t byte : now_->payload)
        std::fprintf(stderr, byte >= 0x20 && byte < 0x7F ? "%c" : "\\x%02x", byte);
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
    if (size >= bgpdt::fuzzing::header_size && size <= bgpdt::fuzzing::most_bytes)
        bgpdt::fuzzing::Fuzzer::instance().run({data, size});
    return 0;
}
