// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "types.hpp"

#include "errors.hpp"

namespace bgpdt::python {
namespace {

Type &type_of_own_class(State &state, PyTypeObject *cls)
{
    const auto found = state.by_class.find(cls);
    if (found == state.by_class.end())
        raise(PyExc_TypeError, "%R is no class of a type", reinterpret_cast<PyObject *>(cls));
    return *found->second;
}

/// In another case than its own.
Type &type_named(State &state, PyObject *name)
{
    const Text text(name, "the name of a type");
    const bgpdt_type *found = nullptr;
    Error error;
    if (bgpdt_find(state.library, text.view().data(), text.view().size(), &found, error.out()) != BGPDT_OK)
        error.raise(state);
    for (Type &type : state.types)
        if (type.type == found)
            return type;
    throw Raised();
}

} // namespace

Type &type_of(State &state, PyObject *object)
{
    if (PyType_Check(object) != 0)
        return type_of_own_class(state, reinterpret_cast<PyTypeObject *>(object));
    if (PyUnicode_Check(object) == 0)
        raise(PyExc_TypeError, "a type is named by its class or a str, not %U", class_name(object).get());
    PyObject *cls = PyDict_GetItemWithError(state.by_name.get(), object);
    if (cls != nullptr)
        return type_of_own_class(state, reinterpret_cast<PyTypeObject *>(cls));
    return PyErr_Occurred() == nullptr ? type_named(state, object) : throw Raised();
}

const bgpdt_type *in_mode(const Type &type, PyObject *mode)
{
    if (mode == nullptr || mode == Py_None)
        return type.type;
    const long number = PyLong_AsLong(mode);
    if (number == -1 && PyErr_Occurred() != nullptr)
        throw Raised();
    const bgpdt_type *found = nullptr;
    const int code = bgpdt_in_mode(type.type, number < 0 || number > 255 ? 256 : static_cast<unsigned>(number), &found);
    if (code == BGPDT_NO_MEMORY)
        throw std::bad_alloc();
    return code == BGPDT_OK ? found : (raise(PyExc_ValueError, "a mode is 0 to 255, not %ld", number), nullptr);
}

} // namespace bgpdt::python
