// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <bit>
#include <mutex>
#include <string>
#include <string_view>

#include "answer.hpp"
#include "toolkit/operations.hpp"

using namespace bgpdt;
using namespace bgpdt::library;

namespace {

/// The library is the process's, as its host is.
std::mutex opening;
bgpdt_library *opened = nullptr;

/// @throws toolkit::Error if other files are asked for than are open
void require_same(const toolkit::Settings &is, const toolkit::Settings &asked)
{
    const bool same_plugin = names_plugin(asked, is);
    if (!same_plugin || (!asked.names.empty() && asked.names != is.names))
        throw toolkit::Error("the process has the library open with " + (same_plugin ? "other names" : is.plugin));
}

int open(const toolkit::Settings &settings, bgpdt_library **library)
{
    const std::lock_guard lock(opening);
    if (opened == nullptr) {
        opened = new bgpdt_library(new_session(settings));
    } else {
        require_same(opened->session.settings(), settings);
        ++opened->times;
    }
    *library = opened;
    return BGPDT_OK;
}

bool makes_sense(const bgpdt_options *options)
{
    const auto is_text = [](const bgpdt_text &text) { return text.data != nullptr || text.size == 0; };
    return options == nullptr ||
           (options->struct_size >= sizeof(bgpdt_options) && is_text(options->plugin) && is_text(options->names));
}

std::string string_of(const bgpdt_text &text)
{
    return text.size == 0 ? std::string() : std::string(text.data, text.size);
}

} // namespace

int bgpdt_open(const bgpdt_options *options, bgpdt_library **library, bgpdt_error **error)
{
    return answer({.error = error}, library != nullptr && makes_sense(options), [&] {
        *library = nullptr;
        toolkit::Settings settings;
        if (options != nullptr) {
            settings.plugin = string_of(options->plugin);
            settings.names = string_of(options->names);
        }
        return open(settings, library);
    });
}

int bgpdt_load_names(bgpdt_library *library, const char *file, size_t file_size, bgpdt_error **error)
{
    return answer({.error = error}, library != nullptr && file != nullptr, [&] {
        library->session.load_names(std::string(file, file_size));
        return BGPDT_OK;
    });
}

void bgpdt_close(bgpdt_library *library)
{
    const std::lock_guard lock(opening);
    if (library == nullptr || library != opened || --opened->times != 0)
        return;
    delete opened;
    opened = nullptr;
}

// ------------------------------------------------------------------------------------------------ finding types

size_t bgpdt_type_count(const bgpdt_library *library) { return library == nullptr ? 0 : library->types.size(); }

const bgpdt_type *bgpdt_type_at(const bgpdt_library *library, size_t index)
{
    return index < bgpdt_type_count(library) ? &library->types[index] : nullptr;
}

int bgpdt_find(const bgpdt_library *library, const char *name, size_t name_size, const bgpdt_type **type,
               bgpdt_error **error)
{
    const bool sense = library != nullptr && (name != nullptr || name_size == 0) && type != nullptr;
    return answer({.error = error}, sense, [&] {
        *type = nullptr;
        *type = &library->type_of(library->session.type(std::string_view(name, name_size)));
        return BGPDT_OK;
    });
}

int bgpdt_in_mode(const bgpdt_type *type, unsigned mode, const bgpdt_type **in_mode)
{
    return answer({.type = type}, type != nullptr && mode <= UINT8_MAX && in_mode != nullptr, [&] {
        *in_mode = &type->library.in_mode(*type, static_cast<std::uint8_t>(mode));
        return BGPDT_OK;
    });
}

const bgpdt_info *bgpdt_about(const bgpdt_type *type) { return type == nullptr ? nullptr : &type->info; }

const char *bgpdt_operation_word(unsigned operation)
{
    const auto words = toolkit::operation_words();
    const auto bit = static_cast<std::size_t>(std::countr_zero(operation));
    return std::has_single_bit(operation) && bit < words.size() ? words[bit] : nullptr;
}

const char *bgpdt_version() { return BGPDT_VERSION; }
