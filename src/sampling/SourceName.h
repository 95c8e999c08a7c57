// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/ValueProvider.h"

#include <string>

/// A source's name in the user's language, for what is shown to him. Other programs are told ValueProvider::Name().
std::string SourceName(vptarget_t target, int32 flags);
