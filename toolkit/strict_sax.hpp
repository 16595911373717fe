// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What JSON must be to be read, whatever is made of it.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "errors.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {

/// Hears of each part of a text of JSON.
/// @throws Refusal if it is nested too deeply or tells a member twice
class StrictSax : public nlohmann::json_sax<nlohmann::ordered_json> {
public:
    /// No type's table has half as many levels.
    static constexpr std::size_t most_levels = 32;

    bool key(std::string &name) final
    {
        if (!begin_member(name))
            throw Refusal("it has the member " + lua_quoted(name) + " twice");
        return true;
    }
    bool binary(nlohmann::ordered_json::binary_t &) final { return false; } // which text never is
    bool start_object(std::size_t) final { return open(true); }
    bool start_array(std::size_t) final { return open(false); }
    bool end_object() final { return close(); }
    bool end_array() final { return close(); }
    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &) final { return false; }

protected:
    /// False if the innermost object has the member already; the next value is its.
    virtual bool begin_member(std::string &name) = 0;
    virtual void begin(bool object) = 0;
    virtual void end() = 0;

private:
    bool open(bool object)
    {
        if (levels_ == most_levels)
            throw Refusal("it is nested deeper than " + std::to_string(most_levels) + " levels");
        ++levels_;
        begin(object);
        return true;
    }

    bool close()
    {
        --levels_;
        end();
        return true;
    }

    std::size_t levels_ = 0;
};

} // namespace bgpdt::toolkit
