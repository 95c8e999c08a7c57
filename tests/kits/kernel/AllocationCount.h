// SPDX-License-Identifier: MIT
#pragma once

/// How often the calling thread has allocated memory by `new` so far.
[[nodiscard]] long long CountAllocations();
