// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>

#include "arrow.hpp"
#include "rows.hpp"

namespace bgpdt::python {
namespace {

using Row = std::optional<std::string_view>;

/// What a format of Arrow's says of where rows stand.
enum class Form : std::uint8_t { none, offsets32, offsets64, views, fixed };

/// A text or bytes up to 12 bytes stands in its view; of a longer one the view tells where.
struct View {
    std::int32_t size;
    char bytes[4];
    std::int32_t buffer;
    std::int32_t at;
};
constexpr std::int32_t longest_in_view = 12;

[[noreturn]] void raise_format(const char *format)
{
    raise(PyExc_TypeError, "a column of texts or bytes is needed, not one of Arrow's format '%s'", format);
}

/// An array's rows, by their numbers.
class Reader {
public:
    Reader(const ArrowSchema &schema, const ArrowArray &array, std::int64_t base)
        : array_(array), base_(static_cast<std::size_t>(base + array.offset)), form_(form_of(schema.format)),
          width_(form_ == Form::fixed ? static_cast<std::size_t>(std::strtoul(schema.format + 2, nullptr, 10)) : 0)
    {
        // What these say now bounds what they may say later.
        const auto end = static_cast<std::size_t>(base + array.offset + array.length);
        end_ = form_ == Form::offsets32 ? at<std::int32_t>(end) : form_ == Form::offsets64 ? at<std::int64_t>(end) : 0;
    }

    Row row(std::size_t number) const
    {
        const std::size_t i = base_ + number;
        if (form_ == Form::none || !is_valid(i))
            return {};
        switch (form_) {
        case Form::offsets32: return between(at<std::int32_t>(i), at<std::int32_t>(i + 1));
        case Form::offsets64: return between(at<std::int64_t>(i), at<std::int64_t>(i + 1));
        case Form::views: return in_view(i);
        default: return std::string_view(bytes(1) + i * width_, width_);
        }
    }

private:
    static Form form_of(const char *format)
    {
        const std::string_view name = format;
        if (name == "u" || name == "z")
            return Form::offsets32;
        if (name == "U" || name == "Z")
            return Form::offsets64;
        if (name == "vu" || name == "vz")
            return Form::views;
        if (name.starts_with("w:"))
            return Form::fixed;
        return name == "n" ? Form::none : (raise_format(format), Form::none);
    }

    bool is_valid(std::size_t i) const
    {
        const auto *bits = static_cast<const std::uint8_t *>(array_.buffers[0]);
        return bits == nullptr || has_bit(bits, i);
    }
    template <class Offset>
    std::int64_t at(std::size_t i) const
    {
        const auto *offsets = static_cast<const Offset *>(array_.buffers[1]);
        return offsets == nullptr ? 0 : offsets[i]; // an empty array may have none
    }
    const char *bytes(std::size_t buffer) const { return static_cast<const char *>(array_.buffers[buffer]); }

    std::string_view between(std::int64_t begin, std::int64_t end) const
    {
        if (begin < 0 || end < begin || end > end_)
            throw std::runtime_error("the offsets of an Arrow array make no sense");
        return begin == end ? std::string_view()
                            : std::string_view(bytes(2) + begin, static_cast<std::size_t>(end - begin));
    }

    Row in_view(std::size_t i) const
    {
        const char *place = bytes(1) + i * sizeof(View);
        View view;
        std::memcpy(&view, place, sizeof view);
        if (view.size < 0 || (view.size > longest_in_view && (view.buffer < 0 || view.buffer + 3 >= array_.n_buffers)))
            throw std::runtime_error("the views of an Arrow array make no sense");
        const char *text = view.size <= longest_in_view ? place + offsetof(View, bytes)
                                                        : bytes(2 + static_cast<std::size_t>(view.buffer)) + view.at;
        return std::string_view(text, static_cast<std::size_t>(view.size));
    }

    const ArrowArray &array_;
    const std::size_t base_;
    const Form form_;
    const std::size_t width_;
    std::int64_t end_ = 0;
};

/// Which row of a dictionary a row stands for.
std::int64_t index_at(const ArrowSchema &schema, const ArrowArray &array, std::size_t i)
{
    const void *indices = array.buffers[1];
    switch (schema.format[0]) {
    case 'c': return static_cast<const std::int8_t *>(indices)[i];
    case 'C': return static_cast<const std::uint8_t *>(indices)[i];
    case 's': return static_cast<const std::int16_t *>(indices)[i];
    case 'S': return static_cast<const std::uint16_t *>(indices)[i];
    case 'i': return static_cast<const std::int32_t *>(indices)[i];
    case 'I': return static_cast<const std::uint32_t *>(indices)[i];
    case 'l':
    case 'L': return static_cast<const std::int64_t *>(indices)[i];
    default: raise_format(schema.format);
    }
}

/// The rows of one array: its own, or those of its dictionary that it points to.
class ArrayRows {
public:
    ArrayRows(const ArrowSchema &schema, const ArrowArray &array, std::int64_t base = 0)
        : schema_(schema), array_(array), base_(static_cast<std::size_t>(base + array.offset)),
          reader_(schema.dictionary == nullptr ? Reader(schema, array, base)
                                               : Reader(*schema.dictionary, *array.dictionary, 0))
    {
    }

