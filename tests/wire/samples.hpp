// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The samples of samples.txt, which tells their form.
#pragma once

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "wire/wire.hpp"

namespace bgpdt::wire {

struct Sample {
    const Form *form = nullptr;
    Bytes octets = {};
    std::string text = {};
    Bytes value = {}; ///< in the target's order, where there is no text
    std::vector<NamedValue> beside = {};
    std::string place = {}; ///< in the file
};

/// A row of zeros at the end is counted, "00*81".
inline Bytes sample_value(const std::string &hex)
{
    const std::size_t star = hex.find("00*");
    Bytes value = toolkit::from_hex(hex.substr(0, star));
    value.resize(value.size() + (star == std::string::npos ? 0 : std::stoul(hex.substr(star + 3))));
    return value;
}

inline std::vector<NamedValue> sample_beside(const std::string &line)
{
    std::vector<NamedValue> beside;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t end = std::min(line.find('|', at), line.size());
        const std::string entry = line.substr(at, end - at);
        const std::size_t equals = entry.find('=');
        beside.push_back({entry.substr(0, equals), entry.substr(equals + 1)});
        at = end + 1;
    }
    return beside;
}

inline void add(std::vector<Sample> &samples, const std::string &word, const std::string &rest,
                const std::string &place)
{
    if (word == "form")
        samples.push_back({.form = find_form(rest), .place = place});
    if (samples.empty() || samples.back().form == nullptr)
        throw std::runtime_error(place + ": no form");
    Sample &sample = samples.back();
    if (word == "wire" || word == "+") {
        const Bytes octets = toolkit::from_hex(rest);
        sample.octets.insert(sample.octets.end(), octets.begin(), octets.end());
    } else if (word == "text") {
        sample.text = rest;
    } else if (word == "hex") {
        sample.value = sample_value(rest);
    } else if (word == "beside") {
        sample.beside = sample_beside(rest);
    } else if (word != "form") {
        throw std::runtime_error(place + ": a line begins with none of form, wire, +, text, hex, beside");
    }
}

inline std::vector<Sample> read_samples(const std::string &file)
{
    std::ifstream stream(file);
    std::vector<Sample> samples;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::size_t blank = line.find(' ');
        if (!line.empty() && line.front() != '#')
            add(samples, line.substr(0, blank), line.substr(blank + 1), file + ":" + std::to_string(number));
    }
    return samples;
}

} // namespace bgpdt::wire
