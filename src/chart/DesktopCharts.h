// SPDX-License-Identifier: MIT
#pragma once

/// True if charts are stored that belong on the desktop, so that the program that shows them has work to do. Reads a
/// file; do not call this on the main thread.
bool HasDesktopCharts();
