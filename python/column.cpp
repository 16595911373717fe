// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "column.hpp"

#include <map>

#include "refusal.hpp"
#include "value.hpp"

namespace bgpdt::python {
namespace {

struct Object {
    PyObject_HEAD Type *type;
    const bgpdt_type *parsed_by; ///< null of what is no column of parsed values
    SharedContent content;
};

Object &object_in(PyObject *self) { return *reinterpret_cast<Object *>(self); }
const Content &content_of(PyObject *self) { return *object_in(self).content; }

// ------------------------------------------------------------------------------------------------ rows

Ref row_of(const Type &type, const Rowset &rows, std::size_t row);

/// Those that the row has.
Ref fields_at(const Type &type, const Rowset &rows, std::size_t row)
{
    Ref fields = given(PyDict_New());
    for (const Rowset &field : rows.fields)
        if (field.has(row))
            set(fields.get(), text_of(field.name).get(), row_of(type, field, row));
    return fields;
}

Ref row_of(const Type &type, const Rowset &rows, std::size_t row)
{
    if (!rows.has(row))
        return none();
    if (rows.format == "U")
        return text_of(rows.text(row));
    if (rows.format == "+s")
        return fields_at(type, rows, row);
    if (rows.format != "L")
        return value_of(type, rows.fixed.data() + row * type.size);
    std::uint64_t content = 0;
    std::memcpy(&content, rows.fixed.data() + row * sizeof content, sizeof content);
    return given(PyLong_FromUnsignedLongLong(content));
}

Py_ssize_t length(PyObject *self) { return static_cast<Py_ssize_t>(content_of(self).rows.count); }

PyObject *item(PyObject *self, Py_ssize_t row)
{
    return answered([&] {
        if (row < 0 || row >= length(self))
            raise(PyExc_IndexError, "the column has %zd rows", length(self));
        return row_of(*object_in(self).type, content_of(self).rows, static_cast<std::size_t>(row));
    });
}

PyObject *represent(PyObject *self)
{
    return answered([self] {
        const Content &content = content_of(self);
        const std::string refused =
            content.refused.rows.empty() ? "" : ", " + std::to_string(content.refused.rows.size()) + " refused";
        return text_of("<bgpdt.Column of " + std::to_string(content.rows.count) + " rows of " +
                       object_in(self).type->name + refused + ">");
    });
}

// ------------------------------------------------------------------------------------------------ refused rows

PyObject *get_refused(PyObject *self, void *)
{
    return answered([self] {
        const auto &rows = content_of(self).refused.rows;
        Ref list = given(PyList_New(static_cast<Py_ssize_t>(rows.size())));
        for (std::size_t i = 0; i < rows.size(); ++i)
            done(PyList_SetItem(list.get(), static_cast<Py_ssize_t>(i), number(rows[i]).release()));
        return list;
    });
}

void require_texts(PyObject *self)
{
    if (object_in(self).parsed_by == nullptr)
        raise(PyExc_TypeError, "the reasons are those of texts that parse_many() refused");
}

Ref refusal(PyObject *self, PyObject *row)
{
    require_texts(self);
    const std::size_t asked = PyLong_AsSize_t(row);
    if (PyErr_Occurred() != nullptr)
        throw Raised();
    const Refused &refused = content_of(self).refused;
    const auto found = std::ranges::lower_bound(refused.rows, asked);
    if (found == refused.rows.end() || *found != asked)
        raise(PyExc_KeyError, "row %zu was not refused", asked);
    const Ref text = text_of(refused.texts.text(static_cast<std::size_t>(found - refused.rows.begin())));
    const Ref mode = given(PyLong_FromUnsignedLong(bgpdt_about(object_in(self).parsed_by)->mode));
    return refusal_of(*object_in(self).type, text.get(), mode.get());
}

/// Why texts are refused; each is asked for once.
class Reasons {
public:
    explicit Reasons(const bgpdt_type *type) : type_(type) {}

    const std::string &of(std::string_view text)
    {
        const auto [found, is_new] = known_.try_emplace(std::string(text));
        if (is_new)
            found->second = asked(text);
        return found->second;
    }

private:
    std::string asked(std::string_view text) const
    {
        Error error;
        const int code = bgpdt_why(type_, text.data(), text.size(), error.out());
        if (code == BGPDT_NO_MEMORY)
            throw std::bad_alloc();
        return code == BGPDT_OK ? "" : std::string(view(error->message));
    }

