// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "python.hpp"

#include <cstring>

namespace bgpdt::python {
namespace {

constexpr const char *raw_bytes = "surrogateescape";
constexpr const char *any_surrogate = "surrogatepass";

bool is_surrogate(Py_UCS4 character) { return character >= 0xD800 && character <= 0xDFFF; }
/// One that stands for a byte (PEP 383).
bool is_byte(Py_UCS4 character) { return character >= 0xDC80 && character <= 0xDCFF; }

Ref encoded(PyObject *text)
{
    PyErr_Clear();
    if (PyObject *bytes = PyUnicode_AsEncodedString(text, "utf-8", raw_bytes))
        return Ref(bytes);
    if (PyErr_ExceptionMatches(PyExc_UnicodeEncodeError) == 0)
        throw Raised();
    PyErr_Clear();
    return given(PyUnicode_AsEncodedString(text, "utf-8", any_surrogate));
}

std::string_view view_of(PyObject *bytes)
{
    char *data = nullptr;
    Py_ssize_t size = 0;
    done(PyBytes_AsStringAndSize(bytes, &data, &size));
    return {data, static_cast<std::size_t>(size)};
}

std::size_t encoded_size(Py_UCS4 character, bool bytes)
{
    if (character < 0x80 || (bytes && is_byte(character)))
        return 1;
    return character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

/// Whether all its lone surrogates stand for bytes.
bool has_bytes(PyObject *text)
{
    const Py_ssize_t size = PyUnicode_GetLength(text);
    for (Py_ssize_t i = 0; i < size; ++i) {
        const Py_UCS4 character = PyUnicode_ReadChar(text, i);
        if (is_surrogate(character) && !is_byte(character))
            return false;
    }
    return true;
}

std::size_t parameter_named(const char *function, PyObject *name, const char *const *parameters, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        if (PyUnicode_CompareWithASCIIString(name, parameters[i]) == 0)
            return i;
    raise(PyExc_TypeError, "%s() got an unexpected keyword argument '%U'", function, name);
}

} // namespace

void take(const char *function, const Call &call, const char *const *parameters, PyObject **taken, std::size_t count,
          std::size_t required)
{
    const auto positional = static_cast<std::size_t>(call.count);
    if (positional > count)
        raise(PyExc_TypeError, "%s() takes at most %zu arguments (%zu given)", function, count, positional);
    for (std::size_t i = 0; i < positional; ++i)
        taken[i] = call.arguments[i];
    const Py_ssize_t named = call.names == nullptr ? 0 : PyTuple_Size(call.names);
    for (Py_ssize_t i = 0; i < named; ++i) {
        const std::size_t at = parameter_named(function, PyTuple_GetItem(call.names, i), parameters, count);
        if (taken[at] != nullptr)
            raise(PyExc_TypeError, "%s() got multiple values for argument '%s'", function, parameters[at]);
        taken[at] = call.arguments[call.count + i];
    }
    for (std::size_t i = 0; i < required; ++i)
        if (taken[i] == nullptr)
            raise(PyExc_TypeError, "%s() missing required argument '%s'", function, parameters[i]);
}

Ref class_name(PyObject *object)
{
    return given(PyObject_GetAttrString(reinterpret_cast<PyObject *>(Py_TYPE(object)), "__name__"));
}

Text::Text(PyObject *text, const char *user)
{
    if (PyUnicode_CheckExact(text) == 0 && PyUnicode_Check(text) == 0)
        raise(PyExc_TypeError, "%s takes a str, not %U", user, class_name(text).get());
    Py_ssize_t size = 0;
    if (const char *data = PyUnicode_AsUTF8AndSize(text, &size)) {
        view_ = {data, static_cast<std::size_t>(size)};
        return;
    }
    if (PyErr_ExceptionMatches(PyExc_UnicodeEncodeError) == 0)
        throw Raised();
    encoded_ = encoded(text);
    view_ = view_of(encoded_.get());
}

std::size_t characters_in(PyObject *text, std::size_t bytes)
{
    const bool of_bytes = has_bytes(text);
    const Py_ssize_t size = PyUnicode_GetLength(text);
    Py_ssize_t characters = 0;
    for (std::size_t at = 0; at < bytes && characters < size; ++characters)
        at += encoded_size(PyUnicode_ReadChar(text, characters), of_bytes);
    return static_cast<std::size_t>(characters);
}

Ref text_of(std::string_view text)
{
    return given(PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), raw_bytes));
}

} // namespace bgpdt::python
