-- SPDX-License-Identifier: Apache-2.0
-- A script that fails.
error("the script gives up")
