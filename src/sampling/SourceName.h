// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/ValueProvider.h"

#include <string>

/// Returns a source's name in the user's language, for display. Other programs get ValueProvider::Name().
std::string SourceName(vptarget_t target, int32 flags);
