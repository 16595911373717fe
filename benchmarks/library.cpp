// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What libbgpdt adds to the callbacks of the route distinguisher: ns a text or value, the least of some rounds. With the
/// name of a case as argument that alone, once, for callgrind to count.
#include <valgrind/callgrind.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "bgpdt/bgpdt.hpp"
#include "host/host.hpp"

namespace bgpdt::bench {
namespace {

constexpr std::size_t corpus_size = 10'000;
constexpr std::size_t refused_size = 100; // a reason takes long to find
constexpr int rounds = 50;

struct LibraryCase {
    std::string_view name;
    std::size_t conversions;
    std::function<void()> pass;
};

using Cases = std::vector<LibraryCase>;

void require(bool holds)
{
    if (!holds)
        throw std::runtime_error("an answer is not what it must be");
}

std::vector<std::string> distinguishers()
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < corpus_size; ++i) {
        const std::string front = i % 3 == 0   ? std::to_string(64496 + i % 16)
                                  : i % 3 == 1 ? "192.0.2." + std::to_string(i % 256)
                                               : std::to_string(65536 + i % 16);
        texts.push_back(front + ":" + std::to_string(1 + i * 7919 % 65535));
    }
    return texts;
}

/// The texts back to back, as columns are laid out.
struct Column {
    explicit Column(const std::vector<std::string> &texts)
    {
        for (const std::string &text : texts) {
            bytes += text;
            offsets.push_back(static_cast<std::uint32_t>(bytes.size()));
        }
    }
    bgpdt_column get() const
    {
        return {sizeof(bgpdt_column), offsets.size() - 1, offsets.data(), sizeof offsets[0],
                bytes.data(),         bytes.size(),       nullptr};
    }
    std::vector<std::uint32_t> offsets{0};
    std::string bytes;
};

constexpr std::uint8_t mode = 2;

// ------------------------------------------------------------------------------------------------ the callbacks

/// As a host without any comfort calls them.
class Raw {
public:
    explicit Raw(std::vector<std::string> texts) : texts_(std::move(texts)), type_(*host_.find("VRFRD"))
    {
        context_.mode = mode;
        for (const std::string &text : texts_)
            values_.push_back(host_.parse(type_, text, mode).data);
    }

    void parse()
    {
        for (std::string &text : texts_) {
            std::uint16_t kind = 0;
            std::uint16_t length = 0;
            void *block = nullptr;
            require(type_.formatIn(&context_, 0, 0, text.data(), &kind, &length, &block) == SYSDT_OK);
            SYS_DataTypeFree(block);
        }
    }

    void print()
    {
        for (const host::Bytes &value : values_) {
            std::uint16_t kind = 0;
            std::uint16_t length = 0;
            void *block = nullptr;
            require(type_.formatOut(&context_, type_.baseKind, type_.dataLength, value.data(), &kind, &length,
                                    &block) == SYSDT_OK);
            SYS_DataTypeFree(block);
        }
    }

private:
    std::vector<std::string> texts_;
    host::Host host_{BGPDT_BUILT_PLUGIN};
    const SYSDT_Record &type_;
    SYSDT_Context context_{};
    std::vector<host::Bytes> values_;
};

// ------------------------------------------------------------------------------------------------ the library

class Asked {
public:
    explicit Asked(std::vector<std::string> texts)
        : texts_(std::move(texts)), column_(texts_), values_(texts_.size() * size_),
          bytes_(column_.bytes.size() * 2, '\0'), offsets_(texts_.size() + 1)
    {
        parse_many();
    }

