// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What scripts may do wrong with field names, lengths and kinds of value, for every vector line.
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "mistakes.hpp"
#include "support/attack_host.hpp"
#include "support/conversion.hpp"
#include "support/every_line.hpp"
#include "support/script_call.hpp"

namespace bgpdt::test {

namespace {

constexpr std::uint32_t param = SYSDT_ERR_PARAM;
constexpr std::uint32_t invalid = SYSDT_ERR_INVALID_VALUE;
constexpr std::uint32_t fail = SYSDT_ERR_FAIL;
constexpr std::uint32_t open = 0xFFFFFFFF; ///< no status is told: the number selects what else is read
constexpr std::int64_t any = std::numeric_limits<std::int64_t>::min();

/// What LuaGet answers when a part of the value is not what it should be.
struct KindRow {
    std::string_view subject; ///< a part in front of '*' stands for all that begin so, here and in the path
    std::int64_t selector;    ///< the number that chooses the reader: a route type or a sub-kind
    std::string_view path;    ///< keys joined by '/'; "." is the value, ".." the table that holds it
    std::uint32_t wrong_kind;
    std::uint32_t other_number; ///< for a number that reads as another one
};

/// The first row that fits counts.
constexpr KindRow kind_rows[] = {
    // The entries of the lists are read without a look at their kind.
    {"ASNUM_ENHANCE", any, "stAsNum/*", 0, 0},
    {"CMNTY_ENHANCE", any, "stCmnty/*", 0, 0},

    // Failures of a row are the dispatching type's own; the BOL prefix itself reads the table and the sub-kind.
    {"BOLRD", any, "*", invalid, 0},
    {"BOLPREFIX", any, ".*", param, 0},
    {"BOLPREFIX", any, "bolType", param, open},
    {"BOLPREFIX", any, "bolNgOriIpType", invalid, open},
    {"BOLPREFIX", any, "bolNgCSIpType", invalid, open},
    {"BOLPREFIX", any, "bolNgCGIpType", invalid, open},
    {"BOLPREFIX", any, "*", invalid, 0},

    // A row takes its own sub-kind alone. What EVPN is given instead of a text is an empty one.
    {"EVN*", any, "bolPrefixRtValue", 0, 0},
    {"NG_TYPE_*", any, "bolPrefixRtValue", 0, 0},
    {"*", any, "bolType", param, fail},

    // Only the route types 1 to 6 have fields.
    {"BGPLSPREFIX", any, "uiRouteType", param, open},
    {"BGPLSPREFIX", any, ".*", param, 0},
    {"BGPLSPREFIX", 0, "*", 0, 0},
    // Groups that a BGP-LS node, link or IPv4 prefix can do without; the other route types do without any field.
    {"BGPLSPREFIX", 1, "uiMtId", 0, 0},
    {"BGPLSPREFIX", 1, "stLocalAs*", 0, 0},
    {"BGPLSPREFIX", 1, "uiIdentifier*", 0, 0},
    {"BGPLSPREFIX", 2, "stLocalAs*", 0, 0},
    {"BGPLSPREFIX", 2, "stRemoteAs*", 0, 0},
    {"BGPLSPREFIX", 2, "localMemberAs*", 0, 0},
    {"BGPLSPREFIX", 2, "remoteMemberAs*", 0, 0},
    {"BGPLSPREFIX", 3, "stLocalAs*", 0, 0},
    {"BGPLSPREFIX", 4, "*", 0, 0},
    {"BGPLSPREFIX", 5, "*", 0, 0},
    {"BGPLSPREFIX", 6, "*", 0, 0},

    {"*", any, "*", param, 0},
};

/// Numbers of 64 bits; all others are read modulo 2^32.
constexpr std::pair<std::string_view, std::string_view> wide_fields[] = {{"EXTCOMMUNITY_BW", "bandwidth"}};

/// What stands in tables of the vectors to be passed over.
constexpr std::pair<std::string_view, std::string_view> unread[] = {
    {"*", "more*"},          {"BOLRD", "RdValue/more"}, {"*", "other*"}, {"EVNPREFIX", "bolprefixrtvalue"},
    {"VRFRTEXT", "bolType"},
};

struct ArrayRow {
    std::string_view name;
    std::size_t entries;
};

constexpr ArrayRow arrays[] = {
    {"", 32}, // an attribute bitmap
    {"extcommunity", 8},
    {"largeCommunity", 3},
    {"RdValue", 8},
    {"RtValue", 8},
    {"SooValue", 8},
    {"rdValue", 8},
    {"RtV6Value", 20},
    {"bolPrefix", 16},
    {"bolNgPrefixCG", 16},
    {"bolSrPolicyEndpointv6", 16},
    {"bolSdwanNodeIDv6", 16},
    {"stIpv6IntfAddr", 16},
};

bool is_number(const ScriptValue &value)
{
    return std::holds_alternative<std::int64_t>(value.value) || std::holds_alternative<double>(value.value);
}

bool fits(std::string_view pattern, std::string_view text)
{
    return pattern.ends_with('*') ? text.starts_with(pattern.substr(0, pattern.size() - 1)) : text == pattern;
}

/// The number under the key of a table; none: any.
std::int64_t number_of(const ScriptValue &value, std::string_view key)
{
    const auto *table = std::get_if<ScriptTable>(&value.value);
    for (std::size_t i = 0; table != nullptr && i < table->size(); ++i) {
        const ScriptField &field = (*table)[i];
        if (field.name == key && is_number(field.value)) {
            const auto *whole = std::get_if<std::int64_t>(&field.value.value);
            return whole != nullptr ? *whole : static_cast<std::int64_t>(std::get<double>(field.value.value));
        }
    }
    return any;
}

const KindRow &kind_row(std::string_view subject, std::int64_t selector, std::string_view path)
{
    return *std::ranges::find_if(kind_rows, [&](const KindRow &row) {
        return fits(row.subject, subject) && (row.selector == any || row.selector == selector) && fits(row.path, path);
    });
}

/// An array entry behind those that are read.
bool is_excess(std::string_view path)
{
    const std::size_t at = path.rfind('[');
    if (at == std::string_view::npos)
        return false;
    std::string_view array = path.substr(0, at == 0 ? 0 : at - 1);
    array.remove_prefix(array.rfind('/') + 1); // npos + 1 is 0
    const auto *found = std::ranges::find(arrays, array, &ArrayRow::name);
    return found != std::end(arrays) && std::stoul(std::string(path.substr(at + 1))) > found->entries;
}

bool is_unread(std::string_view subject, std::string_view path)
{
    const auto passed_over = [&](const auto &row) { return fits(row.first, subject) && fits(row.second, path); };
    return is_excess(path) || std::ranges::any_of(unread, passed_over);
}

/// The number that chooses the reader.
std::int64_t selector_of(const ScriptValue &value)
{
    constexpr std::uint32_t last_route_type = 6;
    const std::int64_t route_type = number_of(value, "uiRouteType");
    if (route_type == any)
        return number_of(value, "bolType");
    const auto read = static_cast<std::uint32_t>(route_type);
    return read > last_route_type ? 0 : read;
}

/// Multicast keys: with an address type other than 0 or 1 no address is asked for.
bool asks_for_addresses(const ScriptValue &value)
{
    return std::ranges::all_of(std::initializer_list<const char *>{"bolNgOriIpType", "bolNgCSIpType", "bolNgCGIpType"},
                               [&](const char *key) {
                                   const std::int64_t type = number_of(value, key);
                                   return type == any || static_cast<std::uint32_t>(type) <= 1;
                               });
}

/// A number that is no unsigned 32-bit one, and what the host reads from it.
struct OtherNumber {
    std::variant<std::int64_t, double> value;
    std::uint32_t read;
};

const std::vector<OtherNumber> &other_numbers()
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    static const std::vector<OtherNumber> numbers{
        {std::int64_t{-1}, 0xFFFFFFFF},
        {std::int64_t{1} << 32, 0},
        {(std::int64_t{1} << 53) + 1, 1},
        {std::numeric_limits<std::int64_t>::min(), 0},
        {1.5, 0},
        {-0.0, 0},
        {infinite, 0},
        {-infinite, 0},
        {std::nan(""), 0},
        {1e300, 0},
    };
    return numbers;
}

const std::vector<ScriptValue> &other_kinds()
{
    static const std::vector<ScriptValue> kinds{
        {}, {true}, {std::string("7")}, {std::int64_t{7}}, {ScriptTable{}}, {Opaque::function}, {Opaque::userdata},
    };
    return kinds;
}

/// Field names that a script may choose.
const std::vector<std::string> &field_names()
{
    static const std::vector<std::string> names{
        "", std::string(10000, 'n'), "\x01\t\n\x7f\xff", "7", "-1", "nil", "bolType", "asNumValue", "__index", "%s%n",
    };
    return names;
}

class ScriptMistakes {
public:
    ScriptMistakes(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), native_(to_native(subject.form(), line.bytes)),
          selector_(selector_of(line.script)), asks_for_addresses_(asks_for_addresses(line.script))
    {
    }

