// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "strict_json.hpp"

#include <string>
#include <utility>
#include <vector>

#include "strict_sax.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;

/// Builds the value of what the parser tells it.
class Builder final : public StrictSax {
public:
    explicit Builder(ordered_json &root) : root_(root) {}

    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(std::int64_t value) override { return put(value); }
    bool number_unsigned(std::uint64_t value) override { return put(value); }
    bool number_float(double value, const std::string &) override { return put(value); }
    bool string(std::string &value) override { return put(std::move(value)); }

protected:
    bool begin_member(std::string &name) override
    {
        const auto [member, is_new] = open_.back()->emplace(name, nullptr);
        member_ = &*member;
        return is_new;
    }

    void begin(bool object) override
    {
        ordered_json &opened = place();
        opened = object ? ordered_json::object() : ordered_json::array();
        open_.push_back(&opened);
    }

    void end() override { open_.pop_back(); }

private:
    /// Where the next value belongs.
    ordered_json &place()
    {
        if (open_.empty())
            return root_;
        return open_.back()->is_array() ? open_.back()->emplace_back() : *member_;
    }

    bool put(ordered_json &&value)
    {
        place() = std::move(value);
        return true;
    }

    ordered_json &root_;
    std::vector<ordered_json *> open_; ///< the arrays and objects around the next value
    ordered_json *member_ = nullptr;   ///< of the innermost object, whose value comes next
};

} // namespace

std::optional<ordered_json> read_json(std::string_view text)
{
    ordered_json value;
    Builder builder(value);
    return ordered_json::sax_parse(text, &builder) ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace bgpdt::toolkit
