// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "fields.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "errors.hpp"

namespace bgpdt::python {
namespace {

/// Fields of the library's.
class Fields {
public:
    Fields() = default;
    ~Fields() { bgpdt_fields_free(fields_); }
    Fields(const Fields &) = delete;
    Fields &operator=(const Fields &) = delete;

    bgpdt_fields **out() { return &fields_; }
    std::span<const bgpdt_named_field> rows() const { return {fields_->rows, fields_->count}; }
    const bgpdt_named_field *find(std::string_view name) const
    {
        const auto found = std::ranges::find(rows(), name, [](const auto &field) { return view(field.name); });
        return found == rows().end() ? nullptr : &*found;
    }

private:
    bgpdt_fields *fields_ = nullptr;
};

void read(const Type &type, std::span<const std::uint8_t> value, Fields &fields)
{
    Error error;
    if (bgpdt_fields_of(type.type, value.data(), value.size(), fields.out(), error.out()) != BGPDT_OK)
        error.raise(type.state);
}

/// "AS number" as an attribute is called: as_number. What is a word of Python's has a '_' behind it.
std::string attribute_name(std::string_view field)
{
    std::string name;
    for (const char c : field) {
        const bool upper = c >= 'A' && c <= 'Z';
        const bool kept = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        name += upper ? static_cast<char>(c - 'A' + 'a') : (kept ? c : '_');
    }
    constexpr std::array<std::string_view, 3> words = {"as", "from", "is"};
    return std::ranges::find(words, name) == words.end() ? name : name + "_";
}

PyObject *get_field(PyObject *self, void *attribute)
{
    return answered([&] {
        const auto &asked = *static_cast<const Attribute *>(attribute);
        Ref content = field_of(value_in(self), asked.field);
        if (!content) {
            raise(PyExc_AttributeError, "this %s has no field %s", value_in(self).type->name.c_str(),
                  asked.field.c_str());
        }
        return content;
    });
}

Ref json_module_function(const char *name)
{
    const Ref json = given(PyImport_ImportModule("json"));
    return given(PyObject_GetAttrString(json.get(), name));
}

/// What the call gives, which takes the places of JSON, of its size and of an error.
template <class Ask>
Ref loaded_from(const Type &type, const Ask &ask)
{
    char *json = nullptr;
    std::size_t size = 0;
    Error error;
    if (ask(&json, &size, error.out()) != BGPDT_OK)
        error.raise(type.state);
    const std::unique_ptr<char, void (*)(char *)> owner(json, bgpdt_free);
    const Ref loads = json_module_function("loads");
    const Ref text = text_of(std::string_view(json, size));
    return given(PyObject_CallFunctionObjArgs(loads.get(), text.get(), nullptr));
}

/// Whether the value has all fields of the type.
bool has_all(const Type &type, std::span<const std::uint8_t> value)
{
    Fields fields;
    read(type, value, fields);
    return std::ranges::equal(
        fields.rows(), type.attributes, {}, [](const auto &field) { return view(field.name); },
        [](const Attribute &attribute) { return std::string_view(attribute.field); });
}

bool sample_has_all(const Type &type, bgpdt_text text)
{
    std::vector<std::uint8_t> value(type.size);
    const int code = bgpdt_parse(type.type, text.data, text.size, value.data(), value.size(), nullptr);
    return code != BGPDT_OK || has_all(type, value);
}

} // namespace

Ref loaded(Value &value, JsonFunction *function)
{
    const auto bytes = value.bytes();
    return loaded_from(*value.type, [&](char **json, std::size_t *size, bgpdt_error **error) {
        return function(value.type->type, bytes.data(), bytes.size(), json, size, error);
    });
}

Ref dialects_of(const Type &type, PyObject *text)
{
    const Text encoded(text, "dialects()");
    return loaded_from(type, [&](char **json, std::size_t *size, bgpdt_error **error) {
        return bgpdt_dialects(type.type, encoded.view().data(), encoded.view().size(), json, size, error);
    });
}

Ref from_table(const Type &type, PyObject *table)
{
    const Ref dumps = json_module_function("dumps");
    const Ref json = given(PyObject_CallFunctionObjArgs(dumps.get(), table, nullptr));
    const Text text(json.get(), "from_dict()");
    Ref value = new_value(type);
    Error error;
    if (bgpdt_read_table(type.type, text.view().data(), text.view().size(), value_in(value.get()).data(), type.size,
                         error.out()) != BGPDT_OK)
        error.raise(type.state);
    return value;
}

Ref content_of(const bgpdt_named_field &field)
{
    return field.code == BGPDT_NUMBER ? given(PyLong_FromString(field.text.data, nullptr, 10)) : text_of(field.text);
}

Ref fields_of(Value &value)
{
    Fields fields;
    read(*value.type, value.bytes(), fields);
    Ref all = given(PyDict_New());
    for (const bgpdt_named_field &field : fields.rows())
        set(all.get(), text_of(field.name).get(), content_of(field));
    return all;
}

Ref field_of(Value &value, std::string_view name)
{
    Fields fields;
    read(*value.type, value.bytes(), fields);
    const bgpdt_named_field *found = fields.find(name);
    return found == nullptr ? Ref() : content_of(*found);
}

Ref field_named(Value &value, PyObject *name)
{
    const Text text(name, "the name of a field");
    if (Ref content = field_of(value, text.view()))
        return content;
    char *none = nullptr;
    Error error;
    const auto bytes = value.bytes();
    if (bgpdt_field(value.type->type, bytes.data(), bytes.size(), text.view().data(), text.view().size(), &none,
                    nullptr, error.out()) < BGPDT_OK)
        error.raise(value.type->state);
    raise(PyExc_KeyError, "this %s has no field %U", value.type->name.c_str(), name);
}

void add_attributes(Type &type)
{
    Fields known;
    Error error;
    if (bgpdt_known_fields(type.type, known.out(), error.out()) != BGPDT_OK)
        error.raise(type.state);
    for (const bgpdt_named_field &field : known.rows()) {
        Attribute &added =
            type.attributes.emplace_back(Attribute{std::string(view(field.name)), attribute_name(view(field.name))});
        type.getters.push_back({added.name.c_str(), get_field, nullptr, added.field.c_str(), &added});
    }
    type.getters.push_back({nullptr, nullptr, nullptr, nullptr, nullptr});
}

Ref match_arguments(const Type &type)
{
    const bgpdt_info &info = type.info();
    const bool all = has_all(type, std::vector<std::uint8_t>(type.size)) &&
                     std::all_of(info.samples, info.samples + info.sample_count,
                                 [&type](bgpdt_text sample) { return sample_has_all(type, sample); });
    const std::size_t count = all ? type.attributes.size() : 0;
    Ref names = given(PyTuple_New(static_cast<Py_ssize_t>(count)));
    for (std::size_t i = 0; i < count; ++i)
        put(names.get(), i, text_of(type.attributes[i].name));
    return names;
}

} // namespace bgpdt::python