    void set_lengths();
    void set_names();
    void set_in_no_table();
    void get_lengths();
    void get_names();
    void get_other_kinds();

private:
    void expect_target(const Script &script, const ScriptValue &expected);
    std::uint32_t get(Script &script, Guarded &value, const Access &access = {});
    void expect_get(const std::string &name, const ScriptValue &target);
    /// Changes the part of `root` in every way; `root` is what the script holds under the field, or the table with it.
    void change_parts(ScriptValue &root, ScriptValue &part, const std::string &path);
    void expect_kind(const ScriptValue &root, const ScriptValue &part, const KindRow &row, const std::string &path);
    void expect_numbers(const ScriptValue &root, ScriptValue &part, const KindRow &row, const std::string &path);
    void expect_status_of(const ScriptValue &root, std::uint32_t status, bool same_value);

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    const Bytes native_;
    const std::int64_t selector_;
    const bool asks_for_addresses_;
    AttackHost &host_ = AttackHost::instance();
};

void ScriptMistakes::expect_target(const Script &script, const ScriptValue &expected)
{
    report_.same_table(expected, script.target());
}

std::string told(const char *what, std::uint32_t length)
{
    return std::string(what) + ", told the length " + std::to_string(length);
}

void ScriptMistakes::set_lengths()
{
    const auto size = static_cast<std::uint32_t>(subject_.script_size());
    for (const std::uint32_t length : {0U, size - 2, size + 1, 0xFFFFFFFFU}) {
        report_.situation(told("set", length));
        const bool enough = length > size || subject_.expect.has(set_any_length);
        const Guarded value(std::span{native_}.first(enough ? native_.size() : length));
        Script script;
        host_.begin();
        ++mistakes_made;
        const std::uint32_t refusal = subject_.expect.has(short_set_invalid) ? invalid : param;
        report_.same_status(enough ? 0 : refusal, set_field(subject_, script, value, {.length = length}, report_));
        expect_target(script, enough ? parent_with(line_.script) : ScriptValue{ScriptTable{}});
        settle(report_);
    }
}

/// Whatever the field is called, and whatever it held before: it holds the value, and no other field changes.
void ScriptMistakes::set_names()
{
    const Guarded value(native_);
    const ScriptField other{"an other", 0, {std::int64_t{5}}};
    const auto set = [&](const std::string &name, const ScriptValue &before) {
        Script script;
        script.put_target({ScriptTable{other, {name, 0, before}}});
        host_.begin();
        ++mistakes_made;
        report_.same_status(SYSDT_OK, set_field(subject_, script, value, {.name = name.c_str()}, report_));
        expect_target(script, {ScriptTable{other, {name, 0, line_.script}}});
        settle(report_);
    };
    for (const std::string &name : field_names()) {
        report_.situation("set " + to_text({name.substr(0, 20)}));
        set(name, {});
    }
    for (const ScriptValue &before : other_kinds()) {
        report_.situation("set where " + to_text(before) + " stood");
        set("field", before);
    }
}

/// The engine may refuse to store; nothing else comes of it.
void ScriptMistakes::set_in_no_table()
{
    const Guarded value(native_);
    for (const ScriptValue &target : other_kinds()) {
        if (target.is_table())
            continue;
        report_.situation("set a field of " + to_text(target));
        Script script;
        script.permit_errors();
        script.put_target(target);
        host_.begin();
        ++mistakes_made;
        static_cast<void>(set_field(subject_, script, value, {}, report_));
        expect_target(script, target);
        settle(report_);
    }
}

std::uint32_t ScriptMistakes::get(Script &script, Guarded &value, const Access &access)
{
    const ScriptValue before = script.target();
    host_.begin();
    ++mistakes_made;
    const std::uint32_t status = get_field(subject_, script, value, access, report_);
    report_.same_table(before, script.target());
    settle(report_);
    return status;
}

void ScriptMistakes::get_lengths()
{
    const auto size = static_cast<std::uint32_t>(subject_.script_size());
    for (const std::uint32_t length : {0U, size - 2, size + 1, 0xFFFFFFFFU}) {
        report_.situation(told("get", length));
        const bool enough = length > size;
        Guarded value(enough ? native_.size() : length, Place::end, 0);
        Script script;
        script.put_target(parent_with(line_.script));
        const std::uint32_t refusal = subject_.expect.has(short_get_invalid) ? invalid : param;
        report_.same_status(enough ? 0 : refusal, get(script, value, {.length = length}));
        report_.same("the value", enough ? native_ : Bytes(value.size()), value.bytes());
    }
}

void ScriptMistakes::expect_get(const std::string &name, const ScriptValue &target)
{
    Guarded value(native_.size(), Place::end, 0);
    Script script;
    script.put_target(target);
    report_.same_status(SYSDT_OK, get(script, value, {.name = name.c_str()}));
    report_.same("the value", native_, value.bytes());
}

void ScriptMistakes::get_names()
{
    for (const std::string &name : field_names()) {
        report_.situation("get " + to_text({name.substr(0, 20)}));
        expect_get(name, {ScriptTable{{name, 0, line_.script}, {"an other", 0, {std::int64_t{5}}}}});
    }
}

void ScriptMistakes::expect_status_of(const ScriptValue &root, std::uint32_t status, bool same_value)
{
    Guarded value(native_.size(), Place::end, 0);
    Script script;
    script.put_target(root);
    const std::uint32_t answered = get(script, value);
    if (status != open)
        report_.same_status(status, answered);
    if (same_value)
        report_.same("the value", native_, value.bytes());
}

/// A number is read modulo 2^32, a float as the whole number that it is.
void ScriptMistakes::expect_numbers(const ScriptValue &root, ScriptValue &part, const KindRow &row,
                                    const std::string &path)
{
    const std::int64_t number = std::get<std::int64_t>(part.value);
    const auto read_before = static_cast<std::uint32_t>(number);
    const bool wide =
        std::ranges::find(wide_fields, std::pair<std::string_view, std::string_view>(subject_.name, path)) !=
        std::end(wide_fields);
    std::vector<OtherNumber> numbers = other_numbers();
    if (number >= 0 && number <= 0xFFFFFFFF) {
        numbers.push_back({number + (std::int64_t{1} << 32), read_before});
        numbers.push_back({static_cast<double>(number), read_before});
    }
    for (const OtherNumber &other : numbers) {
        std::visit([&](auto value) { part.value = value; }, other.value);
        report_.situation(path + " = " + to_text(part) + " instead of a number");
        const bool same = other.read == read_before && !wide;
        expect_status_of(root, same || wide ? 0 : row.other_number, same);
    }
}

void ScriptMistakes::expect_kind(const ScriptValue &root, const ScriptValue &part, const KindRow &row,
                                 const std::string &path)
{
    report_.situation(path + " of another kind, " + to_text(part));
    expect_status_of(root, row.wrong_kind, false);
}

void ScriptMistakes::change_parts(ScriptValue &root, ScriptValue &part, const std::string &path)
{
    const ScriptValue whole = part;
    KindRow row = kind_row(subject_.name, selector_, path);
    if (is_unread(subject_.name, path))
        row.wrong_kind = row.other_number = SYSDT_OK;
    else if (!asks_for_addresses_ && path.starts_with("bolNgPrefix"))
        row.wrong_kind = row.other_number = open;
    for (const ScriptValue &other : other_kinds()) {
        if (other.value.index() != whole.value.index() && !(is_number(other) && is_number(whole))) {
            part = other;
            expect_kind(root, part, row, path);
        }
    }
    part = whole;
    if (std::holds_alternative<std::int64_t>(whole.value)) {
        expect_numbers(root, part, row, path);
        part = whole;
    }
    auto *table = std::get_if<ScriptTable>(&part.value);
    for (std::size_t i = 0; table != nullptr && i < table->size(); ++i) {
        if (i > 2 && i + 2 < table->size() && table->size() > 40)
            continue; // one entry of a long list is like the other
        const std::string key = (*table)[i].key();
        change_parts(root, (*table)[i].value, path == ".." ? "." : path == "." ? key : path + "/" + key);
    }
}

void ScriptMistakes::get_other_kinds()
{
    ScriptValue parent = parent_with(line_.script);
    change_parts(parent, parent, "..");
}

void make_script_mistakes(const Line &line, const Subject &subject, Report &report)
{
    ScriptMistakes mistakes(line, subject, report);
    if (line.verb == Verb::set) {
        mistakes.set_lengths();
        mistakes.set_names();
        mistakes.set_in_no_table();
    } else if (line.verb == Verb::get) {
        mistakes.get_lengths();
        mistakes.get_names();
        mistakes.get_other_kinds();
    }
}

TEST(Mistakes, OfScripts)
{
    check_every_line([](const Line &line, const Subject &subject, Report &report) {
        const std::string fault = memory_fault([&] { make_script_mistakes(line, subject, report); });
        report.require(fault.empty(), fault);
    });
}

} // namespace

} // namespace bgpdt::test
