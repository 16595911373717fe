// SPDX-License-Identifier: Apache-2.0
/// @file
/// A test of what the plug-in exports beside its records.
#ifndef BGPDT_TESTS_PLUGIN_TEST_HPP
#define BGPDT_TESTS_PLUGIN_TEST_HPP

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

    host::Host host_{plugin_path()};
};

} // namespace bgpdt::test

#endif
