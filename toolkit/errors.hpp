// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why something is refused or cannot be done. The sentences fit every front; where one has more to say, in words of its
/// own, a hint tells of what and in which place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bgpdt::toolkit {

enum class Hint : std::uint8_t {
    none,
    types,          ///< where the types' names are listed
    fields,         ///< where a type's fields are listed
    plugin,         ///< in which further way the plug-in is named: "X or "
    bytes,          ///< how a value comes of something else than text
    display_record, ///< how a display record is given
    names,          ///< how names are given
};

/// What a session needs is not there, or there is no type of the name.
class Error : public std::runtime_error {
public:
    /// @param place  of the hint in the sentence; its end, if none is told
    explicit Error(const std::string &sentence, Hint hint = Hint::none, std::size_t place = std::string::npos)
        : std::runtime_error(sentence), hint_(hint), place_(place)
    {
    }
    Hint hint() const { return hint_; }
    /// The sentence as far as the hint's place.
    std::string_view front() const { return std::string_view(what()).substr(0, place_); }
    /// What stands behind that.
    std::string_view rest() const { return std::string_view(what()).substr(front().size()); }

private:
    Hint hint_;
    std::size_t place_;
};

/// A kind of value, the form of its text if its help tells one, and a text of it.
struct KindForm {
    std::string kind;
    std::string form;
    std::string example;
};

/// What a repair makes of the text's value.
enum class Change : std::uint8_t {
    spelling, ///< what was meant, written as the type takes it
    example,  ///< what is missing comes from an example
    value,    ///< another value
};

/// A type, and what it is in words.
struct TypeName {
    std::string name;
    std::string about;
};

/// Types that take a text which one refuses, the likeliest first; nothing if they were not asked.
using OtherTypes = std::optional<std::vector<TypeName>>;

/// What is wrong with a text.
struct Diagnosis {
    std::string text;                    ///< the refused one
    std::size_t at;                      ///< the first byte that is wrong; what is missing belongs in front of it
    std::size_t length;                  ///< in bytes; 0: something is missing
    std::string reason;                  ///< without the text
    std::string repair = {};             ///< the nearest text that would be taken; empty if none is near what was meant
    Change change = Change::value;       ///< of the repair
    std::vector<std::string> kinds = {}; ///< those near the text; none for a type without kinds
    OtherTypes types = {};               ///< that take the text as it stands
};

/// A value that is none of the type's, or an operation that the type does not offer.
class Refusal : public Error {
public:
    explicit Refusal(const std::string &sentence, std::uint32_t status = 0, std::vector<KindForm> forms = {},
                     std::optional<Diagnosis> diagnosis = {}, Hint hint = Hint::none, OtherTypes types = {})
        : Error(sentence, hint), status_(status), forms_(std::move(forms)), diagnosis_(std::move(diagnosis)),
          types_(std::move(types))
    {
    }
    Refusal(const std::string &sentence, Hint hint, std::size_t place = std::string::npos, std::uint32_t status = 0)
        : Error(sentence, hint, place), status_(status)
    {
    }
    /// The type's own answer; 0 when the value did not get as far as the type.
    std::uint32_t status() const { return status_; }
    /// What the type would have taken, by kind; none for a type without kinds.
    const std::vector<KindForm> &forms() const { return forms_; }
    /// Of a text that is refused; none if nothing is known but that. The sentence holds its reason.
    const std::optional<Diagnosis> &diagnosis() const { return diagnosis_; }
    /// Those that take the text as it stands.
    const OtherTypes &types() const { return types_; }

private:
    std::uint32_t status_;
    std::vector<KindForm> forms_;
    std::optional<Diagnosis> diagnosis_;
    OtherTypes types_;
};

} // namespace bgpdt::toolkit
