// SPDX-License-Identifier: MIT
#pragma once

/// Returns how often the calling thread has allocated memory by `new` so far.
[[nodiscard]] long long CountAllocations();
