// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <string>

/// The text of a chart's tool tip: a line for each source with its colour, name and value, so that the user can tell
/// the colours apart. Markup in the form that BView::SetToolTip() takes.
class ChartTip {
public:
    /// @param value  in words; neither this nor the name is markup
    void AddSource(rgb_color color, const std::string& name, const std::string& value);

    /// Returns the text, which is empty while there is no source.
    const std::string& Text() const { return fText; }

private:
    std::string fText;
};
