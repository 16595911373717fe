-- SPDX-FileCopyrightText: 2026 The bgpdt authors
-- SPDX-License-Identifier: Apache-2.0
rockspec_format = "3.0"
package = "bgp"
version = "scm-1"
source = {
   url = "git+file://.", -- built in place, by `luarocks make`
}
description = {
   summary = "BGP data types: communities, route distinguishers and targets, route keys",
   detailed = "Text to the bytes that a router keeps, with a reason where it is refused; bytes to text, fields and tables.",
   license = "Apache-2.0",
   labels = { "bgp", "networking" },
}
supported_platforms = { "linux" }
dependencies = { "lua ~> 5.4" }
external_dependencies = {
   NLOHMANN_JSON = { header = "nlohmann/json.hpp" },
}
-- The module is one file: the library, the host and the plug-in are in it.
build = {
   type = "command",
   build_command = "cmake -S . -B build/luarocks -DBGPDT_HOST=ON -DBGPDT_LIBRARY=ON -DBGPDT_LINKED=ON "
      .. "-DBGPDT_LUA_MODULE=ON -DBGPDT_LUA_ALONE=ON -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 "
      .. "&& cmake --build build/luarocks --target bgp_lua --parallel",
   install = { lib = { bgp = "build/luarocks/lua/bgp.so" } },
}
