// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why a command does not end well, and the exit status that says so.
#ifndef BGPDT_TOOL_ERRORS_HPP
#define BGPDT_TOOL_ERRORS_HPP

#include <cstdint>
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

/// A kind of value, and the form of its text if its help tells one.
struct KindForm {
    std::string kind;
    std::string form;
};

/// A value that is none of the type's, or an operation that the type does not offer.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const std::string &sentence, std::uint32_t status = 0, std::vector<KindForm> forms = {})
        : std::runtime_error(sentence), status_(status), forms_(std::move(forms))
    {
    }
    /// The type's own answer; 0 when the value did not get as far as the type.
    std::uint32_t status() const { return status_; }
    /// What the type would have taken, by kind; none for a type without kinds.
    const std::vector<KindForm> &forms() const { return forms_; }

private:
    std::uint32_t status_;
    std::vector<KindForm> forms_;
};

} // namespace bgpdt::tool

#endif
