// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/host.hpp"
#include "kind.hpp"
