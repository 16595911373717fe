// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What stands behind the names of bgpdt.h.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "bgpdt/bgpdt.h"
#include "toolkit/session.hpp"
#include "toolkit/value_order.hpp"

struct bgpdt_type {
    bgpdt_library &library;
    const SYSDT_Record &record;
    const bgpdt::toolkit::ValueOrder &order;
    const std::size_t size; ///< of its values
    const std::uint8_t mode;
    const bgpdt_info info;

    bgpdt::toolkit::Session &session() const;
    bool does(unsigned operation) const { return (info.operations & operation) != 0; }
};

struct bgpdt_library {
    /// @param session  which outlives the library
    explicit bgpdt_library(bgpdt::toolkit::Session &session);
    explicit bgpdt_library(std::unique_ptr<bgpdt::toolkit::Session> session);

    bgpdt::toolkit::Session &session;
    std::deque<bgpdt_type> types; ///< each in its usual mode
    unsigned times = 1;           ///< that it was opened

    /// @throws std::bad_alloc
    const bgpdt_type &in_mode(const bgpdt_type &type, std::uint8_t mode);
    const bgpdt_type &type_of(const SYSDT_Record &record) const;

private:
    void describe(const SYSDT_Record &record);
    bgpdt_text kept(std::string text);
    const std::vector<bgpdt_text> &kept(const std::vector<std::string> &texts);
    const std::vector<const bgpdt_kind *> &kept_kinds(const SYSDT_Record &record);

    const std::unique_ptr<bgpdt::toolkit::Session> own_session_;
    std::deque<bgpdt::toolkit::ValueOrder> orders_;
    std::deque<std::string> texts_;
    std::deque<std::vector<bgpdt_text>> lists_;
    std::deque<bgpdt_kind> kinds_;
    std::deque<std::vector<const bgpdt_kind *>> kind_lists_;
    std::mutex mutex_; ///< of what follows
    std::map<std::pair<const SYSDT_Record *, std::uint8_t>, bgpdt_type> in_modes_;
};

inline bgpdt::toolkit::Session &bgpdt_type::session() const { return library.session; }

namespace bgpdt::library {

/// The session with the plug-in: the one that the settings name, or the one linked in.
/// @throws toolkit::Error, host::HostError
std::unique_ptr<toolkit::Session> new_session(toolkit::Settings settings);
/// Whether the plug-in that is asked for, if any is, is the one of the settings with which it was opened.
bool names_plugin(const toolkit::Settings &asked, const toolkit::Settings &opened);

inline bgpdt_text view(const std::string &text) { return {text.c_str(), text.size()}; }

} // namespace bgpdt::library
