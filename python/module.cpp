// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The module bgpdt._bgpdt: all of the package that is no Python.
#include <cstdlib>
#include <cstring>
#include <new>

#include "about.hpp"
#include "column.hpp"
#include "fields.hpp"
#include "refusal.hpp"
#include "types.hpp"
#include "value.hpp"
#include "value_class.hpp"

namespace bgpdt::python {
namespace {

Ref parse(PyObject *module, const Call &call)
{
    const auto [type, text, mode] = taken("parse", call, {"type", "text", "mode"}, 2);
    return parsed(type_of(state_of_module(module), type), text, mode);
}

Ref value_from_bytes(PyObject *module, const Call &call)
{
    const auto [type, bytes, byte_order] = taken("from_bytes", call, {"type", "bytes", "byteorder"}, 2);
    return from_bytes(type_of(state_of_module(module), type), bytes, byte_order);
}

Ref why(PyObject *module, const Call &call)
{
    const auto [name, text, mode] = taken("why", call, {"type", "text", "mode"}, 2);
    const Type &type = type_of(state_of_module(module), name);
    const Text encoded(text, "why()");
    const bgpdt_type *const asked = in_mode(type, mode);
    std::vector<std::uint8_t> value(type.size);
    const int code =
        bgpdt_parse(asked, encoded.view().data(), encoded.view().size(), value.data(), value.size(), nullptr);
    if (code == BGPDT_OK)
        return none();
    return code == BGPDT_REFUSED ? refusal_of(type, text, mode) : refused(type, code, text, mode);
}

Ref dialects(PyObject *module, const Call &call)
{
    const auto [type, text] = taken("dialects", call, {"type", "text"}, 2);
    return dialects_of(type_of(state_of_module(module), type), text);
}

Ref types(PyObject *module)
{
    const State &state = state_of_module(module);
    Ref classes = given(PyTuple_New(static_cast<Py_ssize_t>(state.types.size())));
    std::size_t index = 0;
    for (const Type &type : state.types)
        put(classes.get(), index++, another(reinterpret_cast<PyObject *>(type.cls)));
    return classes;
}

Ref describe(PyObject *module, PyObject *type) { return about(type_of(state_of_module(module), type)); }

Ref load_names(PyObject *module, PyObject *file)
{
    State &state = state_of_module(module);
    PyObject *path = nullptr;
    if (PyUnicode_FSConverter(file, &path) == 0)
        throw Raised();
    const Ref owner(path);
    if (state.at_work != 0)
        raise(PyExc_RuntimeError, "other threads convert columns, which need the names that there are");
    Error error;
    if (bgpdt_load_names(state.library, PyBytes_AsString(path), static_cast<std::size_t>(PyBytes_Size(path)),
                         error.out()) != BGPDT_OK)
        error.raise(state);
    return none();
}

// ------------------------------------------------------------------------------------------------ the module's making

void open(State &state)
{
    Error error;
    if (bgpdt_open(nullptr, &state.library, error.out()) == BGPDT_OK)
        return;
    if (error->code == BGPDT_NO_MEMORY)
        throw std::bad_alloc();
    PyErr_SetString(PyExc_ImportError, error->message.data);
    throw Raised();
}

void add(PyObject *module, const char *name, const Ref &object)
{
    Py_INCREF(object.get());
    if (PyModule_AddObject(module, name, object.get()) < 0) {
        Py_DECREF(object.get());
        throw Raised();
    }
}

void add_type(PyObject *module, State &state, const bgpdt_type *of)
{
    const bgpdt_info &info = *bgpdt_about(of);
    Type &type = state.types.emplace_back(Type{state, of, info.value_size, std::string(view(info.name))});
    type.full_name = "bgpdt." + type.name;
    const Ref cls = new_class(module, type);
    set(state.by_name.get(), text_of(type.name).get(), another(cls.get())); // which keeps it
    type.cls = reinterpret_cast<PyTypeObject *>(cls.get());
    state.by_class.emplace(type.cls, &type);
    add(module, type.name.c_str(), cls);
}

void fill(PyObject *module)
{
    State &state = *new (PyModule_GetState(module)) State;
    open(state);
    state.by_name = given(PyDict_New());
    state.value = new_value_class(module);
    state.refusal = new_refusal_class(module);
    state.column = new_column_class(module);
    state.form = new_form_class();
    state.kind = new_kind_class();
    state.type_info = new_type_info_class();
    add(module, "Value", state.value);
    add(module, "Refusal", state.refusal);
    add(module, "Column", state.column);
    add(module, "Form", state.form);
    add(module, "Kind", state.kind);
    add(module, "TypeInfo", state.type_info);
    for (std::size_t i = 0; i < bgpdt_type_count(state.library); ++i)
        add_type(module, state, bgpdt_type_at(state.library, i));
    add(module, "__version__", text_of(bgpdt_version()));
}

int execute(PyObject *module)
{
    return answered(-1, [module] {
        fill(module);
        return 0;
    });
}

/// Null before the module is executed.
State *state_if_any(PyObject *module)
{
    auto *state = static_cast<State *>(PyModule_GetState(module));
    return state == nullptr || state->library == nullptr ? nullptr : state;
}

int traverse(PyObject *module, visitproc visit, void *arg) // as Py_VISIT calls them
{
    const State *state = state_if_any(module);
    if (state == nullptr)
        return 0;
    for (const Ref *held : {&state->by_name, &state->value, &state->refusal, &state->column, &state->form, &state->kind,
                            &state->type_info})
        Py_VISIT(held->get());
    return 0;
}

int clear(PyObject *module)
{
    State *state = state_if_any(module);
    if (state == nullptr)
        return 0;
    for (Ref *held : {&state->by_name, &state->value, &state->refusal, &state->column, &state->form, &state->kind,
                      &state->type_info})
        *held = Ref();
    return 0;
}

void destroy(void *module)
{
    if (State *state = state_if_any(static_cast<PyObject *>(module)))
        state->~State();
}

// NOLINTNEXTLINE(cert-err58-cpp): none of them throws
PyMethodDef functions[] = {
    method<parse>("parse", "parse($module, /, type, text, mode=None)\n--\n\nThe value of a text. Raises Refusal."),
    method<value_from_bytes>("from_bytes", "from_bytes($module, /, type, bytes, byteorder='big')\n--\n\nThe value of "
                                           "bytes."),
    method<why>("why",
                "why($module, /, type, text, mode=None)\n--\n\nThe Refusal of a text, None if the type takes it."),
    method<dialects>("dialects",
                     "dialects($module, /, type, text)\n--\n\nHow other BGP speakers read the text, or one of "
                     "the same shape."),
    method<parse_many>("parse_many", "parse_many($module, /, type, texts, mode=None)\n--\n\nThe values of a column of "
                                     "texts. None of them raises Refusal: the Column tells which rows were refused."),
    method<print_many>("print_many", "print_many($module, /, type, values, mode=None)\n--\n\nThe texts of a column of "
                                     "values."),
    method<explain_many>("explain_many", "explain_many($module, /, type, values, fields=None)\n--\n\nThe fields of a "
                                         "column of values, or those of the names."),
    method<types>("types", "types($module, /)\n--\n\nThe classes of all types."),
    method<describe>("describe", "describe($module, type, /)\n--\n\nWhat is known of a type."),
    method<load_names>("load_names", "load_names($module, file, /)\n--\n\nLoads the names behind the name-index types, "
                                     "for the whole process, in place of those there are."),
    {nullptr, nullptr, 0, nullptr},
};

/// Since 3.12 a module tells that it may be in interpreters that do not wait for each other.
constexpr int multiple_interpreters_slot = 3;
void *const per_interpreter_lock = reinterpret_cast<void *>(std::uintptr_t{2}); // NOLINT(performance-no-int-to-ptr)

bool knows_interpreter_slot()
{
    const char *version = Py_GetVersion();
    return std::strtol(version, nullptr, 10) > 3 || std::strtol(version + 2, nullptr, 10) >= 12;
}

} // namespace
} // namespace bgpdt::python

PyMODINIT_FUNC PyInit__bgpdt() // NOLINT(bugprone-reserved-identifier): the name that Python asks for
{
    using namespace bgpdt::python;
    static PyModuleDef_Slot slots[] = {
        {Py_mod_exec, reinterpret_cast<void *>(execute)},
        {0, nullptr},
        {0, nullptr},
    };
    if (knows_interpreter_slot())
        slots[1] = {multiple_interpreters_slot, per_interpreter_lock};
    static PyModuleDef definition = {
        PyModuleDef_HEAD_INIT,
        "_bgpdt",
        "BGP's data types as a router keeps them.",
        sizeof(State),
        functions,
        slots,
        traverse,
        clear,
        destroy,
    };
    return PyModuleDef_Init(&definition);
}
