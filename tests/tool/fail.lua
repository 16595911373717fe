-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- A script that fails.
error("the script gives up")
