// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// A module that is no plug-in.

extern "C" __attribute__((visibility("default"))) const int host_test_no_entry = 1;
