// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value.hpp"

#include <cstring>

#include "refusal.hpp"
#include "types.hpp"

namespace bgpdt::python {

bool is_native(PyObject *byte_order)
{
    if (byte_order == nullptr)
        return false;
    const Text order(byte_order, "byteorder");
    constexpr std::string_view machine = PY_LITTLE_ENDIAN ? "little" : "big"; // NOLINT: of the interpreter
    if (order.view() != "big" && order.view() != machine)
        raise(PyExc_ValueError, "byteorder must be 'big', the router's, or '%s', this machine's", machine.data());
    return order.view() == machine;
}

Ref new_value(const Type &type)
{
    Value *const value = PyObject_NewVar(Value, type.cls, static_cast<Py_ssize_t>(type.size));
    if (value == nullptr)
        throw Raised();
    value->type = const_cast<Type *>(&type);
    return Ref(reinterpret_cast<PyObject *>(value));
}

Ref parsed(Type &type, PyObject *text, PyObject *mode)
{
    const Text encoded(text, type.name.c_str());
    const std::string_view view = encoded.view();
    const bgpdt_type *const parsing = in_mode(type, mode);
    Ref value = new_value(type);
    const int code = bgpdt_parse(parsing, view.data(), view.size(), value_in(value.get()).data(), type.size, nullptr);
    return code == BGPDT_OK ? std::move(value) : refused(type, code, text, mode);
}

Ref from_bytes(const Type &type, PyObject *bytes, PyObject *byte_order)
{
    if (PyUnicode_Check(bytes) != 0)
        raise(PyExc_TypeError, "%s.from_bytes() takes bytes, not str", type.name.c_str());
    const Ref copy = given(PyBytes_FromObject(bytes));
    const Py_ssize_t size = PyBytes_Size(copy.get());
    if (static_cast<std::size_t>(size) != type.size) {
        const Ref sentence =
            given(PyUnicode_FromFormat("%s has %zu bytes, not %zd", type.name.c_str(), type.size, size));
        PyErr_SetObject(type.state.refusal.get(), sentence.get());
        throw Raised();
    }
    Ref value = value_of(type, reinterpret_cast<const std::uint8_t *>(PyBytes_AsString(copy.get())));
    if (is_native(byte_order))
        bgpdt_from_native(type.type, value_in(value.get()).data(), type.size);
    return value;
}

Ref value_of(const Type &type, const std::uint8_t *bytes)
{
    Ref value = new_value(type);
    std::memcpy(value_in(value.get()).data(), bytes, type.size);
    return value;
}

Ref printed(Value &value, const bgpdt_type *type)
{
    char room[BGPDT_TEXT_ROOM];
    std::size_t size = 0;
    const int code = bgpdt_print(type, value.data(), value.type->size, room, sizeof room, &size, nullptr);
    switch (code) {
    case BGPDT_OK: return text_of(std::string_view(room, size));
    case BGPDT_BYTES: return bytes_of(room, size);
    case BGPDT_NO_MEMORY: throw std::bad_alloc();
    default: return {};
    }
}

} // namespace bgpdt::python
