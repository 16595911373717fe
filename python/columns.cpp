// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Many rows at a time: they are gathered with the interpreter's lock and converted without it.
#include <algorithm>
#include <stdexcept>

#include "column.hpp"
#include "errors.hpp"
#include "rows.hpp"
#include "types.hpp"
#include "value.hpp"

namespace bgpdt::python {
namespace {

/// Runs the work for each chunk of the rows.
template <class Work>
void for_each_chunk(Type &type, PyObject *column, Wanted wanted, const Work &work)
{
    const std::unique_ptr<Rows> rows = rows_of(type, column, wanted);
    const auto chunk = std::make_unique<Chunk>();
    for (rows->fill(*chunk); chunk->count() != 0; rows->fill(*chunk)) {
        {
            const Working working(type.state);
            work(*chunk);
        }
        done(PyErr_CheckSignals());
        chunk->clear();
    }
}

void require(const Type &type, int code)
{
    if (code == BGPDT_NO_MEMORY)
        throw std::bad_alloc();
    if (code != BGPDT_OK)
        throw std::runtime_error(type.name + ": " + bgpdt_code_text(code));
}

void require_operation(const Type &type, unsigned operation)
{
    if ((type.info().operations & operation) == 0)
        raise(PyExc_TypeError, "%s does not %s", type.name.c_str(), bgpdt_operation_word(operation));
}

// ------------------------------------------------------------------------------------------------ texts to values

/// Adds the chunk's rows to the values; all chunks but the last have a multiple of eight.
void parse_chunk(const Type &type, const bgpdt_type *in_mode, const Chunk &chunk, Content &content)
{
    Rowset &rows = content.rows;
    const bgpdt_column column = chunk.column();
    const std::size_t bits = (chunk.count() + 7) / 8;
    std::size_t numbers[Chunk::most];
    bgpdt_refused refused{sizeof refused, 0, numbers, Chunk::most};
    const std::size_t size = chunk.count() * type.size;
    require(type,
            bgpdt_parse_many(in_mode, &column, rows.fixed.grow(size), size, rows.validity.grow(bits), bits, &refused));
    for (const std::size_t number : std::span(numbers, refused.count)) {
        content.refused.rows.push_back(rows.count + number);
        content.refused.texts.add_text(chunk.at(number));
    }
    const std::uint8_t *valid = rows.validity.data() + rows.validity.size() - bits;
    for (std::size_t i = 0; i < chunk.count(); ++i)
        rows.missing += has_bit(valid, i) ? 0 : 1;
    rows.count += chunk.count();
}

// ------------------------------------------------------------------------------------------------ values to texts

/// The chunk's values, one behind the other; a row of another size is none.
struct Values {
    Values(const Type &type, const Chunk &chunk) : bytes(chunk.count() * type.size), valid((chunk.count() + 7) / 8)
    {
        for (std::size_t row = 0; row < chunk.count(); ++row) {
            if (!chunk.has(row) || chunk.at(row).size() != type.size)
                continue;
            std::ranges::copy(chunk.at(row), bytes.begin() + static_cast<std::ptrdiff_t>(row * type.size));
            set_bit(valid.data(), row);
        }
    }
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint8_t> valid;
};

/// The chunk's texts.
struct Texts {
    Texts(const Type &type, const bgpdt_type *in_mode, const Values &values, std::size_t count)
        : offsets(count + 1), bytes(64 * count), valid((count + 7) / 8)
    {
        std::size_t printed = 0;
        int code = BGPDT_NO_ROOM;
        for (; code == BGPDT_NO_ROOM; bytes.resize(2 * bytes.size())) {
            const bgpdt_column_room room{sizeof room,  offsets.data(), sizeof offsets[0], bytes.data(),
                                         bytes.size(), valid.data(),   valid.size()};
            code = bgpdt_print_many(in_mode, values.bytes.data(), values.bytes.size(), count, values.valid.data(),
                                    &room, &printed, nullptr);
        }
        require(type, code);
    }
    std::vector<std::uint64_t> offsets;
    std::vector<char> bytes;
    std::vector<std::uint8_t> valid;
};

/// The size of the UTF-8 sequence that the text begins with; 0 for what is none (RFC 3629).
std::size_t sequence_size(std::string_view text)
{
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U; };
    const auto continues = [&byte](std::size_t i) { return byte(i) >> 6 == 2; };
    if (byte(0) < 0x80)
        return 1;
    if (byte(0) >= 0xC2 && byte(0) < 0xE0 && continues(1))
        return 2;
    const unsigned front = byte(0) << 8 | byte(1);
    const bool three = front >= 0xE0A0 && front < 0xF000 && (front < 0xEDA0 || front >= 0xEE00);
    if (three && continues(1) && continues(2))
        return 3;
    const bool four = front >= 0xF090 && front < 0xF490;
    return four && continues(1) && continues(2) && continues(3) ? 4 : 0;
}

/// As columns of texts have to be.
bool is_utf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = sequence_size(text.substr(at));
        if (size == 0)
            return false;
        at += size;
    }
    return true;
}

/// The rows whose text is none, as that of a name of any bytes may be, are refused.
void print_chunk(const Type &type, const bgpdt_type *in_mode, const Chunk &chunk, Content &content)
{
    const Values values(type, chunk);
    const Texts texts(type, in_mode, values, chunk.count());
    for (std::size_t row = 0; row < chunk.count(); ++row) {
        const std::string_view text(texts.bytes.data() + texts.offsets[row],
                                    static_cast<std::size_t>(texts.offsets[row + 1] - texts.offsets[row]));
        const bool there = has_bit(texts.valid.data(), row) && is_utf8(text);
        if (!there && chunk.has(row))
            content.refused.rows.push_back(content.rows.count);
        if (there)
            content.rows.add_text(text);
        else
            content.rows.add_no_text();
    }
}

