// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "rows.hpp"

#include <cmath>

#include "value.hpp"

namespace bgpdt::python {
namespace {

bool is_missing(PyObject *row)
{
    return row == Py_None || (PyFloat_Check(row) != 0 && std::isnan(PyFloat_AsDouble(row)));
}

[[noreturn]] void raise_row(const Type &type, std::size_t number, PyObject *row, const char *wanted)
{
    raise(PyExc_TypeError, "row %zu of a column of %s must be %s or None, not %U", number, type.name.c_str(), wanted,
          class_name(row).get());
}

/// The rows of a list, which others may change meanwhile.
class ListRows final : public Rows {
public:
    ListRows(const Type &type, Ref list, Wanted wanted) : type_(type), list_(std::move(list)), wanted_(wanted) {}

    void fill(Chunk &chunk) override
    {
        for (; !chunk.is_full() && at_ < PyList_Size(list_.get()); ++at_) {
            const Ref row = another(PyList_GetItem(list_.get(), at_));
            if (PyUnicode_CheckExact(row.get()) == 0 && is_missing(row.get()))
                chunk.add_none();
            else if (wanted_ == Wanted::texts)
                add_text(row.get(), chunk);
            else
                add_value(row.get(), chunk);
        }
    }

private:
    void add_text(PyObject *row, Chunk &chunk) const
    {
        if (PyUnicode_CheckExact(row) == 0 && PyUnicode_Check(row) == 0)
            raise_row(type_, static_cast<std::size_t>(at_), row, "a str");
        chunk.add(Text(row, "a column").view());
    }
    void add_value(PyObject *row, Chunk &chunk) const
    {
        if (Py_TYPE(row) == type_.cls) {
            chunk.add({reinterpret_cast<const char *>(value_in(row).data()), type_.size});
            return;
        }
        if (PyBytes_Check(row) == 0)
            raise_row(type_, static_cast<std::size_t>(at_), row, "a value of it, bytes");
        chunk.add({PyBytes_AsString(row), static_cast<std::size_t>(PyBytes_Size(row))});
    }

    const Type &type_;
    const Ref list_;
    const Wanted wanted_;
    Py_ssize_t at_ = 0;
};

/// What the object's method tolist() gives, as arrays have one; else what it can be walked through.
Ref list_of(const Type &type, PyObject *column)
{
    if (PyList_Check(column) != 0)
        return another(column);
    if (PyUnicode_Check(column) != 0 || PyBytes_Check(column) != 0)
        raise(PyExc_TypeError, "%s takes a column of rows, not one", type.name.c_str());
    Ref list(PyObject_CallMethod(column, "tolist", nullptr));
    if (!list && PyErr_ExceptionMatches(PyExc_AttributeError) == 0)
        throw Raised();
    PyErr_Clear();
    return list && PyList_Check(list.get()) != 0 ? std::move(list) : given(PySequence_List(column));
}

} // namespace

std::unique_ptr<Rows> rows_of(const Type &type, PyObject *column, Wanted wanted)
{
    if (PyList_Check(column) == 0)
        if (auto rows = arrow_rows(column))
            return rows;
    return std::make_unique<ListRows>(type, list_of(type, column), wanted);
}

} // namespace bgpdt::python
