#pragma once

#include "kits/support/Color.h"

#include <string>

/// The text that shows when the pointer rests on a chart: a line for each source, with its colour, name and value, so
/// that colours can be told apart. Markup as BView::SetToolTip takes it.
class ChartTip {
public:
    /// @param share  as last drawn, a fraction
    void AddSource(rgb_color color, const std::string& name, double share);

    /// Empty as long as there is no source.
    const std::string& Text() const { return fText; }

private:
    std::string fText;
};