    const bgpdt_type *type_;
    std::map<std::string, std::string, std::less<>> known_;
};

Rowset reasons_of(const Content &content, const bgpdt_type *type)
{
    Reasons reasons(type);
    Rowset rows = texts_named("reason");
    for (std::size_t i = 0; i < content.refused.rows.size(); ++i) {
        while (rows.count < content.refused.rows[i])
            rows.add_no_text();
        rows.add_text(reasons.of(content.refused.texts.text(i)));
    }
    while (rows.count < content.rows.count)
        rows.add_no_text();
    return rows;
}

Ref reasons(PyObject *self)
{
    require_texts(self);
    Object &column = object_in(self);
    Content found{Rowset{}};
    {
        const Working working(column.type->state);
        found.rows = reasons_of(*column.content, column.parsed_by);
    }
    return new_column(*column.type, std::move(found), nullptr);
}

// ------------------------------------------------------------------------------------------------ to other libraries

Ref arrow_schema(PyObject *self) { return schema_of(object_in(self).content); }

Ref arrow_array(PyObject *self, const Call &call)
{
    taken("__arrow_c_array__", call, {"requested_schema"}, 0); // no other schema fits
    return array_of(object_in(self).content);
}

Ref arrow_stream(PyObject *self, const Call &call)
{
    taken("__arrow_c_stream__", call, {"requested_schema"}, 0);
    return stream_of(object_in(self).content);
}

/// How NumPy sees values: as so many bytes each.
PyObject *get_array_interface(PyObject *self, void *)
{
    return answered([self] {
        const Object &column = object_in(self);
        if (!column.content->rows.format.starts_with("w:"))
            raise(PyExc_AttributeError, "a column of values has an array interface, others have none");
        const Ref interface = given(PyDict_New());
        const auto add = [&interface](const char *name, const Ref &value) {
            done(PyDict_SetItemString(interface.get(), name, value.get()));
        };
        const Ref address = given(PyLong_FromVoidPtr(const_cast<std::uint8_t *>(column.content->rows.fixed.data())));
        const Ref count = number(column.content->rows.count);
        add("version", given(PyLong_FromLong(3)));
        add("typestr", text_of("|V" + std::to_string(column.type->size)));
        add("shape", given(PyTuple_Pack(1, count.get())));
        add("data", given(PyTuple_Pack(2, address.get(), Py_True)));
        return another(interface.get());
    });
}

PyObject *get_type(PyObject *self, void *)
{
    return answered([self] { return another(reinterpret_cast<PyObject *>(object_in(self).type->cls)); });
}

PyObject *get_missing(PyObject *self, void *)
{
    return answered([self] { return number(content_of(self).rows.missing); });
}

void destroy_column(PyObject *self)
{
    PyTypeObject *const cls = Py_TYPE(self);
    object_in(self).content.~SharedContent();
    Py_DECREF(object_in(self).type->cls);
    PyObject_Free(self);
    Py_DECREF(cls);
}

} // namespace

Ref new_column(Type &type, Content content, const bgpdt_type *parsed_by)
{
    auto shared = std::make_shared<const Content>(std::move(content));
    auto *object = PyObject_New(Object, reinterpret_cast<PyTypeObject *>(type.state.column.get()));
    if (object == nullptr)
        throw Raised();
    Py_INCREF(type.cls); // with which the state lives
    object->type = &type;
    object->parsed_by = parsed_by;
    new (&object->content) SharedContent(std::move(shared));
    return Ref(reinterpret_cast<PyObject *>(object));
}

Ref new_column_class(PyObject *module)
{
    static PyMethodDef methods[] = {
        method<refusal>("refusal",
                        "refusal($self, row, /)\n--\n\nThe Refusal of a refused row; KeyError for any other."),
        method<reasons>("reasons", "reasons($self, /)\n--\n\nThe reasons of refused rows, a column of as many rows."),
        method<arrow_schema>("__arrow_c_schema__", nullptr),
        method<arrow_array>("__arrow_c_array__", nullptr),
        method<arrow_stream>("__arrow_c_stream__", nullptr),
        {nullptr, nullptr, 0, nullptr},
    };
    static PyGetSetDef getters[] = {
        {"type", get_type, nullptr, "the class of the values", nullptr},
        {"refused", get_refused, nullptr, "the numbers of the rows that were refused", nullptr},
        {"null_count", get_missing, nullptr, "how many rows have nothing", nullptr},
        {"__array_interface__", get_array_interface, nullptr, nullptr, nullptr},
        {nullptr, nullptr, nullptr, nullptr, nullptr},
    };
    PyType_Slot slots[] = {
        {Py_tp_doc, const_cast<char *>("Values, texts or fields of many rows: a sequence, and an array of Arrow's.")},
        {Py_tp_dealloc, reinterpret_cast<void *>(destroy_column)},
        {Py_tp_repr, reinterpret_cast<void *>(represent)},
        {Py_tp_iter, reinterpret_cast<void *>(PySeqIter_New)},
        {Py_sq_length, reinterpret_cast<void *>(length)},
        {Py_sq_item, reinterpret_cast<void *>(item)},
        {Py_tp_methods, methods},
        {Py_tp_getset, getters},
        {0, nullptr},
    };
    PyType_Spec spec = {"bgpdt.Column", sizeof(Object), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION,
                        slots};
    return given(PyType_FromModuleAndSpec(module, &spec, nullptr));
}

} // namespace bgpdt::python
