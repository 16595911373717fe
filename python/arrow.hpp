// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Arrow's C data interface: its structures, as Arrow's documentation lays them down.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

struct ArrowSchema {
    const char *format;
    const char *name;
    const char *metadata;
    std::int64_t flags;
    std::int64_t n_children;
    ArrowSchema **children;
    ArrowSchema *dictionary;
    void (*release)(ArrowSchema *);
    void *private_data;
};

struct ArrowArray {
    std::int64_t length;
    std::int64_t null_count;
    std::int64_t offset;
    std::int64_t n_buffers;
    std::int64_t n_children;
    const void **buffers;
    ArrowArray **children;
    ArrowArray *dictionary;
    void (*release)(ArrowArray *);
    void *private_data;
};

struct ArrowArrayStream {
    int (*get_schema)(ArrowArrayStream *, ArrowSchema *out);
    int (*get_next)(ArrowArrayStream *, ArrowArray *out);
    const char *(*get_last_error)(ArrowArrayStream *);
    void (*release)(ArrowArrayStream *);
    void *private_data;
};

} // extern "C"

namespace bgpdt::python {

/// Of a bitmap: row i is bit i % 8 of byte i / 8.
inline bool has_bit(const std::uint8_t *bits, std::size_t row) { return (bits[row / 8] >> row % 8 & 1) != 0; }
inline void set_bit(std::uint8_t *bits, std::size_t row)
{
    bits[row / 8] = static_cast<std::uint8_t>(bits[row / 8] | 1U << row % 8);
}

inline constexpr const char *schema_capsule = "arrow_schema";
inline constexpr const char *array_capsule = "arrow_array";
inline constexpr const char *stream_capsule = "arrow_array_stream";

inline constexpr std::int64_t nullable = 2; ///< a flag of a schema

} // namespace bgpdt::python
