// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes libbgpdt by sequences of calls: what one gives is what the next takes. A step of an input is a byte for the call,
/// one for the value it is about, and what the call needs, as Pieces has it.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "bgpdt/bgpdt.hpp"
#include "input.hpp"
#include "pieces.hpp"
#include "property.hpp"

namespace bgpdt::fuzzing {

namespace {

constexpr std::size_t most_steps = 64;

/// A value of a type, in the target's order.
struct Slot {
    const bgpdt_type *type = nullptr;
    std::vector<std::uint8_t> bytes;

    std::size_t size() const { return bytes.size(); }
    std::uint8_t *data() { return bytes.data(); }
};

std::string_view text_of(const bgpdt_text &text) { return {text.data, text.size}; }

/// One error object that every call is given, as programs do.
class Sequence {
public:
    explicit Sequence(Pieces input) : input_(input)
    {
        require(bgpdt_open(nullptr, &library_, nullptr) == BGPDT_OK, "the library opens");
        for (Slot &slot : slots_)
            choose(slot, 0);
    }
    ~Sequence()
    {
        bgpdt_error_free(error_);
        static_cast<void>(bgpdt_load_names(library_, "/dev/null", 9, nullptr));
        for (int i = 0; i < times_; ++i)
            bgpdt_close(library_);
    }
    Sequence(const Sequence &) = delete;
    Sequence &operator=(const Sequence &) = delete;

    void run()
    {
        for (std::size_t i = 0; i < most_steps && !input_.empty(); ++i)
            step();
    }

private:
    using Step = void (Sequence::*)(Slot &);

    void step();

    bgpdt_error **error()
    {
        bgpdt_error_free(error_);
        error_ = nullptr;
        return &error_;
    }
    Slot &other() { return slots_[input_.byte() % std::size(slots_)]; }

    void choose(Slot &slot, std::size_t number)
    {
        slot.type = bgpdt_type_at(library_, number % bgpdt_type_count(library_));
        slot.bytes.assign(bgpdt_about(slot.type)->value_size, 0);
    }
    void choose(Slot &slot) { choose(slot, input_.byte()); }

    void find(Slot &slot)
    {
        const std::string name = input_.piece();
        const bgpdt_type *type = nullptr;
        if (bgpdt_find(library_, name.data(), name.size(), &type, error()) == BGPDT_OK) {
            slot.type = type;
            slot.bytes.assign(bgpdt_about(type)->value_size, 0);
        }
    }

    /// The value stays: a mode changes how it is printed, not what it is.
    void change_mode(Slot &slot)
    {
        require(bgpdt_in_mode(slot.type, input_.byte(), &slot.type) == BGPDT_OK, "every type is there in every mode");
        require(bgpdt_about(slot.type)->value_size == slot.size(), "a mode changes no size");
    }

    void open(Slot &)
    {
        bgpdt_library *again = nullptr;
        require(bgpdt_open(nullptr, &again, error()) == BGPDT_OK && again == library_, "the process has one library");
        ++times_;
    }

    void close(Slot &)
    {
        if (times_ > 1) {
            bgpdt_close(library_);
            --times_;
        }
    }

    void load_names(Slot &)
    {
        const std::string names = input_.piece();
        const int file = memfd_create("names", MFD_CLOEXEC);
        require(write(file, names.data(), names.size()) == static_cast<ssize_t>(names.size()), "a file is in memory");
        const std::string path = "/proc/self/fd/" + std::to_string(file);
        const int code = bgpdt_load_names(library_, path.data(), path.size(), error());
        require(code == BGPDT_OK || code == BGPDT_NO_PLUGIN, "names are loaded or refused");
        ::close(file);
    }

    /// A text that is refused leaves the value as it was.
    void parse(Slot &slot)
    {
        const std::string text = input_.piece();
        const std::vector<std::uint8_t> before = slot.bytes;
        const int code = bgpdt_parse(slot.type, text.data(), text.size(), slot.data(), slot.size(), error());
        require((code == BGPDT_OK) == (error_ == nullptr), "an error is there exactly if a text is refused");
        if (code != BGPDT_OK)
            slot.bytes = before;
    }

    void fill(Slot &slot)
    {
        const std::string bytes = input_.piece();
        std::memcpy(slot.data(), bytes.data(), std::min(bytes.size(), slot.size()));
    }

    void copy(Slot &slot) { other() = slot; }

    void turn(Slot &slot)
    {
        const std::vector<std::uint8_t> before = slot.bytes;
        require(bgpdt_to_native(slot.type, slot.data(), slot.size()) == BGPDT_OK &&
                    bgpdt_from_native(slot.type, slot.data(), slot.size()) == BGPDT_OK && slot.bytes == before,
                "a value goes to the machine's order and back");
    }

