// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes libbgpdt's functions: whatever text, value, table or column they are given, and whatever sizes are told. The
/// form of an input is told in library_input.hpp.
#include "library_fuzzer.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <nlohmann/json.hpp>

#include "input.hpp"

namespace bgpdt::fuzzing {

Room value_of(const LibraryCase &input, Bytes bytes)
{
    Room value(input.has(wrong_size) ? bytes.size() : input.size(), 0);
    std::ranges::copy(bytes.first(std::min(bytes.size(), value.size())), value.data());
    return value;
}

namespace {

bool is_text(bgpdt_text text) { return text.data != nullptr && text.data[text.size] == '\0'; }

/// What a function handed over, which is released.
class Given {
public:
    ~Given() { bgpdt_free(text_); }
    char **out() { return &text_; }
    std::size_t *size() { return &size_; }
    bool none() const { return text_ == nullptr; }
    std::string_view text() const
    {
        require(text_[size_] == '\0', "a text that is handed over ends in a NUL");
        return {text_, size_};
    }

private:
    char *text_ = nullptr;
    std::size_t size_ = 0;
};

// ------------------------------------------------------------------------------------------------ text

/// What the text gives, as often as it is asked, with an error and without.
int parsed(const LibraryCase &input, std::string_view text, Room &value)
{
    Room again(value.size(), 0x5a);
    const int code = bgpdt_parse(input.type, text.data(), text.size(), value.data(), value.size(), nullptr);
    const int second = bgpdt_parse(input.type, text.data(), text.size(), again.data(), again.size(), nullptr);
    require(code == second && (code != BGPDT_OK || value == again), "a second call gives the same value");
    return code;
}

void fuzz_parse(const LibraryCase &input)
{
    const std::string_view text = text_of(input.payload);
    Room value(input.has(wrong_size) ? input.size() - 1 : input.size());
    const int code = parsed(input, text, value);
    if (input.has(wrong_size)) {
        require(code == BGPDT_NO_ROOM, "a value needs its room");
        return;
    }
    require(code == BGPDT_OK || code == BGPDT_REFUSED || code == BGPDT_NO_TEXT, "a text is taken or not");
    if (code != BGPDT_OK)
        return;
    Room turned(value.bytes());
    require(bgpdt_to_native(input.type, turned.data(), turned.size()) == BGPDT_OK &&
                bgpdt_from_native(input.type, turned.data(), turned.size()) == BGPDT_OK && turned == value,
            "a value goes to the machine's order and back");
}

void fuzz_dialects(const LibraryCase &input, std::string_view text)
{
    Given json;
    require(bgpdt_dialects(input.type, text.data(), text.size(), json.out(), json.size(), nullptr) == BGPDT_OK &&
                nlohmann::json::accept(json.text()),
            "every text has its dialects, which are JSON");
}

void fuzz_why(const LibraryCase &input)
{
    const std::string_view text = text_of(input.payload);
    Error error;
    const int code = bgpdt_why(input.type, text.data(), text.size(), error.out());
    require_told(code, error, text.size());
    Room value(input.size());
    require(code == parsed(input, text, value), "a reason is told exactly for what is not taken");
    fuzz_dialects(input, text);
    if (code == BGPDT_OK)
        return;
    const std::string_view repair = view(error->repair);
    require(repair.empty() || parsed(input, repair, value) == BGPDT_OK, "a repair is taken");
    for (const bgpdt_text &name : std::span(error->other_types, error->other_type_count)) {
        const bgpdt_type *other = nullptr;
        require(bgpdt_find(input.library, name.data, name.size, &other, nullptr) == BGPDT_OK, "types have their names");
        Room of_other(bgpdt_about(other)->value_size);
        require(bgpdt_parse(other, text.data(), text.size(), of_other.data(), of_other.size(), nullptr) == BGPDT_OK,
                "another type that is told takes the text");
    }
}

// ------------------------------------------------------------------------------------------------ values

void require_size(const LibraryCase &input, const Room &value, int code)
{
    require(value.size() == input.size() || code == BGPDT_REFUSED || code == BGPDT_NO_OPERATION,
            "a value of another length is refused");
}

void fuzz_print(const LibraryCase &input)
{
    Room value = value_of(input, input.payload);
    Room text(BGPDT_TEXT_ROOM);
    std::size_t size = 0;
    Error error;
    const int code = bgpdt_print(input.type, value.data(), value.size(), text.text(), text.size(), &size, error.out());
    require_told(code, error);
    require_size(input, value, code);
    require(code < BGPDT_OK || (size < text.size() && text.text()[size] == '\0'), "what is printed ends in a NUL");
    if (code < BGPDT_OK || !input.has(small_room))
        return;
    Room small(size);
    std::size_t told = 0;
    require(bgpdt_print(input.type, value.data(), value.size(), small.text(), small.size(), &told, nullptr) ==
                    BGPDT_NO_ROOM &&
                told == size,
            "a room that is too small learns the size");
}

/// JSON of a value, by bgpdt_explain or bgpdt_table.
template <class Ask>
void fuzz_json(const LibraryCase &input, Ask *ask, Given &json)
{
    Room value = value_of(input, input.payload);
    Error error;
    const int code = ask(input.type, value.data(), value.size(), json.out(), json.size(), error.out());
    require_told(code, error);
    require((code == BGPDT_OK) != json.none(), "JSON is there exactly if all went well");
    require(json.none() || nlohmann::json::accept(json.text()), "JSON is JSON");
    require_size(input, value, code);
}

void fuzz_explain(const LibraryCase &input)
{
    Given json;
    fuzz_json(input, bgpdt_explain, json);
}

void read_table(const LibraryCase &input, std::string_view json)
{
    Room value(input.has(small_room) ? input.size() - 1 : input.size());
    Error error;
    const int code = bgpdt_read_table(input.type, json.data(), json.size(), value.data(), value.size(), error.out());
    require_told(code, error);
    require(code != BGPDT_OK || !input.has(small_room), "a value needs its room");
}

void fuzz_table(const LibraryCase &input)
{
    Given json;
    fuzz_json(input, bgpdt_table, json);
    if (!json.none())
        read_table(input, json.text());
}

void fuzz_field(const LibraryCase &input)
{
    Bytes rest = input.payload;
    const Bytes length = taken(rest, 1);
    Room name(taken(rest, length.empty() ? 0 : length[0]));
    Room value = value_of(input, rest);
    Given text;
    Error error;
    const int code = bgpdt_field(input.type, value.data(), value.size(), name.text(), name.size(), text.out(),
                                 text.size(), error.out());
    require_told(code, error);
    require(code >= BGPDT_OK || text.none(), "nothing is handed over where nothing was done");
    if (code == BGPDT_NUMBER)
        require(!text.text().empty() && text.text().find_first_not_of("0123456789") == std::string_view::npos,
                "a number has digits");
}

void fuzz_from_hex(const LibraryCase &input)
{
    Room value(input.has(wrong_size) ? input.size() - 1 : input.size());
    const std::string_view hex = text_of(input.payload);
    Error error;
    const int code = bgpdt_from_hex(input.type, hex.data(), hex.size(), value.data(), value.size(), error.out());
    require_told(code, error);
    require(!input.has(wrong_size) || code == BGPDT_NO_ROOM, "a value needs its room");
    if (code == BGPDT_OK)
        require(Type(input.type).from_hex(Type(input.type).from_bytes(value.bytes()).hex()).has_value(),
                "bytes go to digits and back");
}

void fuzz_change(const LibraryCase &input)
{
    Room value = value_of(input, input.payload);
    const Room before(value.bytes());
    Error error;
    require_told(bgpdt_check(input.type, value.data(), value.size(), error.out()), error);
    require(value == before, "a check changes nothing");
    const int code = bgpdt_swap(input.type, value.data(), value.size(), error.out());
    require_told(code, error);
    require(code == BGPDT_OK || value == before, "a swap that is refused changes nothing");
    const bool right_size = value.size() == input.size();
    require((bgpdt_to_native(input.type, value.data(), value.size()) == BGPDT_OK) == right_size &&
                (bgpdt_from_native(input.type, value.data(), value.size()) == BGPDT_OK) == right_size,
            "values of the type's length turn to the machine's order and back");
}

void fuzz_compare(const LibraryCase &input)
{
    Room first = value_of(input, input.payload.first(input.payload.size() / 2));
    Room second = value_of(input, input.payload.subspan(input.payload.size() / 2));
    int order = 0;
    int other_order = 0;
    Error error;
    const int code =
        bgpdt_compare(input.type, first.data(), first.size(), second.data(), second.size(), &order, error.out());
    require_told(code, error);
    require(code != BGPDT_OK || (order >= -1 && order <= 1), "an order is -1, 0 or 1");
    const auto ordered = [&input](Room &a, Room &b, int &answer) {
        return bgpdt_order(input.type, a.data(), a.size(), b.data(), b.size(), &answer) == BGPDT_OK;
    };
    const bool both = ordered(first, second, order) && ordered(second, first, other_order);
    const bool right_sizes = first.size() == input.size() && second.size() == input.size();
    require(both == right_sizes, "all values of the type are ordered");
    require(!both || (order == -other_order && (order == 0) == (first == second)), "the order is a total one");
}

// ------------------------------------------------------------------------------------------------ library

/// Finds a type by the payload as its name, and opens the library with the payload as its options.
void fuzz_open(const LibraryCase &input)
{
    Room payload(input.payload);
    Error error;
    const bgpdt_type *type = nullptr;
    const int found = bgpdt_find(input.library, payload.text(), payload.size(), &type, error.out());
    require_told(found, error);
    require((found == BGPDT_OK) == (type != nullptr), "a type is there exactly if it was found");
    const bgpdt_text text{payload.text(), payload.size()};
    const bgpdt_options options{input.has(wrong_size) ? sizeof(bgpdt_options) - 1 : sizeof(bgpdt_options),
                                input.has(wide) ? text : bgpdt_text{}, input.has(wide) ? bgpdt_text{} : text};
    bgpdt_library *again = nullptr;
    const int code = bgpdt_open(&options, &again, error.out());
    require_told(code, error);
    require(!input.has(wrong_size) || code == BGPDT_NO_SENSE, "options tell their size");
    require(code != BGPDT_OK || again == input.library, "the process has one library");
    bgpdt_close(again);
}

// ------------------------------------------------------------------------------------------------ inputs

constexpr const char *names[] = {"parse",   "why",   "print",      "explain",    "field",      "from_hex", "change",
                                 "compare", "table", "read_table", "parse_many", "print_many", "open"};
static_assert(std::size(names) == static_cast<std::size_t>(Function::count));

const LibraryCase *now = nullptr;

void describe_call()
{
    if (now == nullptr)
        return;
    const bgpdt_info &info = *bgpdt_about(now->type);
    std::fprintf(stderr, "%s %s in mode %u, flags %02x:", names[static_cast<std::size_t>(now->function)],
                 info.name.data, info.mode, now->flags);
    for (const std::uint8_t byte : now->payload)
        std::fprintf(stderr, byte >= 0x20 && byte < 0x7F ? "%c" : "\\x%02x", byte);
    std::fprintf(stderr, "\n");
}

bgpdt_library *opened()
{
    static bgpdt_library *const library = [] {
        bgpdt_library *fresh = nullptr;
        require(bgpdt_open(nullptr, &fresh, nullptr) == BGPDT_OK, "the library opens");
        describe_with(describe_call);
        return fresh;
    }();
    return library;
}

void call(const LibraryCase &input)
{
    switch (input.function) {
    case Function::parse: return fuzz_parse(input);
    case Function::why: return fuzz_why(input);
    case Function::print: return fuzz_print(input);
    case Function::explain: return fuzz_explain(input);
    case Function::field: return fuzz_field(input);
    case Function::from_hex: return fuzz_from_hex(input);
    case Function::change: return fuzz_change(input);
    case Function::compare: return fuzz_compare(input);
    case Function::table: return fuzz_table(input);
    case Function::read_table: return read_table(input, text_of(input.payload));
    case Function::parse_many: return fuzz_parse_many(input);
    case Function::print_many: return fuzz_print_many(input);
    default: return fuzz_open(input);
    }
}

/// The type of a number in a mode; in one of 256 the usual.
const bgpdt_type *type_of(std::uint8_t number, std::uint8_t mode)
{
    const bgpdt_type *type = bgpdt_type_at(opened(), number % bgpdt_type_count(opened()));
    if (mode != UINT8_MAX)
        require(bgpdt_in_mode(type, mode_of(mode), &type) == BGPDT_OK, "every type is there in every mode");
    return type;
}

void run(Bytes input)
{
    const auto function = static_cast<Function>(input[1] % static_cast<std::uint8_t>(Function::count));
    const LibraryCase one{opened(), type_of(input[0], input[2]), function, input[3], input.subspan(library_header)};
    now = &one;
    require_no_memory_taken([&] { call(one); });
    now = nullptr;
}

} // namespace

void require_told(int code, const Error &error, std::size_t text_size)
{
    require((code < BGPDT_OK) != error.none(), "an error is there exactly if nothing was done");
    if (error.none())
        return;
    require(error->code == code && error->struct_size == sizeof(bgpdt_error), "an error tells its code");
    require(is_text(error->message) && is_text(error->reason) && is_text(error->repair), "its texts are texts");
    require(error->message.size != 0, "it has a sentence");
    require(error->at + error->length <= text_size, "it lies in the text");
    require(error->at_character <= error->at && error->characters <= error->length,
            "there are no more characters than bytes");
    for (const bgpdt_form &form : std::span(error->forms, error->form_count))
        require(is_text(form.kind) && is_text(form.form) && is_text(form.example), "its forms are texts");
}

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    if (size >= library_header && size <= most_bytes)
        run({data, size});
    return 0;
}
