-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
rockspec_format = "3.0"
package = "bgp"
version = "0.1.0-1"
source = {
   url = "git+file://.", -- built in place: `luarocks make lua/bgp-0.1.0-1.rockspec` in the project's folder
}
description = {
   summary = "BGP data types for a router's configuration framework",
   license = "Apache-2.0",
}
dependencies = { "lua ~> 5.4" }
build = {
   type = "cmake",
   variables = {
      BGPDT_HOST = "ON",
      BGPDT_LUA_MODULE = "ON",
      BGPDT_LUA_MODULE_DIR = "$(LIBDIR)",
      CMAKE_BUILD_TYPE = "Release",
   },
}
