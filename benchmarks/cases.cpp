// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The cases of every kind over its corpus. Each column's answers are compared with the plug-in's own beforehand.
#include <cstdio>
#include <numeric>
#include <set>

#include "benches.hpp"

namespace bgpdt::bench {

SYSDT_Context context_of(u8 mode)
{
    SYSDT_Context context{};
    context.mode = mode;
    context.handle = 1;
    return context;
}

/// FNV-1a
u64 seed_of(const std::string &name)
{
    u64 seed = 0xCBF29CE484222325;
    for (const char character : name)
        seed = (seed ^ static_cast<u8>(character)) * 0x100000001B3;
    return seed;
}

Subject subject_of(const host::Host &host, const std::string &name)
{
    const std::size_t slash = name.find('/');
    const SYSDT_Record *const type = host.find(name.substr(0, slash));
    if (type == nullptr)
        fail("no type " + name);
    if (slash == std::string::npos)
        return {type};
    const bool rd = name.starts_with("BOLRD");
    const auto *row =
        static_cast<const SYSDT_DispatchRow *>(host.symbol(rd ? "g_astBOL_RD_ProcTable" : "g_astBOL_PREFIX_ProcTable"));
    for (u32 rows = rd ? u32{SYSDT_BOLRD_KINDS} : u32{SYSDT_BOL_KINDS}; rows != 0; --rows, ++row)
        if (name.substr(slash + 1) == row->name)
            return {type, row};
    fail("no row " + name);
}

namespace {

struct Answer {
    u32 status;
    u16 kind = 0;
    Bytes data{};

