// SPDX-License-Identifier: Apache-2.0
#include "state.hpp"

namespace bgpdt::python {

State &state_of_module(PyObject *module) { return *static_cast<State *>(PyModule_GetState(module)); }

State &state_of_class(PyTypeObject *cls) { return *static_cast<State *>(PyType_GetModuleState(cls)); }

} // namespace bgpdt::python
