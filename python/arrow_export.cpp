// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <cerrno>

#include "column.hpp"

namespace bgpdt::python {
namespace {

/// What an array that was handed out keeps, until it is released; in any thread, without the interpreter.
struct ArrayKeeper {
    SharedContent content;
    const void *buffers[3] = {};
    std::vector<ArrowArray *> children = {};
};

struct SchemaKeeper {
    SharedContent content;
    std::vector<ArrowSchema *> children = {};
};

template <class Structure>
void release_children(Structure &structure)
{
    for (std::int64_t i = 0; i < structure.n_children; ++i) {
        if (structure.children[i]->release != nullptr)
            structure.children[i]->release(structure.children[i]);
        delete structure.children[i];
    }
}

/// A structure until somebody else has it.
template <class Structure>
using Own = std::unique_ptr<Structure, void (*)(Structure *)>;

template <class Structure>
void destroy(Structure *structure)
{
    if (structure->release != nullptr)
        structure->release(structure);
    delete structure;
}

template <class Structure, class Fill>
Own<Structure> filled(const Fill &fill)
{
    Own<Structure> structure(new Structure{}, destroy<Structure>);
    fill(*structure);
    return structure;
}

template <class Structure, class Keeper>
void release(Structure *structure)
{
    release_children(*structure);
    delete static_cast<Keeper *>(structure->private_data);
    structure->release = nullptr;
}

void fill_schema(ArrowSchema &schema, const SharedContent &content, const Rowset &rows)
{
    auto keeper = std::make_unique<SchemaKeeper>(SchemaKeeper{content});
    keeper->children.reserve(rows.fields.size());
    schema = {rows.format.c_str(),
              rows.name.c_str(),
              nullptr,
              nullable,
              0,
              nullptr,
              nullptr,
              release<ArrowSchema, SchemaKeeper>,
              nullptr};
    schema.children = keeper->children.data();
    SchemaKeeper &kept = *keeper;
    schema.private_data = keeper.release();
    for (const Rowset &field : rows.fields) {
        auto child = filled<ArrowSchema>([&](ArrowSchema &of) { fill_schema(of, content, field); });
        kept.children.push_back(child.release());
        ++schema.n_children;
    }
}

bool is_table(const Rowset &rows) { return rows.format == "+s"; }

/// The bits of the rows that are there; numbers, values or offsets; texts.
std::int64_t buffers_of(const Rowset &rows) { return is_table(rows) ? 1 : (rows.format == "U" ? 3 : 2); }

/// @param whole  the rows of a table are all there: it is their fields that are missing
void fill_array(ArrowArray &array, const SharedContent &content, const Rowset &rows, bool whole = false)
{
    auto keeper = std::make_unique<ArrayKeeper>(ArrayKeeper{content});
    keeper->children.reserve(rows.fields.size());
    const bool texts = rows.format == "U";
    keeper->buffers[0] = whole || rows.missing == 0 ? nullptr : rows.validity.data();
    keeper->buffers[1] = texts ? rows.offsets.data() : rows.fixed.data();
    keeper->buffers[2] = rows.bytes.data();
    array = {static_cast<std::int64_t>(rows.count),
             whole ? 0 : static_cast<std::int64_t>(rows.missing),
             0,
             buffers_of(rows),
             0,
             nullptr,
             nullptr,
             nullptr,
             release<ArrowArray, ArrayKeeper>,
             nullptr};
    array.buffers = keeper->buffers;
    array.children = keeper->children.data();
    ArrayKeeper &kept = *keeper;
    array.private_data = keeper.release();
    for (const Rowset &field : rows.fields) {
        auto child = filled<ArrowArray>([&](ArrowArray &of) { fill_array(of, content, field); });
        kept.children.push_back(child.release());
        ++array.n_children;
    }
}

// ------------------------------------------------------------------------------------------------ capsules

template <class Structure, const char *const &name>
void destroy_capsule(PyObject *capsule)
{
    destroy(static_cast<Structure *>(PyCapsule_GetPointer(capsule, name)));
}

/// A structure in a capsule, once it is filled.
template <class Structure, const char *const &name, class Fill>
Ref capsule_of(const Fill &fill)
{
    Own<Structure> structure = filled<Structure>(fill);
    Ref capsule = given(PyCapsule_New(structure.get(), name, destroy_capsule<Structure, name>));
    static_cast<void>(structure.release());
    return capsule;
}

// ------------------------------------------------------------------------------------------------ stream

/// A stream of one array.
struct StreamKeeper {
    SharedContent content;
    bool given = false;
};

StreamKeeper &keeper_of(ArrowArrayStream *stream) { return *static_cast<StreamKeeper *>(stream->private_data); }

/// Hands the filled structure over.
template <class Structure, class Fill>
int give(Structure *to, const Fill &fill)
{
    try {
        Own<Structure> structure = filled<Structure>(fill);
        *to = *structure;
        structure->release = nullptr;
        return 0;
    } catch (const std::bad_alloc &) {
        return ENOMEM;
    }
}

int get_schema(ArrowArrayStream *stream, ArrowSchema *schema)
{
    return give(schema, [stream](ArrowSchema &of) {
        fill_schema(of, keeper_of(stream).content, keeper_of(stream).content->rows);
    });
}

int get_next(ArrowArrayStream *stream, ArrowArray *array)
{
    return give(array, [stream](ArrowArray &of) {
        StreamKeeper &keeper = keeper_of(stream);
        if (!std::exchange(keeper.given, true))
            fill_array(of, keeper.content, keeper.content->rows, is_table(keeper.content->rows));
    });
}

const char *get_last_error(ArrowArrayStream *) { return "not enough memory"; }

void release_stream(ArrowArrayStream *stream)
{
    delete &keeper_of(stream);
    stream->release = nullptr;
}

} // namespace

Ref schema_of(const SharedContent &content)
{
    return capsule_of<ArrowSchema, schema_capsule>(
        [&](ArrowSchema &schema) { fill_schema(schema, content, content->rows); });
}

Ref array_of(const SharedContent &content)
{
    const Ref schema = schema_of(content);
    const Ref array =
        capsule_of<ArrowArray, array_capsule>([&](ArrowArray &filled) { fill_array(filled, content, content->rows); });
    return given(PyTuple_Pack(2, schema.get(), array.get()));
}

Ref stream_of(const SharedContent &content)
{
    return capsule_of<ArrowArrayStream, stream_capsule>([&](ArrowArrayStream &stream) {
        stream.private_data = new StreamKeeper{content};
        stream.get_schema = get_schema;
        stream.get_next = get_next;
        stream.get_last_error = get_last_error;
        stream.release = release_stream;
    });
}

} // namespace bgpdt::python
