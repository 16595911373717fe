// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "import.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "pipeline.hpp"
#include "toolkit/bytes.hpp"
#include "wire/texts.hpp"
#include "wire/update.hpp"
#include "wire_values.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// Far more than tshark writes of the largest packet.
constexpr std::size_t largest_packet = std::size_t{64} << 20;

/// A message has at most 65535 bytes, however they are written.
constexpr std::size_t longest_message = std::size_t{1} << 20;

/// The characters of one file of the input after the other.
class Characters {
public:
    explicit Characters(Input &input) : input_(input) {}

    /// False at the end of the last file.
    bool begin_file()
    {
        has_block_ = has_block_ || input_.next(block_);
        file_ = has_block_ ? block_.file : file_;
        return has_block_;
    }
    /// Of the file that has begun: which of the input's it is.
    std::size_t file() const { return file_; }
    void begin_packet() { packet_ = 0; }

    /// Nothing at the end of the file.
    std::optional<char> next()
    {
        while (has_block_ && block_.file == file_ && at_ == block_.size) {
            at_ = 0;
            has_block_ = input_.next(block_);
        }
        if (!has_block_ || block_.file != file_)
            return {};
        if (++packet_ > largest_packet)
            throw Refusal(input_.name(file_) + " has a packet of more than 64 MiB, which tshark does not write");
        return block_.text()[at_++];
    }

private:
    Input &input_;
    Block block_;
    bool has_block_ = false;
    std::size_t file_ = 0;
    std::size_t at_ = 0;
    std::size_t packet_ = 0; ///< characters since it began
};

/// What a parser takes characters from.
class Cursor {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    Cursor() = default; ///< the end
    explicit Cursor(Characters &characters) : characters_(&characters), character_(characters.next()) {}

    const char &operator*() const { return *character_; }
    Cursor &operator++()
    {
        character_ = characters_->next();
        return *this;
    }
    bool operator==(const Cursor &other) const { return character_.has_value() == other.character_.has_value(); }

private:
    Characters *characters_ = nullptr;
    std::optional<char> character_;
};

/// Writes the values of BGP messages, packet by packet.
class Importer {
public:
    /// @param records  what the packets are called
    Importer(Session &session, const Options &options, const Input &input, Format format, const char *records)
        : output_(options.output, "the output"), report_(options, input, &output_, records), writer_(session, format)
    {
    }

    void begin_packet(std::size_t file)
    {
        block_.file = file;
        frame_ = ++packets_;
    }
    /// As tshark counts them.
    void set_frame(std::uint64_t frame) { frame_ = frame; }

    void take_message(const std::string &hex)
    {
        ++messages_;
        try {
            const wire::Bytes octets = bytes_of(hex);
            for (const wire::Stretch &stretch : stretches(octets, hex))
                take(stretch, octets, hex);
        } catch (const Refusal &refusal) {
            refuse(refusal);
        }
    }

    void end_packet()
    {
        results_.refused = std::exchange(is_refused_, false) ? 1 : 0;
        results_.lines = 1;
        report_.take(block_, results_);
        results_.clear();
    }

    Exit finish()
    {
        report_.finish();
        return report_.refused() == 0 ? exit_done : exit_refused;
    }
    std::uint64_t packets() const { return packets_; }
    std::uint64_t messages() const { return messages_; }

private:
    std::string front() const { return "frame " + std::to_string(frame_); }

    wire::Bytes bytes_of(const std::string &hex) const
    {
        if (hex.size() > longest_message)
            throw Refusal(front() + ": the message is longer than any, more than " + std::to_string(longest_message) +
                          " characters");
        try {
            return from_hex(hex);
        } catch (const Refusal &refusal) {
            throw Refusal(front() + ": " + refusal.what());
        }
    }

    std::vector<wire::Stretch> stretches(wire::Octets octets, const std::string &hex)
    {
        try {
            return wire::stretches_of(octets);
        } catch (const wire::BadBytes &bad) {
            throw refusal_of(front(), bad, hex);
        }
    }

    /// What is wrong in one attribute says nothing of the others.
    void take(const wire::Stretch &stretch, wire::Octets octets, const std::string &hex)
    {
        try {
            for (const wire::Item &item : wire::read(*stretch.form, stretch.octets, stretch.at)) {
                const Frame frame{frame_, stretch.withdrawn};
                results_.output.append(writer_.line(*stretch.form, item, octets.subspan(item.at, item.size), frame));
            }
        } catch (const wire::BadBytes &bad) {
            refuse(refusal_of(front() + ": " + std::string(stretch.form->name), bad, hex));
        }
    }