// ------------------------------------------------------------------------------------------------ values to fields

std::unique_ptr<bgpdt_fields, void (*)(bgpdt_fields *)> owned(bgpdt_fields *fields)
{
    return {fields, bgpdt_fields_free};
}

void add_nothing(Rowset &field)
{
    if (field.format == "U") {
        field.add_no_text();
    } else {
        field.fixed.add(std::uint64_t{0});
        field.note(false);
    }
}

void add_field(Rowset &field, const bgpdt_named_field *found)
{
    if (found == nullptr) {
        add_nothing(field);
    } else if (field.format == "U") {
        field.add_text(view(found->text));
    } else if (found->code != BGPDT_NUMBER) {
        throw std::runtime_error("the field " + field.name + " is no number here");
    } else {
        field.fixed.add(std::uint64_t{std::strtoull(found->text.data, nullptr, 10)});
        field.note(true);
    }
}

void explain_row(const Type &type, std::string_view value, Content &content)
{
    bgpdt_fields *given = nullptr;
    const int code =
        bgpdt_fields_of(type.type, reinterpret_cast<const std::uint8_t *>(value.data()), value.size(), &given, nullptr);
    const auto owner = owned(given);
    if (code != BGPDT_REFUSED) // of another size
        require(type, code);
    else
        content.refused.rows.push_back(content.rows.count);
    const std::span fields(given == nullptr ? nullptr : given->rows, given == nullptr ? 0 : given->count);
    for (Rowset &field : content.rows.fields) {
        const auto found = std::ranges::find(fields, field.name, [](const auto &row) { return view(row.name); });
        add_field(field, found == fields.end() ? nullptr : &*found);
    }
    content.rows.note(given != nullptr);
}

void explain_chunk(const Type &type, const Chunk &chunk, Content &content)
{
    for (std::size_t row = 0; row < chunk.count(); ++row) {
        if (chunk.has(row)) {
            explain_row(type, chunk.at(row), content);
            continue;
        }
        for (Rowset &field : content.rows.fields)
            add_nothing(field);
        content.rows.note(false);
    }
}

/// Whether the names, if there are any, have this one.
bool is_asked(PyObject *names, bgpdt_text name)
{
    if (names == nullptr || names == Py_None)
        return true;
    const int has = PySequence_Contains(names, text_of(name).get());
    done(has);
    return has != 0;
}

void require_known(const Type &type, PyObject *names, const std::vector<Rowset> &fields)
{
    const Ref list = given(PySequence_List(names));
    for (Py_ssize_t i = 0; i < PyList_Size(list.get()); ++i) {
        PyObject *const name = PyList_GetItem(list.get(), i);
        const Text text(name, "explain_many()");
        if (std::ranges::find(fields, text.view(), &Rowset::name) == fields.end())
            raise(PyExc_KeyError, "no value of %s has a field %U", type.name.c_str(), name);
    }
}

/// A column for each field, in the order of the type's.
std::vector<Rowset> columns_for(const Type &type, PyObject *names)
{
    bgpdt_fields *known = nullptr;
    Error error;
    if (bgpdt_known_fields(type.type, &known, error.out()) != BGPDT_OK)
        error.raise(type.state);
    const auto owner = owned(known);
    std::vector<Rowset> fields;
    for (const bgpdt_named_field &field : std::span(known->rows, known->count)) {
        if (!is_asked(names, field.name))
            continue;
        std::string name(view(field.name));
        fields.push_back(field.code == BGPDT_NUMBER ? Rowset{"L", std::move(name)} : texts_named(std::move(name)));
    }
    if (names != nullptr && names != Py_None)
        require_known(type, names, fields);
    return fields;
}

} // namespace

Ref parse_many(PyObject *module, const Call &call)
{
    const auto [name, texts, mode] = taken("parse_many", call, {"type", "texts", "mode"}, 2);
    Type &type = type_of(state_of_module(module), name);
    const bgpdt_type *const parsing = in_mode(type, mode);
    require_operation(type, BGPDT_PARSE);
    Content content{Rowset{"w:" + std::to_string(type.size)}};
    for_each_chunk(type, texts, Wanted::texts, [&](const Chunk &chunk) { parse_chunk(type, parsing, chunk, content); });
    return new_column(type, std::move(content), parsing);
}

Ref print_many(PyObject *module, const Call &call)
{
    const auto [name, values, mode] = taken("print_many", call, {"type", "values", "mode"}, 2);
    Type &type = type_of(state_of_module(module), name);
    const bgpdt_type *const printing = in_mode(type, mode);
    require_operation(type, BGPDT_PRINT);
    Content content{texts_named("text")};
    for_each_chunk(type, values, Wanted::values,
                   [&](const Chunk &chunk) { print_chunk(type, printing, chunk, content); });
    return new_column(type, std::move(content), nullptr);
}

Ref explain_many(PyObject *module, const Call &call)
{
    const auto [name, values, fields] = taken("explain_many", call, {"type", "values", "fields"}, 2);
    Type &type = type_of(state_of_module(module), name);
    Content content{Rowset{"+s"}};
    content.rows.fields = columns_for(type, fields);
    for_each_chunk(type, values, Wanted::values, [&](const Chunk &chunk) { explain_chunk(type, chunk, content); });
    return new_column(type, std::move(content), nullptr);
}

} // namespace bgpdt::python