    std::size_t count() const { return static_cast<std::size_t>(array_.length); }
    /// Adds rows from that one on, as many as the chunk takes. Tells which is the next.
    std::size_t copy(std::size_t at, Chunk &chunk) const
    {
        for (; !chunk.is_full() && at < count(); ++at) {
            if (const Row found = row(at))
                chunk.add(*found);
            else
                chunk.add_none();
        }
        return at;
    }

private:
    Row row(std::size_t number) const
    {
        return schema_.dictionary == nullptr ? reader_.row(number) : from_dictionary(base_ + number);
    }
    Row from_dictionary(std::size_t i) const
    {
        const auto *bits = static_cast<const std::uint8_t *>(array_.buffers[0]);
        if (bits != nullptr && !has_bit(bits, i))
            return {};
        const std::int64_t index = index_at(schema_, array_, i);
        if (index < 0 || index >= array_.dictionary->length)
            throw std::runtime_error("the indices of an Arrow array make no sense");
        return reader_.row(static_cast<std::size_t>(index));
    }

    const ArrowSchema &schema_;
    const ArrowArray &array_;
    const std::size_t base_;
    const Reader reader_;
};

/// A table of one column is that column.
ArrayRows rows_in(const ArrowSchema &schema, const ArrowArray &array)
{
    if (std::string_view(schema.format) != "+s")
        return {schema, array};
    if (schema.n_children != 1)
        raise(PyExc_TypeError, "one column is needed, not a table of %lld", static_cast<long long>(schema.n_children));
    return {*schema.children[0], *array.children[0], array.offset};
}

template <class Structure>
Structure *pointer_in(PyObject *capsule, const char *name)
{
    void *pointer = PyCapsule_GetPointer(capsule, name);
    return pointer != nullptr ? static_cast<Structure *>(pointer) : throw Raised();
}

/// One array.
class OneArray final : public Rows {
public:
    explicit OneArray(Ref pair)
        : pair_(std::move(pair)),
          rows_(rows_in(*pointer_in<ArrowSchema>(PyTuple_GetItem(pair_.get(), 0), schema_capsule),
                        *pointer_in<ArrowArray>(PyTuple_GetItem(pair_.get(), 1), array_capsule)))
    {
    }

    void fill(Chunk &chunk) override { at_ = rows_.copy(at_, chunk); }

private:
    const Ref pair_;
    const ArrayRows rows_;
    std::size_t at_ = 0;
};

/// An array of a stream, or its schema.
template <class Structure>
struct Owned : Structure {
    Owned() : Structure{} {}
    ~Owned() { reset(); }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
    void reset()
    {
        if (this->release != nullptr)
            this->release(this);
        this->release = nullptr;
    }
};

/// Array behind array.
class Stream final : public Rows {
public:
    explicit Stream(Ref capsule)
        : capsule_(std::move(capsule)), stream_(*pointer_in<ArrowArrayStream>(capsule_.get(), stream_capsule))
    {
        ask([this] { return stream_.get_schema(&stream_, &schema_); });
    }

    void fill(Chunk &chunk) override
    {
        while (!chunk.is_full() && (rows_ || next())) {
            at_ = rows_->copy(at_, chunk);
            if (at_ == rows_->count())
                rows_.reset();
        }
    }

private:
    /// The stream may need other threads of Python's, or be another thread's work.
    template <class Question>
    void ask(const Question &question)
    {
        int status = 0;
        {
            const Unlocked unlocked;
            status = question();
        }
        if (status != 0) {
            const char *why = stream_.get_last_error(&stream_);
            raise(PyExc_RuntimeError, "the stream of Arrow arrays ends with an error: %s", why == nullptr ? "" : why);
        }
    }

    bool next()
    {
        array_.reset();
        ask([this] { return stream_.get_next(&stream_, &array_); });
        if (array_.release == nullptr)
            return false;
        rows_.emplace(rows_in(schema_, array_));
        at_ = 0;
        return true;
    }

    const Ref capsule_;
    ArrowArrayStream &stream_;
    Owned<ArrowSchema> schema_;
    Owned<ArrowArray> array_;
    std::optional<ArrayRows> rows_; ///< of the array; none: the next has to come
    std::size_t at_ = 0;
};

/// What the method gives; none if there is no such method.
Ref called(PyObject *object, const char *method)
{
    const Ref found(PyObject_GetAttrString(object, method));
    if (!found) {
        if (PyErr_ExceptionMatches(PyExc_AttributeError) == 0)
            throw Raised();
        PyErr_Clear();
        return {};
    }
    return given(PyObject_CallFunctionObjArgs(found.get(), nullptr));
}

} // namespace

std::unique_ptr<Rows> arrow_rows(PyObject *column)
{
    if (Ref array = called(column, "__arrow_c_array__")) {
        if (PyTuple_Check(array.get()) == 0 || PyTuple_Size(array.get()) != 2)
            raise(PyExc_TypeError, "__arrow_c_array__() must give two capsules");
        return std::make_unique<OneArray>(std::move(array));
    }
    if (Ref stream = called(column, "__arrow_c_stream__"))
        return std::make_unique<Stream>(std::move(stream));
    return nullptr;
}

} // namespace bgpdt::python