    void refuse(Refusal refusal)
    {
        is_refused_ = true;
        if (results_.told.size() < report_.left())
            results_.told.push_back({0, std::move(refusal)});
    }

    Output output_;
    Report report_;
    ItemWriter writer_;
    Block block_;
    Results results_;
    std::uint64_t packets_ = 0;
    std::uint64_t messages_ = 0;
    std::uint64_t frame_ = 0;
    bool is_refused_ = false;
};

/// Finds in an array of packets, each an object, the members "bgp_raw" and "frame.number". What stands in "bgp_raw"
/// is an array that begins with the bytes in hexadecimal, or of several such arrays; a member that stands there twice
/// is another message.
class PacketSax final : public nlohmann::json_sax<nlohmann::json> {
public:
    PacketSax(Importer &importer, Characters &characters) : importer_(importer), characters_(characters) {}

    bool start_object(std::size_t) override
    {
        if (++depth_ == packet_depth) {
            characters_.begin_packet();
            importer_.begin_packet(characters_.file());
        }
        return true;
    }
    bool end_object() override
    {
        if (depth_-- == packet_depth)
            importer_.end_packet();
        return true;
    }
    bool start_array(std::size_t) override
    {
        ++depth_;
        ++arrays_;
        return true;
    }
    bool end_array() override
    {
        --depth_;
        --arrays_;
        return true;
    }
    bool key(std::string &name) override
    {
        arrays_ = 0;
        is_message_ = name == "bgp_raw";
        is_frame_ = name == "frame.number";
        return true;
    }
    bool string(std::string &text) override
    {
        if (depth_ < packet_depth)
            return true;
        if (is_message_ && arrays_ > 0)
            importer_.take_message(text);
        else if (const std::optional<std::uint64_t> number = is_frame_ ? wire::number_of(text) : std::nullopt)
            importer_.set_frame(*number);
        return true;
    }
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const std::string &) override { return true; }
    bool binary(binary_t &) override { return true; }
    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &error) override
    {
        const std::string_view what = error.what();
        error_ = what.substr(std::min(what.find("] ") + 2, what.size()));
        return false;
    }
    const std::string &error() const { return error_; }

private:
    /// In the array of packets.
    static constexpr std::size_t packet_depth = 2;

    Importer &importer_;
    Characters &characters_;
    std::size_t depth_ = 0;
    std::size_t arrays_ = 0; ///< begun in the member
    bool is_message_ = false;
    bool is_frame_ = false;
    std::string error_;
};

void import_file(Importer &importer, Characters &characters, const std::string &name)
{
    const std::uint64_t packets = importer.packets();
    const std::uint64_t messages = importer.messages();
    PacketSax sax(importer, characters);
    if (!nlohmann::json::sax_parse(Cursor(characters), Cursor(), &sax))
        throw Refusal(name + " is not what tshark -T json writes: " + sax.error());
    if (importer.packets() != packets && importer.messages() == messages) {
        throw Refusal(name + " has the bytes of no BGP message: tshark -T json gives them with -x, of packets that it "
                             "takes for BGP, as -Y bgp shows");
    }
}

/// A BGP message in hexadecimal on each line, with its header.
void import_lines(Importer &importer, Characters &characters)
{
    std::string line;
    while (std::optional<char> first = characters.next()) {
        characters.begin_packet();
        importer.begin_packet(characters.file());
        line.clear();
        for (std::optional<char> next = first; next && *next != '\n'; next = characters.next())
            if (line.size() <= longest_message && *next != '\r')
                line += *next;
        importer.take_message(line);
        importer.end_packet();
    }
}

bool is_hex_asked(const Options &options)
{
    const std::string word = options.from.value_or("json");
    if (word != "json" && word != "hex")
        throw UsageError("--from is one of json and hex, not " + word);
    return word == "hex";
}

Format format_of(const Options &options)
{
    const std::string word = options.to.value_or("text");
    if (word != "text" && word != "hex" && word != "json")
        throw UsageError("--to is one of text, hex and json, not " + word);
    return word == "text" ? Format::text : word == "hex" ? Format::hex : Format::json;
}

} // namespace

Exit import_packets(Session &session, const Options &options)
{
    constexpr std::size_t any_characters = 1; // a record of the input
    Input input(options.arguments, any_characters);
    const bool by_lines = is_hex_asked(options);
    Importer importer(session, options, input, format_of(options), by_lines ? "lines" : "packets");
    Characters characters(input);
    while (characters.begin_file()) {
        if (by_lines)
            import_lines(importer, characters);
        else
            import_file(importer, characters, input.name(characters.file()));
    }
    return importer.finish();
}

} // namespace bgpdt::tool
