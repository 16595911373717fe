// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why a command does not end well, and the exit status that says so.
#ifndef BGPDT_TOOL_ERRORS_HPP
#define BGPDT_TOOL_ERRORS_HPP

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace bgpdt::tool {

enum Exit : int { exit_done = 0, exit_refused = 1, exit_usage = 2 };

/// A command line that cannot be understood, a file that cannot be read, output that cannot be written.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A kind of value, the form of its text if its help tells one, and a text of it.
struct KindForm {
    std::string kind;
    std::string form;
    std::string example;
};

/// What is wrong with a text.
struct Diagnosis {
    std::string text;                    ///< the refused one
    std::size_t at;                      ///< the first byte that is wrong; what is missing belongs in front of it
    std::size_t length;                  ///< in bytes; 0: something is missing
    std::string reason;                  ///< without the text
    std::string repair;                  ///< the nearest text that is taken
    std::string other = {};              ///< a text of another form that takes the number at the place; often none
    std::vector<std::string> kinds = {}; ///< those near the text; none for a type without kinds
};

/// A value that is none of the type's, or an operation that the type does not offer.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const std::string &sentence, std::uint32_t status = 0, std::vector<KindForm> forms = {},
                     std::optional<Diagnosis> diagnosis = {})
        : std::runtime_error(sentence), status_(status), forms_(std::move(forms)), diagnosis_(std::move(diagnosis))
    {
    }
    /// The type's own answer; 0 when the value did not get as far as the type.
    std::uint32_t status() const { return status_; }
    /// What the type would have taken, by kind; none for a type without kinds.
    const std::vector<KindForm> &forms() const { return forms_; }
    /// Of a text that is refused; none if nothing that the type takes is near it. The sentence holds its reason.
    const std::optional<Diagnosis> &diagnosis() const { return diagnosis_; }

private:
    std::uint32_t status_;
    std::vector<KindForm> forms_;
    std::optional<Diagnosis> diagnosis_;
};

/// A script that ends with an error; the sentence goes on with the lines of its traceback.
class ScriptError : public Refusal {
public:
    using Refusal::Refusal;
};

} // namespace bgpdt::tool

#endif
