// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Splits blocks into lines, or values in binary, and gives their values to a consumer.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "pipeline.hpp"
#include "toolkit/stream_values.hpp"

namespace bgpdt::tool {

/// Output of a block that is handed out before the block has ended.
inline constexpr std::size_t largest_output = std::size_t{1} << 20;

/// The size of a value in binary; 0 in the formats that are lines.
std::size_t record_size(const SYSDT_Record &type, toolkit::Format format);

enum class Verdict : std::uint8_t { accepted, warned, refused };

/// What is done with the values of the lines.
class Consumer {
public:
    virtual ~Consumer() = default;
    /// @param line  as it stands in the input, without its end
    virtual Verdict take(toolkit::Value value, std::string_view line, toolkit::Buffer &out) = 0;
    /// Why the last value was refused, or warned of.
    virtual toolkit::Refusal why() const = 0;
};

/// What is told of lines, whatever is made of them.
class Lines : public Worker {
protected:
    explicit Lines(const Report &report) : report_(report) {}

    /// A reason that is not told is not looked for.
    template <class Why>
    void tell(Results &results, bool warning, const Why &why) const
    {
        if (results.told.size() < report_.left())
            results.told.push_back({results.lines, why(), warning});
    }
    /// @param whole  the line as it stands in the input, with its end
    static void refuse(std::string_view whole, Results &results);
    static toolkit::Refusal too_long();
    /// A part of a line that no block holds.
    void take_part(const Block &block, Results &results) const;

private:
    const Report &report_;
};

class LineWorker final : public Lines {
public:
    /// @throws UsageError if the type takes no text, and that is the format
    LineWorker(toolkit::Session &session, const SYSDT_Record &type, toolkit::Format format,
               std::unique_ptr<Consumer> consumer, const Report &report);

    void work(const Block &block, Results &results, const HandOut &hand_out) override;

private:
    struct Line {
        std::uint32_t length; ///< without the line's end
        std::uint32_t next;   ///< where the next begins
    };

    void split(std::span<char> text);
    void take(std::span<char> line, std::string_view whole, Results &results);
    toolkit::Refusal reason(bool sound, toolkit::Value value, std::string_view line) const;

    toolkit::ValueReader reader_;
    std::unique_ptr<Consumer> consumer_;
    const std::size_t record_; ///< the size of a value in binary, else 0
    toolkit::Buffer original_;
    std::vector<Line> lines_;
    bool has_nul_ = false;
};

} // namespace bgpdt::tool
