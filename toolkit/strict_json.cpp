// SPDX-License-Identifier: Apache-2.0
#include "strict_json.hpp"

#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "errors.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;

/// No type's table has half as many.
constexpr std::size_t most_levels = 32;

/// Builds the value of what the parser tells it.
class Builder final : public nlohmann::json_sax<ordered_json> {
public:
    explicit Builder(ordered_json &root) : root_(root) {}

    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(std::int64_t value) override { return put(value); }
    bool number_unsigned(std::uint64_t value) override { return put(value); }
    bool number_float(double value, const std::string &) override { return put(value); }
    bool string(std::string &value) override { return put(std::move(value)); }
    bool binary(ordered_json::binary_t &value) override { return put(std::move(value)); }

    bool start_object(std::size_t) override { return open(ordered_json::object()); }
    bool start_array(std::size_t) override { return open(ordered_json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(std::string &name) override
    {
        const auto [member, is_new] = open_.back()->emplace(name, nullptr);
        if (!is_new)
            throw Refusal("it has the member " + lua_quoted(name) + " twice");
        member_ = &*member;
        return true;
    }

    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &) override { return false; }

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

    bool open(ordered_json &&value)
    {
        if (open_.size() == most_levels)
            throw Refusal("it is nested deeper than " + std::to_string(most_levels) + " levels");
        ordered_json &opened = place();
        opened = std::move(value);
        open_.push_back(&opened);
        return true;
    }

    bool close()
    {
        open_.pop_back();
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
