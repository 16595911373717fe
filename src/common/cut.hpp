// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A part of a text for those who want a text of its own, without a copy.
#pragma once

namespace bgpdt {

/// A part of a text that is a text of its own while this lives: a NUL stands for the separator behind it so long.
class Cut {
public:
    /// @param end  where the separator is; null: there is no such part
    Cut(const char *text, char *end) : text_(end == nullptr ? nullptr : text), end_(end)
    {
        if (end_ != nullptr) {
            separator_ = *end_;
            *end_ = '\0';
        }
    }
    ~Cut()
    {
        if (end_ != nullptr)
            *end_ = separator_;
    }
    Cut(const Cut &) = delete;
    Cut &operator=(const Cut &) = delete;

    /// Null if there is none.
    const char *get() const { return text_; }

private:
    const char *text_;
    char *end_;
    char separator_ = '\0';
};

} // namespace bgpdt
