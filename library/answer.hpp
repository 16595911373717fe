// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The line that no exception crosses: what a function does becomes a code, and an error for who asks for one.
#pragma once

#include <exception>
#include <new>
#include <string_view>

#include "library.hpp"
#include "toolkit/errors.hpp"

namespace bgpdt::library {

/// A call of a function, as far as its errors tell of it.
struct Call {
    const bgpdt_type *type = nullptr;
    unsigned operation = 0;        ///< of the type, that the function does
    bgpdt_error **error = nullptr; ///< which the caller may not want
};

/// Tells the caller, if they want to know, what needs no further words.
int told(const Call &call, int code) noexcept;
/// The same of what was thrown.
int told(const Call &call, const toolkit::Refusal &refusal) noexcept;
int told(const Call &call, const toolkit::Error &error) noexcept;
int told(const Call &call, int code, const char *sentence) noexcept;

/// Adds the types that take the text to the error that tells why one does not.
void add_other_types(const Call &call, std::string_view text) noexcept;

/// Runs the work, which answers a code, if the arguments make sense.
template <class Work>
int answer(const Call &call, bool sense, const Work &work) noexcept
{
    if (call.error != nullptr)
        *call.error = nullptr;
    if (!sense)
        return told(call, BGPDT_NO_SENSE);
    try {
        const int code = work();
        return code < 0 ? told(call, code) : code;
    } catch (const toolkit::Refusal &refusal) {
        return told(call, refusal);
    } catch (const toolkit::Error &error) {
        return told(call, error);
    } catch (const host::HostError &error) {
        return told(call, BGPDT_NO_PLUGIN, error.what());
    } catch (const std::bad_alloc &) {
        return told(call, BGPDT_NO_MEMORY);
    } catch (const std::exception &error) {
        return told(call, BGPDT_FAILED, error.what());
    } catch (...) {
        return told(call, BGPDT_FAILED);
    }
}

} // namespace bgpdt::library
