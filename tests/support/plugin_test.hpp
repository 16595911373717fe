// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A test of what the plug-in exports beside its records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "host/host.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

class PluginTest : public testing::Test {
protected:
    /// The exported function of that name; a failure if there is none.
    template <class Function>
    Function *exported(const char *name) const
    {
        auto *function = reinterpret_cast<Function *>(host_.symbol(name));
        EXPECT_NE(nullptr, function) << name;
        return function;
    }

    /// Each pointer null in turn, among arguments that are otherwise sound, gives the status.
    template <class Function, class... Arguments>
    void expect_pointers_needed(const char *name, std::uint32_t status, Arguments... arguments) const
    {
        auto *function = exported<Function>(name);
        const auto expect_needed = [&]<std::size_t I>(std::integral_constant<std::size_t, I>) {
            std::tuple<Arguments...> all(arguments...);
            if constexpr (std::is_pointer_v<std::tuple_element_t<I, decltype(all)>>) {
                std::get<I>(all) = nullptr;
                EXPECT_EQ(status, static_cast<std::uint32_t>(std::apply(function, all))) << name << " without " << I;
            }
        };
        [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            (expect_needed(std::integral_constant<std::size_t, I>{}), ...);
        }
        (std::index_sequence_for<Arguments...>{});
    }

    host::Host host_{plugin_path()};
};

} // namespace bgpdt::test
