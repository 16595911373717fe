// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the command line says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/session.hpp"

namespace bgpdt::tool {

struct Options {
    std::string command;
    std::vector<std::string> arguments;
    toolkit::Settings settings;
    std::optional<std::string> line_template; ///< print: of an attribute bitmap's display record
    std::vector<std::string> values;          ///< print: what fills the template, "KIND=VALUE"
    std::vector<std::string> fields;          ///< convert: of a table, or of JSON
    std::string color = "auto";               ///< explain: "always" and "never" do not ask for a terminal
    std::string language = "notation";        ///< grammar: what it is written in

    // Of the commands that run over many values.
    std::optional<std::string> from; ///< the format of what is read
    std::optional<std::string> to;
    std::string output = "-";
    std::string rejects;                             ///< the file of the refused lines, if any
    std::vector<std::string> with;                   ///< wire: what stands beside a value, "NAME=VALUE"
    std::vector<std::string> in;                     ///< what is read, where the arguments are no files
    std::optional<std::uint64_t> show;               ///< how many refusals are told
    std::uint64_t memory = std::uint64_t{256} << 20; ///< of a sort, in bytes
    unsigned threads = 1;
    bool quiet = false;
    bool summary = false;
    bool unique = false;
    bool reverse = false;

    bool json = false;
    bool record = false;       ///< print: the bytes are a display record, not a value
    bool canonical = false;    ///< check: accepted is not enough
    bool descriptions = false; ///< complete: what the words mean
    bool html = false;         ///< explain: a page
    bool dialects = false;     ///< explain: how others read the text

    std::vector<std::string> given; ///< the names of the options that are given
    std::string page;               ///< help or version, asked for instead of a command
};

} // namespace bgpdt::tool
