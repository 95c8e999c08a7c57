// SPDX-License-Identifier: MIT
#pragma once

#include "src/pages/ChartPage.h"

class BButton;
class BScrollView;
class BTextControl;
class SourceListView;

/// The page "Sources" of a chart: the list of all sources. The user drags them onto charts; Enter, a double click or
/// the button adds the selected source, or a group, to this page's chart; without a selection the button is disabled.
/// The field below filters the list while the user types.
class ChartSourcesTab : public ChartPage {
public:
    explicit ChartSourcesTab(ChartView* chart);

    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    /// Does nothing: the list is the same for every chart.
    void GetState() override {}
    void GetMinimumSize(float* width, float* height) override;

private:
    void AddSelected();
    void EnableAdd();

    // Children of this view.
    SourceListView* fList;
    BScrollView* fScrollView;
    BTextControl* fFilter;
    BButton* fAdd;
};
