// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A place without files: nothing is loaded, and no names are read.
#include <dlfcn.h>

#include "host/names.hpp"
#include "host/registration.hpp"

void *dlopen(const char * /*file*/, int /*mode*/) { return nullptr; }
int dlclose(void * /*module*/) { return -1; }
void *dlsym(void * /*module*/, const char * /*name*/) { return nullptr; }
int dladdr(const void * /*address*/, Dl_info * /*info*/) { return 0; }

namespace bgpdt::host {

Names::Names(const std::filesystem::path & /*file*/) { throw HostError("there are no files here"); }

} // namespace bgpdt::host
