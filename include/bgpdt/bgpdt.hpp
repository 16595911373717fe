// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// libbgpdt for C++20: types, and values that one can keep, compare, hash and print. All of it stands on bgpdt.h.
///
/// What a type refuses is a Refusal in a result. Where memory is out, std::bad_alloc is thrown; where an argument makes
/// no sense, such as a value of another type, std::invalid_argument.
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "bgpdt/bgpdt.h"

namespace bgpdt {
/// What links to the static library has its own names apart.
inline namespace v1 {

inline std::string_view view(bgpdt_text text) { return {text.data, text.size}; }

/// Why something was refused.
class Refusal {
public:
    /// @param error  which the refusal takes over
    explicit Refusal(bgpdt_error *error) : error_(error, bgpdt_error_free) {}

    int code() const { return error_->code; }
    /// The router's own answer.
    std::uint32_t status() const { return error_->status; }
    std::string_view message() const { return view(error_->message); }
    /// Of a text: what is wrong in it, if something near it is taken.
    std::string_view reason() const { return view(error_->reason); }
    /// Of a text: where, in bytes.
    std::size_t at() const { return error_->at; }
    std::size_t length() const { return error_->length; }
    /// Of a text: the nearest one that is taken, and what it makes of the value that was meant, BGPDT_SPELLING or its like.
    std::string_view repair() const { return view(error_->repair); }
    int change() const { return error_->change; }
    /// Of a text: the types that take it, the likeliest first.
    std::vector<std::string_view> other_types() const
    {
        std::vector<std::string_view> names;
        for (const bgpdt_text &name : std::span(error_->other_types, error_->other_type_count))
            names.push_back(view(name));
        return names;
    }
    /// All that is known.
    const bgpdt_error &error() const { return *error_; }

private:
    std::shared_ptr<const bgpdt_error> error_;
};

/// What is asked of a result that it has not.
class BadResult : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a function gives, or why it does not.
template <class T>
class [[nodiscard]] result {
public:
    result(T value) : content_(std::in_place_index<0>, std::move(value)) {}           // NOLINT: meant to convert
    result(Refusal refusal) : content_(std::in_place_index<1>, std::move(refusal)) {} // NOLINT: meant to convert

    bool has_value() const { return content_.index() == 0; }
    explicit operator bool() const { return has_value(); }

    /// Without a look whether there is one.
    const T &operator*() const & { return *std::get_if<0>(&content_); }
    T &&operator*() && { return std::move(*std::get_if<0>(&content_)); }
    const T *operator->() const { return std::get_if<0>(&content_); }
    /// @throws BadResult with the refusal's sentence
    const T &value() const &
    {
        require_value();
        return **this;
    }
    T &&value() &&
    {
        require_value();
        return *std::move(*this);
    }
    const Refusal &error() const { return *std::get_if<1>(&content_); }

private:
    void require_value() const
    {
        if (!has_value())
            throw BadResult(std::string(error().message()));
    }

    std::variant<T, Refusal> content_;
};

/// The error that a function of bgpdt.h may give, for whoever calls one.
class Error {
public:
    Error() = default;
    ~Error() { bgpdt_error_free(error_); }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;

    /// Where the function puts it; what was there is released.
    bgpdt_error **out()
    {
        bgpdt_error_free(std::exchange(error_, nullptr));
        return &error_;
    }
    bool none() const { return error_ == nullptr; }
    const bgpdt_error *operator->() const { return error_; }
    /// As a refusal, if it is one; then it is none here.
    Refusal refusal()
    {
        if (error_->code == BGPDT_NO_MEMORY)
            throw std::bad_alloc();
        if (error_->code == BGPDT_NO_SENSE)
            throw std::invalid_argument(bgpdt_code_text(BGPDT_NO_SENSE));
        return Refusal(std::exchange(error_, nullptr));
    }

private:
    bgpdt_error *error_ = nullptr;
};

namespace detail {

/// The bytes of a value, which never change. The short ones, most of them, are kept in place.
class Bytes {
public:
    /// @param fill  writes the bytes
    template <class Fill>
    Bytes(std::size_t size, const Fill &fill) : size_(size)
    {
        if (size > short_.size())
            long_ = std::make_shared<std::uint8_t[]>(size);
        fill(long_ != nullptr ? long_.get() : short_.data());
    }
    const std::uint8_t *data() const { return long_ != nullptr ? long_.get() : short_.data(); }
    std::size_t size() const { return size_; }

private:
    std::size_t size_;
    std::array<std::uint8_t, 32> short_{};
    std::shared_ptr<std::uint8_t[]> long_;
};

} // namespace detail

class Value;

/// What a field of a value says.
struct Field {
    std::string text;
    bool is_number; ///< and stands for nothing else
};

/// A type, in a mode of conversion. It is used no longer than the library is open.
class Type {
public:
    explicit Type(const bgpdt_type *type) : type_(type) {}

    std::string_view name() const { return view(info().name); }
    std::string_view about() const { return view(info().about); }
    std::uint16_t id() const { return info().id; }
    /// Of its values, in bytes.
    std::size_t value_size() const { return info().value_size; }
    /// All that is known.
    const bgpdt_info &info() const { return *bgpdt_about(type_); }
    const bgpdt_type *get() const { return type_; }
    /// The same type in another mode.
    Type in_mode(unsigned mode) const;

    /// A refusal has its reason, which takes a millisecond or so to find.
    result<Value> parse(std::string_view text) const;
    /// Without a reason.
    std::optional<Value> try_parse(std::string_view text) const;
    /// @param bytes  as many as the type's values have, numbers in the target's byte order
    Value from_bytes(std::span<const std::uint8_t> bytes) const;
    result<Value> from_hex(std::string_view hex) const;
    /// @param json  a script table
    result<Value> from_table(std::string_view json) const;

    friend bool operator==(const Type &first, const Type &second) { return first.id() == second.id(); }

private:
    template <class Make>
    result<Value> made(const Make &make) const;

    const bgpdt_type *type_;
};

/// A value of a type. It never changes; copies of a long one share it.
class Value {
public:
    Value(Type type, detail::Bytes bytes) : type_(type), bytes_(std::move(bytes)) {}

    const Type &type() const { return type_; }
    /// Numbers in the target's byte order.
    std::span<const std::uint8_t> bytes() const { return {bytes_.data(), bytes_.size()}; }
    std::string hex() const
    {
        std::string hex;
        for (const std::uint8_t byte : bytes()) {
            hex += "0123456789abcdef"[byte >> 4];
            hex += "0123456789abcdef"[byte & 0x0f];
        }
        return hex;
    }

    /// As the type prints it.
    result<std::string> text() const
    {
        char room[BGPDT_TEXT_ROOM];
        std::size_t size = 0;
        int code = print(room, size, nullptr);
        if (code >= BGPDT_OK)
            return std::string(room, size);
        Error error;
        std::string longer(code == BGPDT_NO_ROOM ? size + 1 : 0, '\0');
        code = print(longer, size, error.out());
        if (code < BGPDT_OK)
            return error.refusal();
        longer.resize(size);
        return longer;
    }
    /// Its fields as JSON.
    result<std::string> explain() const { return json(bgpdt_explain); }
    /// Its script table as JSON.
    result<std::string> table() const { return json(bgpdt_table); }
    /// Its field of the name; nothing if other values of the type have one, but this has not.
    result<std::optional<Field>> field(std::string_view name) const
    {
        Error error;
        char *text = nullptr;
        std::size_t size = 0;
        const int code =
            bgpdt_field(type_.get(), bytes_.data(), bytes_.size(), name.data(), name.size(), &text, &size, error.out());
        if (code < BGPDT_OK)
            return error.refusal();
        const std::unique_ptr<char, void (*)(char *)> owner(text, bgpdt_free);
        return text == nullptr ? std::nullopt : std::optional(Field{std::string(text, size), code == BGPDT_NUMBER});
    }

    /// Nothing, or why the router's Check does not allow it.
    std::optional<Refusal> check() const
    {
        Error error;
        if (bgpdt_check(type_.get(), bytes_.data(), bytes_.size(), error.out()) == BGPDT_OK)
            return {};
        return error.refusal();
    }

    /// The router's Compare, to which unlike bytes may be equal. Nothing where it has no order for the two.
    std::optional<std::weak_ordering> compare(const Value &other) const
    {
        int order = 0;
        const int code = bgpdt_compare(same_type(other).get(), bytes_.data(), bytes_.size(), other.bytes_.data(),
                                       other.bytes_.size(), &order, nullptr);
        if (code == BGPDT_NO_MEMORY)
            throw std::bad_alloc();
        return code == BGPDT_OK ? std::optional<std::weak_ordering>(order <=> 0) : std::nullopt;
    }

    /// The order in which values are sorted: the router's where it has one, else that of their bytes.
    std::strong_ordering order(const Value &other) const
    {
        int order = 0;
        if (bgpdt_order(same_type(other).get(), bytes_.data(), bytes_.size(), other.bytes_.data(), other.bytes_.size(),
                        &order) != BGPDT_OK)
            throw std::bad_alloc();
        return order <=> 0;
    }

    /// By type and bytes.
    friend bool operator==(const Value &first, const Value &second)
    {
        return first.type_ == second.type_ && std::ranges::equal(first.bytes(), second.bytes());
    }
    friend std::strong_ordering operator<=>(const Value &first, const Value &second)
    {
        const std::strong_ordering types = first.type_.id() <=> second.type_.id();
        const auto mine = first.bytes();
        const auto theirs = second.bytes();
        return std::is_neq(types)
                   ? types
                   : std::lexicographical_compare_three_way(mine.begin(), mine.end(), theirs.begin(), theirs.end());
    }

    /// The text, or hexadecimal bytes behind "0x" where there is none: for {fmt}, and for streams.
    friend std::string format_as(const Value &value)
    {
        result<std::string> text = value.text();
        return text ? *std::move(text) : "0x" + value.hex();
    }
    friend std::ostream &operator<<(std::ostream &out, const Value &value) { return out << format_as(value); }

private:
    const Type &same_type(const Value &other) const
    {
        if (type_ != other.type_)
            throw std::invalid_argument("the values are of different types");
        return type_;
    }

    int print(std::span<char> room, std::size_t &size, bgpdt_error **error) const
    {
        return bgpdt_print(type_.get(), bytes_.data(), bytes_.size(), room.data(), room.size(), &size, error);
    }

    template <class Function>
    result<std::string> json(Function *function) const
    {
        Error error;
        char *json = nullptr;
        std::size_t size = 0;
        if (function(type_.get(), bytes_.data(), bytes_.size(), &json, &size, error.out()) != BGPDT_OK)
            return error.refusal();
        const std::unique_ptr<char, void (*)(char *)> owner(json, bgpdt_free);
        return std::string(json, size);
    }

    Type type_;
    detail::Bytes bytes_;
};

inline Type Type::in_mode(unsigned mode) const
{
    const bgpdt_type *type = nullptr;
    const int code = bgpdt_in_mode(type_, mode, &type);
    if (code == BGPDT_NO_MEMORY)
        throw std::bad_alloc();
    return code == BGPDT_OK ? Type(type) : throw std::invalid_argument("a mode is 0 to 255");
}

template <class Make>
result<Value> Type::made(const Make &make) const
{
    Error error;
    int code = BGPDT_OK;
    const std::size_t size = value_size();
    detail::Bytes bytes(size, [&](std::uint8_t *value) { code = make(value, size, error.out()); });
    return code == BGPDT_OK ? result<Value>(Value(*this, std::move(bytes))) : result<Value>(error.refusal());
}

inline result<Value> Type::parse(std::string_view text) const
{
    return made([&](std::uint8_t *value, std::size_t room, bgpdt_error **error) {
        return bgpdt_parse(type_, text.data(), text.size(), value, room, error);
    });
}

inline std::optional<Value> Type::try_parse(std::string_view text) const
{
    int code = BGPDT_OK;
    const std::size_t size = value_size();
    detail::Bytes bytes(
        size, [&](std::uint8_t *value) { code = bgpdt_parse(type_, text.data(), text.size(), value, size, nullptr); });
    if (code == BGPDT_NO_MEMORY)
        throw std::bad_alloc();
    return code == BGPDT_OK ? std::optional<Value>(Value(*this, std::move(bytes))) : std::nullopt;
}

inline Value Type::from_bytes(std::span<const std::uint8_t> bytes) const
{
    if (bytes.size() != value_size())
        throw std::invalid_argument("values of the type have another length");
    return {*this, detail::Bytes(bytes.size(), [&](std::uint8_t *value) { std::ranges::copy(bytes, value); })};
}

inline result<Value> Type::from_hex(std::string_view hex) const
{
    return made([&](std::uint8_t *value, std::size_t room, bgpdt_error **error) {
        return bgpdt_from_hex(type_, hex.data(), hex.size(), value, room, error);
    });
}

inline result<Value> Type::from_table(std::string_view json) const
{
    return made([&](std::uint8_t *value, std::size_t room, bgpdt_error **error) {
        return bgpdt_read_table(type_, json.data(), json.size(), value, room, error);
    });
}

/// The opened library, which is closed with its last copy.
class Library {
public:
    /// @param plugin  its file; empty: the one that comes with the library
    /// @param names   the file of the names behind the name-index types; empty: there are none
    static result<Library> open(std::string_view plugin = {}, std::string_view names = {})
    {
        const bgpdt_options options{sizeof options, {plugin.data(), plugin.size()}, {names.data(), names.size()}};
        bgpdt_library *library = nullptr;
        Error error;
        if (bgpdt_open(&options, &library, error.out()) != BGPDT_OK)
            return error.refusal();
        return Library(library);
    }

    /// By its name, in any case.
    result<Type> type(std::string_view name) const
    {
        const bgpdt_type *type = nullptr;
        Error error;
        if (bgpdt_find(library_.get(), name.data(), name.size(), &type, error.out()) != BGPDT_OK)
            return error.refusal();
        return Type(type);
    }

    /// In the order of the router's registration.
    std::vector<Type> types() const
    {
        std::vector<Type> types;
        for (std::size_t i = 0; i < bgpdt_type_count(library_.get()); ++i)
            types.emplace_back(bgpdt_type_at(library_.get(), i));
        return types;
    }

private:
    explicit Library(bgpdt_library *library) : library_(library, bgpdt_close) {}

    std::shared_ptr<bgpdt_library> library_;
};

} // namespace v1
} // namespace bgpdt

template <>
struct std::hash<bgpdt::Value> {
    std::size_t operator()(const bgpdt::Value &value) const noexcept
    {
        const auto bytes = value.bytes();
        const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
        return std::hash<std::string_view>()(text) ^ value.type().id();
    }
};