    void print(Slot &slot)
    {
        char text[BGPDT_TEXT_ROOM];
        std::size_t size = 0;
        const int code = bgpdt_print(slot.type, slot.data(), slot.size(), text, sizeof text, &size, error());
        require((code < BGPDT_OK) == (error_ != nullptr), "an error is there exactly if nothing was done");
        require(code < BGPDT_OK || size < sizeof text, "the room is enough");
    }

    void swap(Slot &slot)
    {
        const std::vector<std::uint8_t> before = slot.bytes;
        if (bgpdt_swap(slot.type, slot.data(), slot.size(), error()) != BGPDT_OK)
            require(slot.bytes == before, "a swap that is refused changes nothing");
    }

    int order_of(Slot &first, Slot &second)
    {
        int order = 0;
        require(bgpdt_order(first.type, first.data(), first.size(), second.data(), second.size(), &order) == BGPDT_OK,
                "all values of a type are ordered");
        return order;
    }

    void order(Slot &first)
    {
        Slot &second = other();
        Slot &third = other();
        const bool alike = text_of(bgpdt_about(first.type)->name) == text_of(bgpdt_about(second.type)->name) &&
                           text_of(bgpdt_about(first.type)->name) == text_of(bgpdt_about(third.type)->name);
        if (!alike)
            return;
        const int ab = order_of(first, second);
        require(ab == -order_of(second, first) && (ab == 0) == (first.bytes == second.bytes), "the order is total");
        if (ab <= 0 && order_of(second, third) <= 0)
            require(order_of(first, third) <= 0, "the order goes on from value to value");
    }

    /// Each field of the list is what it is by its name, and one of those that the type knows.
    void fields(Slot &slot)
    {
        bgpdt_fields *fields = nullptr;
        if (bgpdt_fields_of(slot.type, slot.data(), slot.size(), &fields, error()) != BGPDT_OK)
            return;
        for (const bgpdt_named_field &row : std::span(fields->rows, fields->count))
            require_field(slot, row);
        bgpdt_fields_free(fields);
    }

    void require_field(Slot &slot, const bgpdt_named_field &row)
    {
        char *text = nullptr;
        std::size_t size = 0;
        const int code =
            bgpdt_field(slot.type, slot.data(), slot.size(), row.name.data, row.name.size, &text, &size, error());
        require(code == (row.code) && text_of(row.text) == std::string_view(text, size),
                "a field of the list is the field of its name");
        bgpdt_free(text);
    }

    /// What a table says is read, or refused.
    void table(Slot &slot)
    {
        char *json = nullptr;
        std::size_t size = 0;
        if (bgpdt_table(slot.type, slot.data(), slot.size(), &json, &size, error()) == BGPDT_OK) {
            std::vector<std::uint8_t> read(slot.size());
            static_cast<void>(bgpdt_read_table(slot.type, json, size, read.data(), read.size(), error()));
        }
        bgpdt_free(json);
    }

    void why(Slot &slot)
    {
        const std::string text = input_.piece();
        std::vector<std::uint8_t> value(slot.size());
        const int code = bgpdt_why(slot.type, text.data(), text.size(), error());
        require((code == BGPDT_OK) == (error_ == nullptr), "an error is there exactly if a text is refused");
        require(bgpdt_parse(slot.type, text.data(), text.size(), value.data(), value.size(), nullptr) == code,
                "a reason is told exactly for what is not taken");
    }

    Pieces input_;
    bgpdt_library *library_ = nullptr;
    int times_ = 1;
    Slot slots_[4];
    bgpdt_error *error_ = nullptr;
};

void Sequence::step()
{
    static constexpr Step steps[] = {
        &Sequence::choose, &Sequence::find,       &Sequence::change_mode, &Sequence::open,
        &Sequence::close,  &Sequence::load_names, &Sequence::parse,       &Sequence::fill,
        &Sequence::copy,   &Sequence::turn,       &Sequence::print,       &Sequence::swap,
        &Sequence::order,  &Sequence::fields,     &Sequence::table,       &Sequence::why,
    };
    const Step chosen = steps[input_.byte() % std::size(steps)];
    (this->*chosen)(other());
}

void run(std::span<const std::uint8_t> input)
{
    Sequence(Pieces(input)).run(); // what functions make at their first call stays
    require_no_memory_taken([&] { Sequence(Pieces(input)).run(); });
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    // The plug-in's counters are libFuzzer's: it stays.
    static const bool ready = [] {
        bgpdt_library *library = nullptr;
        return bgpdt_open(nullptr, &library, nullptr) == BGPDT_OK;
    }();
    if (ready && size <= most_bytes)
        run({data, size});
    return 0;
}
