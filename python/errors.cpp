// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "errors.hpp"

namespace bgpdt::python {

PyObject *exception_for(const State &state, int code)
{
    switch (code) {
    case BGPDT_REFUSED: return state.refusal.get();
    case BGPDT_NO_TEXT:
    case BGPDT_NO_OPERATION: return PyExc_TypeError;
    case BGPDT_NO_TYPE:
    case BGPDT_NO_FIELD: return PyExc_KeyError;
    case BGPDT_NO_PLUGIN: return PyExc_OSError;
    case BGPDT_NO_MEMORY: return PyExc_MemoryError;
    case BGPDT_NO_SENSE: return PyExc_ValueError;
    default: return PyExc_RuntimeError;
    }
}

void Error::raise(const State &state) const
{
    PyObject *const exception = exception_for(state, (*this)->code);
    PyErr_SetObject(exception, text_of((*this)->message).get());
    throw Raised();
}

} // namespace bgpdt::python