    void parse()
    {
        std::uint8_t value[BGPDT_VALUE_ROOM];
        for (const std::string &text : texts_)
            require(bgpdt_parse(type_, text.data(), text.size(), value, sizeof value, nullptr) == BGPDT_OK);
    }
    void parse_values()
    {
        for (const std::string &text : texts_)
            require(rd_.parse(text).has_value());
    }
    void print()
    {
        char text[BGPDT_TEXT_ROOM];
        std::size_t size = 0;
        for (std::size_t i = 0; i < texts_.size(); ++i)
            require(bgpdt_print(type_, &values_[i * size_], size_, text, sizeof text, &size, nullptr) == BGPDT_OK);
    }
    void print_values()
    {
        for (std::size_t i = 0; i < texts_.size(); ++i)
            require(rd_.from_bytes({&values_[i * size_], size_}).text().has_value());
    }
    void parse_many()
    {
        const bgpdt_column column = column_.get();
        require(bgpdt_parse_many(type_, &column, values_.data(), values_.size(), nullptr, 0, nullptr) == BGPDT_OK);
    }
    void print_many()
    {
        const bgpdt_column_room room{
            sizeof room, offsets_.data(), sizeof offsets_[0], bytes_.data(), bytes_.size(), nullptr, 0};
        std::size_t printed = 0;
        require(bgpdt_print_many(type_, values_.data(), values_.size(), texts_.size(), nullptr, &room, &printed,
                                 nullptr) == BGPDT_OK);
    }
    void refuse()
    {
        for (const std::string &text : texts_)
            require(!rd_.try_parse(std::string_view(text).substr(0, text.find(':'))));
    }
    void why()
    {
        for (std::size_t i = 0; i < refused_size; ++i) {
            const std::string text = texts_[i] + "0000000000";
            Error error;
            require(bgpdt_why(type_, text.data(), text.size(), error.out()) == BGPDT_REFUSED);
        }
    }

private:
    std::vector<std::string> texts_;
    Library library_ = Library::open(BGPDT_BUILT_PLUGIN).value();
    Type rd_ = library_.type("VRFRD").value();
    const bgpdt_type *type_ = rd_.get();
    std::size_t size_ = rd_.value_size();
    Column column_;
    std::vector<std::uint8_t> values_;
    std::string bytes_;
    std::vector<std::uint32_t> offsets_;
};

// ------------------------------------------------------------------------------------------------ measuring

double nanoseconds(const LibraryCase &one)
{
    using Clock = std::chrono::steady_clock;
    auto best = std::numeric_limits<double>::infinity();
    for (int round = 0; round < rounds; ++round) {
        const Clock::time_point begin = Clock::now();
        one.pass();
        best = std::min(best, std::chrono::duration<double, std::nano>(Clock::now() - begin).count());
    }
    return best / static_cast<double>(one.conversions);
}

void measure(const Cases &cases, std::string_view counted)
{
    for (const LibraryCase &one : cases) {
        if (counted.empty()) {
            std::printf("%-24s%10.1f ns\n", one.name.data(), nanoseconds(one));
        } else if (counted == one.name) {
            CALLGRIND_START_INSTRUMENTATION;
            one.pass();
            CALLGRIND_STOP_INSTRUMENTATION;
        }
    }
}

void run(std::string_view counted)
{
    const std::vector<std::string> texts = distinguishers();
    { // a process has one host at a time
        Raw raw(texts);
        measure({{"callback, parse", texts.size(), [&raw] { raw.parse(); }},
                 {"callback, print", texts.size(), [&raw] { raw.print(); }}},
                counted);
    }
    Asked library(texts);
    measure({{"bgpdt_parse", texts.size(), [&library] { library.parse(); }},
             {"Type::parse", texts.size(), [&library] { library.parse_values(); }},
             {"bgpdt_parse_many", texts.size(), [&library] { library.parse_many(); }},
             {"Type::try_parse, refused", texts.size(), [&library] { library.refuse(); }},
             {"bgpdt_print", texts.size(), [&library] { library.print(); }},
             {"Value::text", texts.size(), [&library] { library.print_values(); }},
             {"bgpdt_print_many", texts.size(), [&library] { library.print_many(); }},
             {"bgpdt_why", refused_size, [&library] { library.why(); }}},
            counted);
}

} // namespace
} // namespace bgpdt::bench

int main(int argc, char **argv)
{
    try {
        bgpdt::bench::run(argc > 1 ? argv[1] : "");
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        static_cast<void>(std::fprintf(stderr, "bgpdt_bench_library: %s\n", error.what()));
        return EXIT_FAILURE;
    }
}
