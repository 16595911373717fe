// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit/fields.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "answer.hpp"
#include "toolkit/conversions.hpp"
#include "values.hpp"

using namespace bgpdt;
using namespace bgpdt::library;

namespace {

/// Fields with their texts.
struct Fields : bgpdt_fields {
    Fields() : bgpdt_fields{sizeof(bgpdt_fields), nullptr, 0} {}

    void show()
    {
        for (const toolkit::NamedValue &field : fields)
            shown.push_back({view(field.name), view(field.text), field.number ? BGPDT_NUMBER : BGPDT_OK});
        rows = shown.data();
        count = shown.size();
    }

    std::vector<toolkit::NamedValue> fields;
    std::vector<bgpdt_named_field> shown;
};

bgpdt_fields *handed_over(std::vector<toolkit::NamedValue> values)
{
    auto fields = std::make_unique<Fields>();
    fields->fields = std::move(values);
    fields->show();
    return fields.release();
}

} // namespace

void bgpdt_fields_free(bgpdt_fields *fields) { delete static_cast<Fields *>(fields); }

int bgpdt_fields_of(const bgpdt_type *type, const uint8_t *value, size_t value_size, bgpdt_fields **fields,
                    bgpdt_error **error)
{
    const bool sense = type != nullptr && (value != nullptr || value_size == 0) && fields != nullptr;
    return answer({type, 0, error}, sense, [&] {
        toolkit::require_size(type->record, {value, value_size}, type->size);
        NativeValue native(*type, value);
        *fields = handed_over(toolkit::named_values(type->session(), type->record, native.bytes()));
        return BGPDT_OK;
    });
}

int bgpdt_known_fields(const bgpdt_type *type, bgpdt_fields **fields, bgpdt_error **error)
{
    return answer({type, 0, error}, type != nullptr && fields != nullptr, [&] {
        std::vector<toolkit::NamedValue> known;
        for (const toolkit::KnownField &field : toolkit::known_fields(type->session(), type->record))
            known.push_back({field.name, "", field.number ? std::optional<std::uint64_t>(0) : std::nullopt});
        *fields = handed_over(std::move(known));
        return BGPDT_OK;
    });
}
