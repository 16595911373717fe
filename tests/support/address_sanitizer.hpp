// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Both compilers define __SANITIZE_ADDRESS__ where they instrument for the address sanitizer: g++ by itself, clang here.
#pragma once

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define __SANITIZE_ADDRESS__ 1
#endif
#endif
