-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
-- A call with an argument of another kind.
bgp.parse({}, "1")
