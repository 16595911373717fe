// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What an interpreter that has imported the module holds: the opened library, and a class for each type.
#pragma once

#include "python.hpp"

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "bgpdt/bgpdt.h"

namespace bgpdt::python {

struct State;

/// A field as an attribute of a class: "AS number" is as_number.
struct Attribute {
    std::string field;
    std::string name;
};

/// A type, and its class.
struct Type {
    State &state;
    const bgpdt_type *type; ///< in its usual mode
    std::size_t size;       ///< of its values
    std::string name;
    std::string full_name = {};  ///< "bgpdt.VRFRD"; the class keeps the pointer
    PyTypeObject *cls = nullptr; ///< the state holds it
    std::deque<Attribute> attributes = {};
    std::vector<PyGetSetDef> getters = {};

    const bgpdt_info &info() const { return *bgpdt_about(type); }
};

struct State {
    State() = default;
    State(const State &) = delete;
    State &operator=(const State &) = delete;
    ~State() { bgpdt_close(library); }

    bgpdt_library *library = nullptr;
    unsigned at_work = 0; ///< how many calls use the library while other threads run
    std::deque<Type> types;
    std::unordered_map<PyTypeObject *, Type *> by_class;
    Ref by_name;   ///< the classes by the types' names
    Ref value;     ///< the class of all values
    Ref refusal;   ///< the exception
    Ref column;    ///< the class of columns
    Ref form;      ///< what a form of text is
    Ref kind;      ///< what is known of a kind
    Ref type_info; ///< what is known of a type
};

/// Of a function's module, or of a class of the module.
State &state_of_module(PyObject *module);
State &state_of_class(PyTypeObject *cls);

/// Lets other threads run while the library works, which keeps its names meanwhile.
class Working {
public:
    explicit Working(State &state) : counted_(state) {}

private:
    struct Counted {
        explicit Counted(State &of) : state(of) { ++state.at_work; }
        ~Counted() { --state.at_work; }
        Counted(const Counted &) = delete;
        Counted &operator=(const Counted &) = delete;
        State &state;
    };

    Counted counted_; // before the others run, and after
    Unlocked unlocked_;
};

inline std::string_view view(bgpdt_text text) { return {text.data, text.size}; }
inline Ref text_of(bgpdt_text text) { return text_of(view(text)); }
/// A tuple of them.
Ref texts_of(std::span<const bgpdt_text> texts);

} // namespace bgpdt::python
