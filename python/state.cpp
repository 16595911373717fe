// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "state.hpp"

namespace bgpdt::python {

State &state_of_module(PyObject *module) { return *static_cast<State *>(PyModule_GetState(module)); }

State &state_of_class(PyTypeObject *cls) { return *static_cast<State *>(PyType_GetModuleState(cls)); }

Ref texts_of(std::span<const bgpdt_text> texts)
{
    Ref tuple = given(PyTuple_New(static_cast<Py_ssize_t>(texts.size())));
    for (std::size_t i = 0; i < texts.size(); ++i)
        put(tuple.get(), i, text_of(texts[i]));
    return tuple;
}

} // namespace bgpdt::python
