// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value_class.hpp"

#include <algorithm>
#include <cstring>
#include <string>

#include "errors.hpp"
#include "fields.hpp"
#include "types.hpp"
#include "value.hpp"

namespace bgpdt::python {
namespace {

// ------------------------------------------------------------------------------------------------ texts and bytes

std::string hex_of(std::span<const std::uint8_t> bytes)
{
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        hex += "0123456789abcdef"[byte >> 4];
        hex += "0123456789abcdef"[byte & 0x0f];
    }
    return hex;
}

Ref text_or_hex(Value &value)
{
    if (Ref text = printed(value, value.type->type))
        return text;
    return text_of("0x" + hex_of(value.bytes()));
}

/// Whether the text gives the same value.
bool gives(Value &value, PyObject *text)
{
    const Type &type = *value.type;
    std::vector<std::uint8_t> bytes(type.size);
    const Text encoded(text, "a value");
    const std::string_view view = encoded.view();
    return bgpdt_parse(type.type, view.data(), view.size(), bytes.data(), bytes.size(), nullptr) == BGPDT_OK &&
           std::ranges::equal(bytes, value.bytes());
}

// ------------------------------------------------------------------------------------------------ methods

Ref to_bytes(PyObject *self, const Call &call)
{
    const auto [byte_order] = taken("to_bytes", call, {"byteorder"}, 0);
    Value &value = value_in(self);
    Ref bytes = bytes_of(value.data(), value.type->size);
    if (is_native(byte_order)) {
        auto *data = reinterpret_cast<std::uint8_t *>(PyBytes_AsString(bytes.get()));
        bgpdt_to_native(value.type->type, data, value.type->size);
    }
    return bytes;
}

Ref bytes_of_value(PyObject *self) { return bytes_of(value_in(self).data(), value_in(self).type->size); }

Ref hex(PyObject *self) { return text_of(hex_of(value_in(self).bytes())); }

Ref text(PyObject *self, const Call &call)
{
    const auto [mode] = taken("text", call, {"mode"}, 0);
    Value &value = value_in(self);
    const bgpdt_type *const type = in_mode(*value.type, mode);
    if (Ref text = printed(value, type))
        return text;
    std::size_t size = 0;
    char room[BGPDT_TEXT_ROOM];
    Error error;
    bgpdt_print(type, value.data(), value.type->size, room, sizeof room, &size, error.out());
    error.raise(value.type->state);
}

Ref format(PyObject *self, PyObject *format_spec)
{
    return given(PyObject_Format(text_or_hex(value_in(self)).get(), format_spec));
}

Ref fields(PyObject *self) { return fields_of(value_in(self)); }
Ref to_dict(PyObject *self) { return loaded(value_in(self), bgpdt_table); }
Ref explain(PyObject *self) { return loaded(value_in(self), bgpdt_explain); }

Ref compare(PyObject *self, PyObject *other)
{
    Value &value = value_in(self);
    if (Py_TYPE(other) != value.type->cls)
        raise(PyExc_TypeError, "%s compares with a value of its own type alone", value.type->name.c_str());
    int order = 0;
    Error error;
    if (bgpdt_compare(value.type->type, value.data(), value.type->size, value_in(other).data(), value.type->size,
                      &order, error.out()) != BGPDT_OK)
        error.raise(value.type->state);
    return given(PyLong_FromLong(order));
}

Ref check(PyObject *self)
{
    Value &value = value_in(self);
    Error error;
    if (bgpdt_check(value.type->type, value.data(), value.type->size, error.out()) != BGPDT_OK)
        error.raise(value.type->state);
    return none();
}

Ref swapped(PyObject *self)
{
    Value &value = value_in(self);
    Ref swapped = value_of(*value.type, value.data());
    Error error;
    if (bgpdt_swap(value.type->type, value_in(swapped.get()).data(), value.type->size, error.out()) != BGPDT_OK)
        error.raise(value.type->state);
    return swapped;
}

Ref itself(PyObject *self) { return another(self); }
Ref itself_deeply(PyObject *self, PyObject *) { return another(self); }

Ref reduce(PyObject *self)
{
    Value &value = value_in(self);
    const Ref module = another(PyType_GetModule(value.type->cls));
    const Ref maker = given(PyObject_GetAttrString(module.get(), "from_bytes"));
    const Ref name = text_of(value.type->name);
    const Ref arguments = given(PyTuple_Pack(2, name.get(), bytes_of_value(self).get()));
    return given(PyTuple_Pack(2, maker.get(), arguments.get()));
}

// ------------------------------------------------------------------------------------------------ methods of classes

Type &type_of_class(PyObject *cls) { return type_of(state_of_class(reinterpret_cast<PyTypeObject *>(cls)), cls); }

Ref class_from_bytes(PyObject *cls, const Call &call)
{
    const auto [bytes, byte_order] = taken("from_bytes", call, {"bytes", "byteorder"}, 1);
    return from_bytes(type_of_class(cls), bytes, byte_order);
}

Ref class_from_hex(PyObject *cls, PyObject *hex)
{
    const Type &type = type_of_class(cls);
    const Text text(hex, "from_hex()");
    Ref value = new_value(type);
    Error error;
    if (bgpdt_from_hex(type.type, text.view().data(), text.view().size(), value_in(value.get()).data(), type.size,
                       error.out()) != BGPDT_OK)
        error.raise(type.state);
    return value;
}

Ref class_from_dict(PyObject *cls, PyObject *table) { return from_table(type_of_class(cls), table); }

// ------------------------------------------------------------------------------------------------ slots

PyObject *construct(PyTypeObject *cls, PyObject *arguments, PyObject *names)
{
    return answered([&] {
        static const char *parameters[] = {"text", "mode", nullptr};
        PyObject *text = nullptr;
        PyObject *mode = nullptr;
        if (PyArg_ParseTupleAndKeywords(arguments, names, "O|O", const_cast<char **>(parameters), &text, &mode) == 0)
            throw Raised();
        return Py_TYPE(text) == cls
                   ? another(text)
                   : parsed(type_of(state_of_class(cls), reinterpret_cast<PyObject *>(cls)), text, mode);
    });
}

void destroy_value(PyObject *self)
{
    PyTypeObject *const cls = Py_TYPE(self);
    PyObject_Free(self);
    Py_DECREF(cls);
}

PyObject *string(PyObject *self)
{
    return answered([self] {
        Ref text = text_or_hex(value_in(self));
        return PyUnicode_Check(text.get()) != 0 ? std::move(text) : given(PyObject_Repr(text.get()));
    });
}

/// What evaluates to the value.
PyObject *represent(PyObject *self)
{
    return answered([self] {
        Value &value = value_in(self);
        const char *const name = value.type->full_name.c_str();
        const Ref text = printed(value, value.type->type);
        if (text && PyUnicode_Check(text.get()) != 0 && gives(value, text.get()))
            return given(PyUnicode_FromFormat("%s(%R)", name, text.get()));
        return given(PyUnicode_FromFormat("%s.from_bytes(%R)", name, bytes_of_value(self).get()));
    });
}

Py_hash_t hash(PyObject *self)
{
    return answered<Py_hash_t>(-1, [self] {
        const Py_hash_t hash = PyObject_Hash(bytes_of_value(self).get());
        return hash == -1 ? throw Raised() : hash;
    });
}

PyObject *compared(PyObject *self, PyObject *other, int operation)
{
    if (Py_TYPE(other) != Py_TYPE(self)) {
        Py_INCREF(Py_NotImplemented);
        return Py_NotImplemented;
    }
    const int order = std::memcmp(value_in(self).data(), value_in(other).data(), value_in(self).type->size);
    const bool holds[] = {order<0, order <= 0, order == 0, order != 0, order> 0, order >= 0};
    return PyBool_FromLong(holds[operation] ? 1 : 0);
}

PyObject *item(PyObject *self, PyObject *name)
{
    return answered([&] { return field_named(value_in(self), name); });
}

/// What a key's sub-kind word stands for.
PyObject *get_kind(PyObject *self, void *)
{
    return answered([self] {
        Ref kind = field_of(value_in(self), "sub-kind");
        const bool known = kind && PyUnicode_CompareWithASCIIString(kind.get(), "unknown") != 0;
        return known ? std::move(kind) : none();
    });
}

PyMethodDef *methods()
{
    static PyMethodDef rows[] = {
        method<to_bytes>("to_bytes",
                         "to_bytes($self, /, byteorder='big')\n--\n\nThe bytes; numbers in the router's byte "
                         "order, or in this machine's."),
        method<bytes_of_value>("__bytes__", "The bytes, numbers in the router's byte order."),
        method<hex>("hex", "hex($self, /)\n--\n\nThe bytes in hexadecimal, numbers in the router's byte order."),
        method<text>("text",
                     "text($self, /, mode=None)\n--\n\nAs the type prints the value in a mode of conversion: text, "
                     "or bytes in modes that give bytes."),
        method<format>("__format__", nullptr),
        method<fields>("fields", "fields($self, /)\n--\n\nThe fields by their names."),
        method<to_dict>("to_dict", "to_dict($self, /)\n--\n\nThe table that the router's scripts see."),
        method<explain>("explain", "explain($self, /)\n--\n\nThe value byte by byte: what each field is and means."),
        method<compare>("compare",
                        "compare($self, other, /)\n--\n\nThe router's comparison: -1, 0 or 1. Unlike bytes may "
                        "be equal."),
        method<check>("check", "check($self, /)\n--\n\nRaises Refusal if the router does not allow the value."),
        method<swapped>("swapped", "swapped($self, /)\n--\n\nThe value with its numbers' bytes reversed, as the router "
                                   "does it."),
        method<itself>("__copy__", nullptr),
        method<itself_deeply>("__deepcopy__", nullptr),
        method<reduce>("__reduce__", nullptr),
        method<class_from_bytes>("from_bytes",
                                 "from_bytes($type, /, bytes, byteorder='big')\n--\n\nThe value of bytes.", METH_CLASS),
        method<class_from_hex>("from_hex", "from_hex($type, hex, /)\n--\n\nThe value of bytes in hexadecimal.",
                               METH_CLASS),
        method<class_from_dict>("from_dict", "from_dict($type, table, /)\n--\n\nThe value that a script table says.",
                                METH_CLASS),
        {nullptr, nullptr, 0, nullptr},
    };
    return rows;
}

} // namespace

