// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <string>

/// The text that shows when the pointer rests on a chart: a line for each source, with its colour, name and value, so
/// that colours can be told apart. Markup as BView::SetToolTip takes it.
class ChartTip {
public:
    /// @param value  in words; neither this nor the name is markup
    void AddSource(rgb_color color, const std::string& name, const std::string& value);

    /// Empty as long as there is no source.
    const std::string& Text() const { return fText; }

private:
    std::string fText;
};
