// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The interpreter's limited interface, of Python 3.10 and every later one, and what makes it fit C++.
#pragma once

#include <Python.h>

#include <array>
#include <exception>
#include <new>
#include <string_view>
#include <utility>

namespace bgpdt::python {

/// Thrown where the interpreter has its error set.
struct Raised {};

/// An object that is held; or none.
class Ref {
public:
    Ref() = default;
    /// @param object  a reference that is taken over
    explicit Ref(PyObject *object) : object_(object) {}
    Ref(Ref &&other) noexcept : object_(other.release()) {}
    Ref &operator=(Ref &&other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    Ref(const Ref &) = delete;
    Ref &operator=(const Ref &) = delete;
    ~Ref() { Py_XDECREF(object_); }

    PyObject *get() const { return object_; }
    PyObject *release() { return std::exchange(object_, nullptr); }
    explicit operator bool() const { return object_ != nullptr; }

private:
    PyObject *object_ = nullptr;
};

/// What the interpreter gave.
/// @throws Raised if it gave nothing
inline Ref given(PyObject *object) { return object != nullptr ? Ref(object) : throw Raised(); }

/// @throws Raised if the interpreter answers a failure
inline void done(int status)
{
    if (status < 0)
        throw Raised();
}

inline Ref another(PyObject *object)
{
    Py_INCREF(object);
    return Ref(object);
}

inline Ref none() { return another(Py_None); }

/// @throws Raised always
template <class... Values>
[[noreturn]] void raise(PyObject *exception, const char *format, Values... values)
{
    PyErr_Format(exception, format, values...);
    throw Raised();
}

/// Runs the work of a function that the interpreter calls: what is thrown becomes the interpreter's error.
template <class Result, class Work>
Result answered(Result failed, const Work &work) noexcept
{
    try {
        return work();
    } catch (const Raised &) { // it is there already
    } catch (const std::bad_alloc &) {
        PyErr_NoMemory();
    } catch (const std::exception &error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    return failed;
}

template <class Work>
PyObject *answered(const Work &work) noexcept
{
    return answered<PyObject *>(nullptr, [&] { return work().release(); });
}

/// Lets other threads run meanwhile.
class Unlocked {
public:
    Unlocked() : thread_(PyEval_SaveThread()) {}
    ~Unlocked() { PyEval_RestoreThread(thread_); }
    Unlocked(const Unlocked &) = delete;
    Unlocked &operator=(const Unlocked &) = delete;

private:
    PyThreadState *thread_;
};

/// What a function was called with, as METH_FASTCALL | METH_KEYWORDS hands it over.
struct Call {
    PyObject *const *arguments;
    Py_ssize_t count; ///< of those without a name
    PyObject *names;  ///< of those behind them; null: there are none
};

/// The arguments of a function by its parameters; null for one that is not given.
/// @param required  so many have to be given
/// @throws Raised with the interpreter's own kind of sentence
void take(const char *function, const Call &call, const char *const *parameters, PyObject **taken, std::size_t count,
          std::size_t required);

template <std::size_t count>
std::array<PyObject *, count> taken(const char *function, const Call &call, const char *const (&parameters)[count],
                                    std::size_t required)
{
    std::array<PyObject *, count> arguments{};
    take(function, call, parameters, arguments.data(), count, required);
    return arguments;
}

/// A function as the interpreter calls it.
template <Ref (*function)(PyObject *self, const Call &call)>
PyObject *entry(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names)
{
    return answered([&] { return function(self, {arguments, count, names}); });
}

template <Ref (*function)(PyObject *self)>
PyObject *entry(PyObject *self, PyObject *)
{
    return answered([&] { return function(self); });
}

template <Ref (*function)(PyObject *self, PyObject *argument)>
PyObject *entry(PyObject *self, PyObject *argument)
{
    return answered([&] { return function(self, argument); });
}

/// A row of a table of methods.
template <Ref (*function)(PyObject *self, const Call &call)>
PyMethodDef method(const char *name, const char *about, int flags = 0)
{
    auto *called = reinterpret_cast<void (*)()>(
        static_cast<PyObject *(*)(PyObject *, PyObject *const *, Py_ssize_t, PyObject *)>(entry<function>));
    return {name, reinterpret_cast<PyCFunction>(called), METH_FASTCALL | METH_KEYWORDS | flags, about};
}

template <Ref (*function)(PyObject *self)>
PyMethodDef method(const char *name, const char *about, int flags = 0)
{
    return {name, static_cast<PyCFunction>(entry<function>), METH_NOARGS | flags, about};
}

template <Ref (*function)(PyObject *self, PyObject *argument)>
PyMethodDef method(const char *name, const char *about, int flags = 0)
{
    return {name, static_cast<PyCFunction>(entry<function>), METH_O | flags, about};
}

/// A text as the library takes it: UTF-8. Bytes that Python has in a text as lone surrogates, as it has those of names
/// of files (PEP 383), stand for themselves.
class Text {
public:
    /// @throws Raised if the object is no text, with a sentence that says who wants one
    Text(PyObject *text, const char *user);
    std::string_view view() const { return view_; }

private:
    Ref encoded_;
    std::string_view view_;
};

/// Of the object's class.
Ref class_name(PyObject *object);

/// How many characters of the text its first bytes are.
std::size_t characters_in(PyObject *text, std::size_t bytes);

/// A text of the library's.
Ref text_of(std::string_view text);

inline Ref bytes_of(const void *data, std::size_t size)
{
    return given(PyBytes_FromStringAndSize(static_cast<const char *>(data), static_cast<Py_ssize_t>(size)));
}

inline Ref number(std::size_t value) { return given(PyLong_FromSize_t(value)); }

inline void set(PyObject *dictionary, PyObject *key, const Ref &value)
{
    done(PyDict_SetItem(dictionary, key, value.get()));
}

inline void put(PyObject *tuple, std::size_t index, Ref value)
{
    done(PyTuple_SetItem(tuple, static_cast<Py_ssize_t>(index), value.release()));
}

} // namespace bgpdt::python
