// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "library.hpp"

#include <algorithm>

#include "toolkit/kinds.hpp"
#include "toolkit/operations.hpp"
#include "toolkit/samples.hpp"

using namespace bgpdt;
using library::view;

bgpdt_library::bgpdt_library(toolkit::Session &of) : session(of)
{
    for (const SYSDT_Record *record : session.host().types())
        describe(*record);
}

bgpdt_library::bgpdt_library(std::unique_ptr<toolkit::Session> of) : session(*of), own_session_(std::move(of))
{
    for (const SYSDT_Record *record : session.host().types())
        describe(*record);
}

bgpdt_text bgpdt_library::kept(std::string text) { return view(texts_.emplace_back(std::move(text))); }

const std::vector<bgpdt_text> &bgpdt_library::kept(const std::vector<std::string> &texts)
{
    std::vector<bgpdt_text> &list = lists_.emplace_back();
    for (const std::string &text : texts)
        list.push_back(kept(text));
    return list;
}

const std::vector<const bgpdt_kind *> &bgpdt_library::kept_kinds(const SYSDT_Record &record)
{
    std::vector<const bgpdt_kind *> &list = kind_lists_.emplace_back();
    for (const toolkit::Kind &kind : toolkit::kinds(session, record)) {
        list.push_back(&kinds_.emplace_back(bgpdt_kind{.struct_size = sizeof(bgpdt_kind),
                                                       .number = kind.number,
                                                       .name = kept(kind.name),
                                                       .about = kept(kind.about),
                                                       .form = kept(kind.form),
                                                       .takes_text = kind.takes_text ? 1U : 0U}));
    }
    return list;
}

void bgpdt_library::describe(const SYSDT_Record &record)
{
    const toolkit::Sample sample = toolkit::sample_of(record.typeId);
    const std::vector<bgpdt_text> &samples = kept(sample.texts);
    const std::vector<bgpdt_text> &help = kept(toolkit::help_texts(session, record));
    const std::vector<const bgpdt_kind *> &kinds = kept_kinds(record);
    const std::uint8_t mode = session.mode_for(record);
    const std::size_t size = value_size(record);
    types.push_back({.library = *this,
                     .record = record,
                     .order = orders_.emplace_back(session, record),
                     .size = size,
                     .mode = mode,
                     .info = {.struct_size = sizeof(bgpdt_info),
                              .name = kept(toolkit::name_of(record)),
                              .about = kept(sample.about),
                              .id = record.typeId,
                              .base_kind = record.baseKind,
                              .mode = mode,
                              .value_size = size,
                              .operations = toolkit::operation_bits(record),
                              .grammar = kept(sample.grammar),
                              .samples = samples.data(),
                              .sample_count = samples.size(),
                              .help = help.data(),
                              .help_count = help.size(),
                              .kinds = kinds.data(),
                              .kind_count = kinds.size()}});
}

const bgpdt_type &bgpdt_library::type_of(const SYSDT_Record &record) const
{
    return *std::ranges::find_if(types, [&](const bgpdt_type &type) { return &type.record == &record; });
}

const bgpdt_type &bgpdt_library::in_mode(const bgpdt_type &type, std::uint8_t mode)
{
    const bgpdt_type &usual = type_of(type.record);
    if (usual.mode == mode)
        return usual;
    bgpdt_info info = usual.info;
    info.mode = mode;
    const std::lock_guard lock(mutex_);
    return in_modes_
        .try_emplace({&type.record, mode}, bgpdt_type{*this, type.record, type.order, type.size, mode, info})
        .first->second;
}
