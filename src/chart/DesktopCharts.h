// SPDX-License-Identifier: MIT
#pragma once

/// Whether charts are stored that belong on the desktop, so that the program that shows them has something to do. Reads
/// a file: not for the main thread.
bool HasDesktopCharts();
