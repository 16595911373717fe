// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "grammar.hpp"

#include <algorithm>
#include <iterator>

#include "errors.hpp"
#include "grammar/catalogue.hpp"
#include "grammar/exports.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

using grammar::Dialect;
using grammar::Grammar;

struct Language {
    std::string_view name;
    std::string (*write)(const Grammar &texts);
    bool is_exact = false; ///< whether what is written takes the very same texts
};

std::string as_written(const Grammar &texts) { return texts.written; }
std::string as_python(const Grammar &texts) { return single_regex(texts, Dialect::python) + "\n"; }
std::string as_pcre(const Grammar &texts) { return single_regex(texts, Dialect::pcre) + "\n"; }
std::string as_ecmascript(const Grammar &texts) { return single_regex(texts, Dialect::ecmascript) + "\n"; }

constexpr Language languages[] = {
    {"notation", as_written},
    {"abnf", grammar::abnf},
    {"regex", grammar::portable_regex, true},
    {"python", as_python, true},
    {"pcre", as_pcre, true},
    {"ecmascript", as_ecmascript, true},
    {"yang", grammar::yang_typedef, true},
    {"svg", grammar::railroad},
};

const Language &language_of(const std::string &name)
{
    const auto *const found = std::ranges::find(languages, name, &Language::name);
    if (found != std::end(languages))
        return *found;
    std::vector<std::string> known;
    for (const Language &language : languages)
        known.emplace_back(language.name);
    throw UsageError("--as takes " + joined(known, ", ") + ", not " + name);
}

/// The grammar whose name is that of the type, and the kind if one is named, in any case.
Grammar named_grammar(const Session &session, const Options &options)
{
    const std::string name = joined(options.arguments, " ");
    for (const std::string_view known : grammar::names())
        if (lower(std::string(known)) == lower(name))
            return grammar::grammar_of(known);
    const std::string type = name_of(session.type(options.arguments[0]));
    throw UsageError(options.arguments.size() > 1 ? type + " has no kind " + options.arguments[1] + " with a grammar"
                                                  : "the texts of " + type + " have no grammar");
}

} // namespace

Answer grammar_answer(Session &session, const Options &options)
{
    const Language &language = language_of(options.language);
    const Grammar texts = named_grammar(session, options);
    const bool is_notation = language.write == as_written;
    if (!texts.has("text") && !(is_notation && texts.has("printed")))
        throw Refusal(texts.name + " takes no text");
    if (texts.loose && language.is_exact)
        throw Refusal("the groups of " + texts.name + " stand in any order: no expression tells what it takes");
    const std::string written = language.write(texts);
    JsonObject json;
    json.add("name", texts.name).add("about", texts.about).add("as", language.name).add("grammar", written);
    json.add("printing", grammar::printing(texts));
    return {is_notation ? written + "# " + grammar::printing(texts) + "\n" : written, json};
}

} // namespace bgpdt::tool
