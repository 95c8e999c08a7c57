// SPDX-License-Identifier: MIT
#pragma once

/// The preferences of charts: their window and its pages. A program that shows charts calls this once, before the first
/// of them; charts open the window from then on (ChartView::SetPreferencesOpener).
void UseChartPreferences();