    bool operator==(const Answer &) const = default;
};

Answer collect(u32 status, u16 kind, u16 length, void *data)
{
    Answer answer{status, kind, {}};
    if (status == SYSDT_OK && data != nullptr)
        answer.data.assign(static_cast<u8 *>(data), static_cast<u8 *>(data) + length);
    SYS_DataTypeFree(data);
    return answer;
}

Answer parse(SYSDT_FormatIn *callback, u8 mode, std::string text)
{
    SYSDT_Context context = context_of(mode);
    u16 kind = 0;
    u16 length = 0;
    void *data = nullptr;
    const u32 status = callback(&context, 0, static_cast<u32>(text.size() + 1), text.data(), &kind, &length, &data);
    return collect(status, kind, length, data);
}

Answer print(SYSDT_FormatOut *callback, u8 mode, const Bytes &value)
{
    SYSDT_Context context = context_of(mode);
    u16 kind = 0;
    u16 length = 0;
    void *data = nullptr;
    const u32 status = callback(&context, 0, static_cast<u32>(value.size()), value.data(), &kind, &length, &data);
    return collect(status, kind, length, data);
}

std::vector<std::string> texts_of(const Kind &kind, std::size_t count)
{
    Random random(seed_of(kind.name));
    std::set<std::string> distinct;
    std::vector<std::string> texts;
    for (std::size_t tries = 0; texts.size() < count && tries < 20 * count; ++tries) {
        std::string text = kind.text(random);
        if (distinct.insert(text).second)
            texts.push_back(std::move(text));
    }
    if (texts.size() < count)
        fail(kind.name + ": not enough distinct texts");
    return texts;
}

std::string hex_of(const Answer &answer)
{
    std::string text = std::to_string(answer.status) + ' ';
    for (const u8 byte : answer.data) {
        char digits[3];
        (void)std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

void expect_same(const Kind &kind, const char *column, const std::string &input, const Answer &ours,
                 const Answer &theirs)
{
    if (ours != theirs)
        fail(kind.name + ", " + column + ": " + input + "\n  ours   " + hex_of(ours) + "\n  theirs " + hex_of(theirs));
}

/// Inputs one behind the other, so that a pass meets them in the caches.
class Packed {
public:
    struct Item {
        u32 offset;
        u32 length;
    };

    void add(const void *input, std::size_t length)
    {
        items_.push_back({static_cast<u32>(bytes_.size()), static_cast<u32>(length)});
        const char *const first = static_cast<const char *>(input);
        bytes_.insert(bytes_.end(), first, first + length);
    }
    const std::vector<Item> &items() const { return items_; }
    char *at(const Item &item) { return bytes_.data() + item.offset; }
    void touch() const { sum_ = std::accumulate(bytes_.begin(), bytes_.end(), 0); }

private:
    std::vector<char> bytes_;
    std::vector<Item> items_;
    mutable volatile int sum_ = 0;
};

__attribute__((noinline)) void measured_parse(SYSDT_FormatIn *callback, u8 mode, Packed &texts)
{
    SYSDT_Context context = context_of(mode);
    for (const Packed::Item &text : texts.items()) {
        u16 kind;
        u16 length;
        void *data = nullptr;
        callback(&context, 0, text.length, texts.at(text), &kind, &length, &data);
        SYS_DataTypeFree(data);
    }
}

__attribute__((noinline)) void measured_print(SYSDT_FormatOut *callback, u8 mode, Packed &values)
{
    SYSDT_Context context = context_of(mode);
    for (const Packed::Item &value : values.items()) {
        u16 kind;
        u16 length;
        void *data = nullptr;
        callback(&context, 0, value.length, values.at(value), &kind, &length, &data);
        SYS_DataTypeFree(data);
    }
}

struct Corpus {
    std::vector<std::string> texts;
    std::vector<Bytes> values;
};

/// Checks every column over the corpus against the plug-in's own answers, and takes its values over.
void check_columns(const Kind &kind, const Subject &subject, Corpus &corpus)
{
    const Converter own = subject.own();
    const Converter dispatcher = subject.dispatcher();
    for (const std::string &text : corpus.texts) {
        const Answer ours = parse(own.parse, kind.mode, text);
        if (ours.status != SYSDT_OK)
            fail(kind.name + ": refused: " + text);
        expect_same(kind, "floor", text, ours, parse(kind.floor.parse, kind.mode, text));
        expect_same(kind, "plain port", text, ours, parse(kind.port.parse, kind.mode, text));
        if (dispatcher.parse != nullptr)
            expect_same(kind, "dispatcher", text, ours, parse(dispatcher.parse, kind.mode, text));
        corpus.values.push_back(ours.data);
    }
    for (const Bytes &value : corpus.values) {
        if (kind.floor.print == nullptr)
            break;
        const Answer ours = print(own.print, kind.mode, value);
        if (ours.status != SYSDT_OK || ours.data.empty())
            fail(kind.name + ": not printed");
        const std::string text(ours.data.begin(), ours.data.end());
        expect_same(kind, "floor", text, ours, print(kind.floor.print, kind.mode, value));
        expect_same(kind, "plain port", text, ours, print(kind.port.print, kind.mode, value));
        if (dispatcher.print != nullptr)
            expect_same(kind, "dispatcher", text, ours, print(dispatcher.print, kind.mode, value));
    }
}

void add_cases(Cases &cases, const Subject &subject, const Kind &kind, std::size_t size, bool scripts)
{
    Corpus corpus;
    if (kind.text) {
        corpus.texts = texts_of(kind, size);
    } else {
        Random random(seed_of(kind.name));
        for (std::size_t i = 0; i < size; ++i)
            corpus.values.push_back(kind.value(random));
    }
    check_columns(kind, subject, corpus);
    const auto texts = std::make_shared<Packed>();
    const auto values = std::make_shared<Packed>();
    for (const std::string &text : corpus.texts)
        texts->add(text.c_str(), text.size() + 1);
    for (const Bytes &value : corpus.values)
        values->add(value.data(), value.size());
    const std::string shape = kind.shape == Shape::decimal ? "decimal" : "structured";
    const struct {
        const char *name;
        Converter converter;
    } columns[] = {
        {"ours", subject.own()}, {"floor", kind.floor}, {"port", kind.port}, {"dispatcher", subject.dispatcher()}};
    for (const auto &[column, converter] : columns) {
        if (kind.text && converter.parse != nullptr) {
            cases.push_back(
                {kind.name + "/parse/" + column + '/' + shape,
                 [texts, callback = converter.parse, mode = kind.mode] { measured_parse(callback, mode, *texts); },
                 size, [texts] { texts->touch(); }});
        }
        if (kind.floor.print != nullptr && converter.print != nullptr) {
            cases.push_back(
                {kind.name + "/print/" + column + '/' + shape,
                 [values, callback = converter.print, mode = kind.mode] { measured_print(callback, mode, *values); },
                 size, [values] { values->touch(); }});
        }
    }
    if (scripts && subject.script_set() != nullptr)
        add_script_cases(cases, subject, "script " + kind.subject.substr(kind.subject.find('/') + 1), corpus.values);
}

Kinds all_kinds()
{
    Kinds kinds;
    add_as_and_communities(kinds);
    add_vpn_identifiers(kinds);
    add_plain_prefixes(kinds);
    add_evpn(kinds);
    add_mvpn(kinds);
    add_policy_keys(kinds);
    add_bgpls(kinds);
    add_attributes(kinds);
    return kinds;
}

} // namespace

Cases cases_of_kinds(const host::Host &host, std::size_t size)
{
    Cases cases;
    std::set<std::string> scripted;
    for (const Kind &kind : all_kinds())
        add_cases(cases, subject_of(host, kind.subject), kind, size, scripted.insert(kind.subject).second);
    return cases;
}

} // namespace bgpdt::bench
