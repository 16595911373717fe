// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whether a type takes a text: it is asked, so often and no more.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"
#include "errors.hpp"
#include "kinds.hpp"
#include "samples.hpp"
#include "session.hpp"
#include "text_pieces.hpp"

namespace bgpdt::toolkit {

using Found = std::optional<Diagnosis>;

inline constexpr std::size_t widest_search = 300; ///< bytes of a text in which every character is a suspect

/// The tries are used up.
class Spent : public std::exception {};

/// A type that is asked, and what is known of its texts.
class Asking {
public:
    /// @param most_tries  how often the type is asked; less often about long texts
    Asking(Session &session, const SYSDT_Record &type, std::uint8_t mode, std::size_t most_tries);

    /// The value that the type makes of the text; empty if it refuses it.
    Bytes value_of(std::string_view text) const;
    /// The same as one of the tries.
    /// @throws Spent
    Bytes try_text(std::string_view text);

    std::uint16_t type_id() const { return type_.typeId; }
    /// Whether names may stand for indexes.
    bool knows_names() const { return !session_.settings().names.empty(); }
    const Sample &sample() const { return sample_; }
    const std::vector<Kind> &kinds() const { return kinds_; }
    /// What separates numbers and words in the samples, and usually.
    const std::string &separators() const { return separators_; }

private:
    Session &session_;
    const SYSDT_Record &type_;
    const std::uint8_t mode_;
    const Sample sample_;
    const std::vector<Kind> kinds_;
    const std::string separators_;
    std::size_t tries_left_;
    std::size_t bytes_left_;
};

struct Refused;

/// Whether the type's texts are lists.
bool takes_lists(const Refused &refused);

/// A refused text, and what is found out about it.
struct Refused {
    Asking &asking;
    const std::string text; ///< not blank
    Range window = {0, 0};  ///< where it is suspect
    Found best = {};        ///< what is found so far
    std::set<std::uint32_t> near_kinds = {};

    const Texts &samples() const { return asking.sample().texts; }
    std::string piece(std::size_t at, std::size_t length) const { return text.substr(at, length); }

    /// @throws Spent
    bool takes(const std::string &candidate);
    bool takes(const Edit &edit) { return takes(edited(text, edit)); }
    /// Those of the candidates that may stand in the place of the part.
    std::string accepted(std::size_t at, std::size_t length, std::string_view candidates);
    /// The greatest number that may stand in the place of a run of digits that cannot; none if the run is not too large.
    std::optional<std::uint64_t> greatest(const std::string &whole, Range run);

    Found found(const Edit &edit, std::string reason) const;
    /// With what differs from the rewritten text, if the type takes that.
    Found rewritten(const std::string &by, const std::string &reason);
    /// Without a repair.
    Found told(Range place, std::string reason) const;
    /// What the first of the edits that makes a text of the type tells. The reason is told of the piece that is edited
    /// and of what takes its place.
    template <class Reason>
    Found first_taken(const Edits &edits, const Reason &reason)
    {
        const auto edit = std::ranges::find_if(edits, [this](const Edit &near) { return takes(near); });
        return edit == edits.end() ? Found{} : found(*edit, reason(piece(edit->at, edit->length), edit->by));
    }
};

} // namespace bgpdt::toolkit
