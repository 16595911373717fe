// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "refusal.hpp"

#include <string>

#include "types.hpp"

namespace bgpdt::python {
namespace {

constexpr const char *details_key = "_details"; ///< in the exception's dictionary, once they are known

// ------------------------------------------------------------------------------------------------ what is known

Ref form_of(const State &state, const bgpdt_form &form)
{
    Ref row = given(PyStructSequence_New(reinterpret_cast<PyTypeObject *>(state.form.get())));
    Py_ssize_t index = 0;
    for (const bgpdt_text text : {form.kind, form.form, form.example})
        PyStructSequence_SetItem(row.get(), index++, text_of(text).release());
    return row;
}

Ref forms_of(const State &state, const bgpdt_error &error)
{
    Ref forms = given(PyTuple_New(static_cast<Py_ssize_t>(error.form_count)));
    for (std::size_t i = 0; i < error.form_count; ++i)
        put(forms.get(), i, form_of(state, error.forms[i]));
    return forms;
}

const char *change_word(int change)
{
    switch (change) {
    case BGPDT_SPELLING: return "spelling";
    case BGPDT_EXAMPLE: return "example";
    default: return "value";
    }
}

void set(const Ref &details, const char *name, const Ref &value)
{
    done(PyDict_SetItemString(details.get(), name, value.get()));
}

/// Of anything but a text.
Ref plain_details(PyObject *sentence)
{
    Ref details = given(PyDict_New());
    for (const char *name : {"type", "text", "position", "length", "repair", "change", "other_form", "picture"})
        set(details, name, none());
    for (const char *name : {"forms", "other_types"})
        set(details, name, given(PyTuple_New(0)));
    set(details, "message", another(sentence));
    set(details, "reason", another(sentence));
    set(details, "status", number(0));
    return details;
}

/// Where the text is wrong, in characters.
void set_place(const Ref &details, PyObject *text, const bgpdt_error &error)
{
    const std::size_t position = characters_in(text, error.at);
    set(details, "position", number(position));
    set(details, "length", number(characters_in(text, error.at + error.length) - position));
    set(details, "reason", text_of(error.reason));
    set(details, "picture", text_of(error.picture));
    if (error.repair.size != 0) {
        set(details, "repair", text_of(error.repair));
        set(details, "change", text_of(change_word(error.change)));
    }
}

Ref details_of(const State &state, PyObject *text, const bgpdt_error &error)
{
    Ref details = plain_details(text_of(error.message).get());
    set(details, "text", another(text));
    if (error.reason.size != 0)
        set_place(details, text, error);
    Ref forms = forms_of(state, error);
    set(details, "other_form", error.form_count == 0 ? none() : another(PyTuple_GetItem(forms.get(), 0)));
    set(details, "forms", forms);
    set(details, "other_types", texts_of({error.other_types, error.other_type_count}));
    set(details, "status", number(error.status));
    return details;
}

/// Asks the library.
Ref asked(State &state, PyObject *name, PyObject *text, PyObject *mode)
{
    const Type &type = type_of(state, name);
    const bgpdt_type *const asked = in_mode(type, mode);
    const Text bytes(text, "bgpdt.Refusal");
    Error error;
    int code = BGPDT_OK;
    {
        const Working working(state);
        code = bgpdt_why(asked, bytes.view().data(), bytes.view().size(), error.out());
    }
    if (code == BGPDT_NO_MEMORY)
        error.raise(state);
    Ref details = code == BGPDT_OK ? plain_details(text_of(type.name + " takes the text").get())
                                   : details_of(state, text, *error.operator->());
    set(details, "text", another(text));
    set(details, "type", another(reinterpret_cast<PyObject *>(type.cls)));
    return details;
}

// ------------------------------------------------------------------------------------------------ the exception

Ref new_details(PyObject *self)
{
    const Ref arguments = given(PyObject_GetAttrString(self, "args"));
    const Py_ssize_t count = PyTuple_Size(arguments.get());
    if (count < 2)
        return plain_details(
            (count == 0 ? text_of("") : given(PyObject_Str(PyTuple_GetItem(arguments.get(), 0)))).get());
    return asked(state_of_class(Py_TYPE(self)), PyTuple_GetItem(arguments.get(), 0),
                 PyTuple_GetItem(arguments.get(), 1), count > 2 ? PyTuple_GetItem(arguments.get(), 2) : nullptr);
}

/// None if there is none of the name.
Ref item(const Ref &dictionary, const char *name)
{
    PyObject *const found = PyDict_GetItemWithError(dictionary.get(), text_of(name).get());
    if (found != nullptr)
        return another(found);
    return PyErr_Occurred() == nullptr ? Ref() : throw Raised();
}

/// All that is known, by name; asked for once.
Ref details(PyObject *self)
{
    const Ref dictionary = given(PyObject_GetAttrString(self, "__dict__"));
    if (Ref known = item(dictionary, details_key))
        return known;
    Ref details = new_details(self);
    done(PyDict_SetItemString(dictionary.get(), details_key, details.get()));
    return details;
}

Ref detail(const Ref &details, const char *name)
{
    Ref found = item(details, name);
    if (!found)
        raise(PyExc_AttributeError, "%s", name);
    return found;
}

PyObject *get_detail(PyObject *self, void *name)
{
    return answered([&] { return detail(details(self), static_cast<const char *>(name)); });
}

Ref repair_line(const Ref &details)
{
    const Ref repair = detail(details, "repair");
    if (repair.get() == Py_None)
        return text_of("");
    const Ref change = detail(details, "change");
    const bool example = PyUnicode_CompareWithASCIIString(change.get(), "example") == 0;
    const bool value = PyUnicode_CompareWithASCIIString(change.get(), "value") == 0;
    return given(PyUnicode_FromFormat("  would be accepted%s: %U\n",
                                      example ? ", for example" : (value ? ", but is another value" : ""),
                                      repair.get()));
}

Ref types_line(const Ref &details)
{
    const Ref types = detail(details, "other_types");
    if (PyTuple_Size(types.get()) == 0)
        return text_of("");
    const Ref names = given(PyUnicode_Join(text_of(", ").get(), types.get()));
    return given(PyUnicode_FromFormat("  is a text of %U\n", names.get()));
}

/// The sentence, and below it the text with a caret.
PyObject *text_of_refusal(PyObject *self)
{
    return answered([self] {
        const Ref known = details(self);
        const Ref message = detail(known, "message");
        const Ref picture = detail(known, "picture");
        if (picture.get() == Py_None)
            return another(message.get());
        const Ref lines = given(PyUnicode_FromFormat("%U\n%U%U%U", message.get(), picture.get(),
                                                     repair_line(known).get(), types_line(known).get()));
        return given(PyUnicode_Substring(lines.get(), 0, PyUnicode_GetLength(lines.get()) - 1));
    });
}

PyGetSetDef getter(const char *name, const char *about)
{
    return {name, get_detail, nullptr, about, const_cast<char *>(name)};
}

} // namespace

Ref refusal_of(const Type &type, PyObject *text, PyObject *mode)
{
    const Ref name = text_of(type.name);
    const bool usual = mode == nullptr || mode == Py_None;
    return given(
        PyObject_CallFunctionObjArgs(type.state.refusal.get(), name.get(), text, usual ? nullptr : mode, nullptr));
}

Ref refused(const Type &type, int code, PyObject *text, PyObject *mode)
{
    if (code == BGPDT_NO_MEMORY)
        PyErr_NoMemory();
    else if (code == BGPDT_REFUSED)
        PyErr_SetObject(type.state.refusal.get(), refusal_of(type, text, mode).get());
    else
        PyErr_Format(exception_for(type.state, code), "%s: %s", type.name.c_str(), bgpdt_code_text(code));
    return {};
}

Ref new_refusal_class(PyObject *module)
{
    static PyGetSetDef getters[] = {
        getter("type", "the class of the type that refuses a text"),
        getter("text", "the refused text"),
        getter("position", "the first character that is wrong; what is missing belongs in front of it"),
        getter("length", "how many characters are wrong; 0: something is missing"),
        getter("reason", "what is wrong there"),
        getter("message", "the whole in a sentence"),
        getter("repair", "the nearest text that is taken, or None"),
        getter("change", "what the repair makes of the value: 'spelling' none, 'example', 'value' another"),
        getter("other_form", "a form of text that the type takes, of types with many: a bgpdt.Form, or None"),
        getter("forms", "all of those"),
        getter("other_types", "the names of the types that take the text, the likeliest first"),
        getter("status", "the router's own answer, a number; 0 where the type was not asked"),
        {nullptr, nullptr, nullptr, nullptr, nullptr},
    };
    PyType_Slot slots[] = {
        {Py_tp_doc, const_cast<char *>("What a type refuses, and why.")},
        {Py_tp_getset, getters},
        {Py_tp_str, reinterpret_cast<void *>(text_of_refusal)},
        {0, nullptr},
    };
    PyType_Spec spec = {"bgpdt.Refusal", 0, 0, Py_TPFLAGS_DEFAULT, slots};
    const Ref bases = given(PyTuple_Pack(1, PyExc_ValueError));
    return given(PyType_FromModuleAndSpec(module, &spec, bases.get()));
}

} // namespace bgpdt::python
