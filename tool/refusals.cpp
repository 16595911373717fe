// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "refusals.hpp"

#include "errors.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

const char *words_for(Hint hint)
{
    switch (hint) {
    case Hint::types: return "; 'bgpdt types' lists the types";
    case Hint::fields: return "; 'bgpdt describe TYPE' and 'bgpdt explain TYPE VALUE' show the fields";
    case Hint::plugin: return "--plugin FILE or ";
    case Hint::bytes: return "; the other commands take its values in hexadecimal";
    case Hint::display_record: return " (--record)";
    case Hint::names: return "; --names FILE gives them";
    default: return "";
    }
}

std::string repair_line(const Diagnosis &diagnosis)
{
    constexpr const char *fronts[] = {
        "  would be accepted: ", "  would be accepted, for example: ", "  would be accepted, but is another value: "};
    return fronts[static_cast<std::size_t>(diagnosis.change)] + shown(diagnosis.repair) + "\n";
}

} // namespace

std::string sentence(const std::exception &error)
{
    if (const auto *known = dynamic_cast<const Error *>(&error)) {
        const std::string words = std::string(known->front()).append(words_for(known->hint())).append(known->rest());
        const bool of_script = dynamic_cast<const ScriptError *>(&error) != nullptr;
        return of_script ? shown_lines(words) : shown(words);
    }
    if (dynamic_cast<const std::bad_alloc *>(&error) != nullptr)
        return "not enough memory";
    return shown(error.what());
}

std::string lines_below(const Refusal &refusal)
{
    if (!refusal.diagnosis())
        return {};
    const Diagnosis &diagnosis = *refusal.diagnosis();
    return underlined(diagnosis.text, diagnosis.at, diagnosis.length) +
           (diagnosis.repair.empty() ? "" : repair_line(diagnosis));
}

std::string form_lines(const Refusal &refusal)
{
    std::string lines;
    for (const KindForm &form : refusal.forms()) {
        const bool both = !form.form.empty() && !form.example.empty();
        lines += padded("  " + form.kind, form.kind.empty() ? 0 : 16) + form.form + (both ? ", such as " : "") +
                 form.example + "\n";
    }
    return lines;
}

} // namespace bgpdt::tool
