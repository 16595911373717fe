-- SPDX-License-Identifier: Apache-2.0
-- A call with an argument of another kind.
bgp.parse({}, "1")
