// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The reader of the vectors. Their grammar is told in vectors/README.md.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "script_value.hpp"
#include "words.hpp"

namespace bgpdt::test {

enum class Verb {
    in,
    bad,
    out,
    bare,
    copy,
    skip,
    noout,
    check,
    cmp,
    set,
    tables,
    noset,
    get,
    noget,
    swap,
    help,
    nohelp,
    fn,
};

/// What becomes of the block of a FormatOut that fails.
enum class Fate { back, freed, released, none };
/// Throws WordError if it is the name of none.
Fate fate_named(std::string_view name);

/// What FormatIn reports.
struct Reported {
    std::uint16_t kind;
    std::uint16_t length;
};

/// One fact. Which members count is told by its verb.
struct Line {
    std::string file;
    int number = 0;      ///< of its first physical line
    std::string content; ///< without comments
    std::string subject; ///< a registered type's name, or a row's
    bool row = false;
    std::optional<Reported> reports; ///< none: as the record says

    Verb verb{};
    std::string verb_name;
    std::vector<std::uint8_t> modes;
    std::string text;
    Bytes bytes;
    std::optional<Bytes> result; ///< the second bytes
    ScriptValue script;
    std::vector<std::string> steps; ///< in which tables are made
    std::int32_t status = 0;        ///< or an order
    Fate fate{};
    std::string function;
    bool marked = false; ///< the property named by the verb's mark does not hold

    /// "tests/vectors/x.vec:12"
    std::string place() const { return file + ":" + std::to_string(number); }
};

struct Vectors {
    std::vector<Line> lines;
    std::vector<std::string> errors; ///< each with file and line
    std::size_t files = 0;
};

/// Appends what a file's content says.
void read_vectors(Vectors &vectors, std::string_view content, const std::string &file);

/// Reads every .vec file below the folder, in the order of their paths.
Vectors read_vector_folder(const std::filesystem::path &folder);

} // namespace bgpdt::test
