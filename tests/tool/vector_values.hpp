// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A session with the plug-in under test, and the values of the vectors.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "bgp_datatype/fields.hpp"
#include "support/vector_file.hpp"
#include "toolkit/bytes.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::test {

/// The host is the process's.
inline toolkit::Session &session()
{
    static toolkit::Session session({.plugin = std::getenv("BGPDT_PLUGIN")});
    return session;
}

/// The types that take the values of the dispatch rows.
inline const char *type_of(const Line &line)
{
    return !line.row ? line.subject.c_str() : line.subject.starts_with("RD:") ? "BOLRD" : "BOLPREFIX";
}

/// The values of the vectors by type, in the machine's byte order.
inline const std::map<std::string, std::vector<Bytes>> &values()
{
    static const auto all = [] {
        std::map<std::string, std::vector<Bytes>> by_type;
        for (const Line &line : read_vector_folder(BGPDT_SOURCE_VECTORS).lines) {
            const SYSDT_Record &type = session().type(type_of(line));
            for (Bytes value : {line.bytes, line.result.value_or(Bytes{})}) {
                if (value.size() == value_size(type)) {
                    toolkit::turn_to_native(type, value);
                    by_type[toolkit::name_of(type)].push_back(value);
                }
            }
        }
        for (auto &[name, list] : by_type) {
            std::ranges::sort(list);
            list.erase(std::unique(list.begin(), list.end()), list.end());
        }
        return by_type;
    }();
    return all;
}

} // namespace bgpdt::test
