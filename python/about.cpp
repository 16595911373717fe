// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "about.hpp"

#include <initializer_list>

#include "fields.hpp"

namespace bgpdt::python {
namespace {

template <std::size_t size>
Ref new_tuple_class(const char *name, const char *about, PyStructSequence_Field (&fields)[size])
{
    PyStructSequence_Desc description = {name, about, fields, static_cast<int>(size - 1)};
    return given(reinterpret_cast<PyObject *>(PyStructSequence_NewType(&description)));
}

/// Fills a tuple with names, item by item.
class Filled {
public:
    explicit Filled(const Ref &cls) : tuple_(given(PyStructSequence_New(reinterpret_cast<PyTypeObject *>(cls.get()))))
    {
    }
    Filled &with(Ref item)
    {
        PyStructSequence_SetItem(tuple_.get(), next_++, item.release());
        return *this;
    }
    Ref done() { return std::move(tuple_); }

private:
    Ref tuple_;
    Py_ssize_t next_ = 0;
};

Ref operations(unsigned bits)
{
    const Ref words = given(PyList_New(0));
    for (unsigned bit = 1; const char *word = bgpdt_operation_word(bit); bit <<= 1)
        if ((bits & bit) != 0)
            done(PyList_Append(words.get(), text_of(word).get()));
    return given(PyList_AsTuple(words.get()));
}

Ref kinds(const Type &type)
{
    const bgpdt_info &info = type.info();
    Ref tuple = given(PyTuple_New(static_cast<Py_ssize_t>(info.kind_count)));
    for (std::size_t i = 0; i < info.kind_count; ++i) {
        const bgpdt_kind &kind = *info.kinds[i];
        put(tuple.get(), i,
            Filled(type.state.kind)
                .with(number(kind.number))
                .with(text_of(kind.name))
                .with(text_of(kind.about))
                .with(text_of(kind.form))
                .with(given(PyBool_FromLong(kind.takes_text != 0 ? 1 : 0)))
                .done());
    }
    return tuple;
}

Ref attributes(const Type &type)
{
    Ref names = given(PyDict_New());
    for (const Attribute &attribute : type.attributes)
        set(names.get(), text_of(attribute.name).get(), text_of(attribute.field));
    return names;
}

} // namespace

Ref new_form_class()
{
    static PyStructSequence_Field fields[] = {{"kind", "the kind of value; empty for a type without kinds"},
                                              {"form", "what the kind's help says of its text; often empty"},
                                              {"example", "a text of it"},
                                              {nullptr, nullptr}};
    return new_tuple_class("bgpdt.Form", "A form of text that a type would have taken.", fields);
}

Ref new_kind_class()
{
    static PyStructSequence_Field fields[] = {{"number", "the sub-kind word"},
                                              {"name", "its name"},
                                              {"about", "what it is, in a few words"},
                                              {"form", "what its help says of its text"},
                                              {"takes_text", "whether there is a text of it"},
                                              {nullptr, nullptr}};
    return new_tuple_class("bgpdt.Kind", "A kind of value, of the types whose values begin with a sub-kind word.",
                           fields);
}

Ref new_type_info_class()
{
    static PyStructSequence_Field fields[] = {{"name", "its name"},
                                              {"about", "what it is, in a few words"},
                                              {"id", "the router's number of it"},
                                              {"base_kind", "the router's storage kind"},
                                              {"mode", "the mode in which text is converted"},
                                              {"size", "of its values, in bytes"},
                                              {"operations", "what it does, in words"},
                                              {"grammar", "which texts it takes; empty for one that takes none"},
                                              {"samples", "texts that it takes, one of each form"},
                                              {"help", "what its help says of its input"},
                                              {"kinds", "the kinds of its values"},
                                              {"attributes", "its fields' names by those of attributes"},
                                              {nullptr, nullptr}};
    return new_tuple_class("bgpdt.TypeInfo", "What is known of a type.", fields);
}

Ref about(const Type &type)
{
    const bgpdt_info &info = type.info();
    return Filled(type.state.type_info)
        .with(text_of(info.name))
        .with(text_of(info.about))
        .with(number(info.id))
        .with(number(info.base_kind))
        .with(number(info.mode))
        .with(number(info.value_size))
        .with(operations(info.operations))
        .with(text_of(info.grammar))
        .with(texts_of({info.samples, info.sample_count}))
        .with(texts_of({info.help, info.help_count}))
        .with(kinds(type))
        .with(attributes(type))
        .done();
}

} // namespace bgpdt::python