Ref new_value_class(PyObject *module)
{
    static PyGetSetDef getters[] = {
        {"kind", get_kind, nullptr, "the sub-kind of a key, None for a value without", nullptr},
        {nullptr, nullptr, nullptr, nullptr, nullptr},
    };
    PyType_Slot slots[] = {
        {Py_tp_doc, const_cast<char *>("A value of a type: so many bytes. It never changes.")},
        {Py_tp_dealloc, reinterpret_cast<void *>(destroy_value)},
        {Py_tp_repr, reinterpret_cast<void *>(represent)},
        {Py_tp_str, reinterpret_cast<void *>(string)},
        {Py_tp_hash, reinterpret_cast<void *>(hash)},
        {Py_tp_richcompare, reinterpret_cast<void *>(compared)},
        {Py_mp_subscript, reinterpret_cast<void *>(item)},
        {Py_tp_methods, methods()},
        {Py_tp_getset, getters},
        {0, nullptr},
    };
    PyType_Spec spec = {"bgpdt.Value", sizeof(Value), 1,
                        Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
    return given(PyType_FromModuleAndSpec(module, &spec, nullptr));
}

namespace {

/// What the class is, for help().
std::string about(const Type &type)
{
    const bgpdt_info &info = type.info();
    std::string text = type.name + "(text, mode=None)\n--\n\n" + std::string(view(info.about));
    if (info.grammar.size != 0)
        text.append(": ").append(view(info.grammar));
    for (const bgpdt_text &sample : std::span(info.samples, info.sample_count))
        text.append("\n    ").append(view(sample));
    return text;
}

} // namespace

Ref new_class(PyObject *module, Type &type)
{
    add_attributes(type);
    std::string doc = about(type);
    PyType_Slot slots[] = {
        {Py_tp_doc, doc.data()},
        {Py_tp_new, reinterpret_cast<void *>(construct)},
        {Py_tp_getset, type.getters.data()},
        {0, nullptr},
    };
    PyType_Spec spec = {type.full_name.c_str(), sizeof(Value), 1, Py_TPFLAGS_DEFAULT, slots};
    const Ref bases = given(PyTuple_Pack(1, type.state.value.get()));
    Ref cls = given(PyType_FromModuleAndSpec(module, &spec, bases.get()));
    done(PyObject_SetAttrString(cls.get(), "__match_args__", match_arguments(type).get()));
    return cls;
}

} // namespace bgpdt::python
