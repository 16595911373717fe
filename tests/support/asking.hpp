// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The calls that vector lines are about, made on the stand-alone host as its users make them, from any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/host.hpp"
#include "subject.hpp"

namespace bgpdt::test {

/// What a call answered, the same on every processor.
struct Answer {
    std::uint32_t status = 0;       ///< or an order
    std::uint16_t kind = 0;         ///< reported by a conversion
    Bytes bytes;                    ///< in the target's byte order; empty where the line leaves them open
    ScriptValue script;             ///< what LuaSet stored
    std::vector<std::string> texts; ///< of Help
};

bool operator==(const Answer &first, const Answer &second);
std::string to_text(const Answer &answer);

/// Asks on behalf of one thread: the script state is its own.
class Asking {
public:
    explicit Asking(host::Host &host);

    /// Makes the line's call. What the line expects is not looked at, but for the size of what is read.
    Answer ask(const Line &line, const Subject &subject, std::uint8_t mode) const;

private:
    struct Close {
        void operator()(lua_State *lua) const;
    };

    Answer parse(const Line &line, const Subject &subject, std::uint8_t mode) const;
    Answer print(const Line &line, const Subject &subject, std::uint8_t mode) const;
    Answer compare(const Line &line, const Subject &subject) const;
    Answer swap(const Line &line, const Subject &subject) const;
    Answer set(const Line &line, const Subject &subject) const;
    Answer get(const Line &line, const Subject &subject) const;

    host::Host &host_;
    std::unique_ptr<lua_State, Close> lua_;
};

/// What the line says that its call answers.
Answer expected_answer(const Line &line, const Subject &subject);

} // namespace bgpdt::test
