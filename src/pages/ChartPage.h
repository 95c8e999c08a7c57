// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/prefs/PrefsTab.h"

#include <functional>

class ChartView;

/// Base of the pages that edit a chart: each edits one group of its settings, which is what it puts back and what is
/// dragged with it.
///
/// The chart is not owned. When it goes away ForgetModel() has to be called first.
class ChartPage : public PrefsTab {
public:
    /// Puts the group into a message, for example one of the chart's Save...PrefsTo().
    typedef std::function<void(const ChartView& chart, BMessage* into)> SaveFunction;

    ChartPage(const char* name, ChartView* chart, SaveFunction save);

    void Revert() override;
    bool SavePrefsForDD(BMessage* message) override;
    void ForgetModel() override { fChart = nullptr; }

protected:
    /// Null when the chart has gone away.
    ChartView* Chart() const { return fChart; }

    /// What Revert() puts back: the group as it was when the page was made. A page whose changes bring others with them
    /// adds those.
    BMessage& Snapshot() { return fSnapshot; }

private:
    ChartView* fChart;
    SaveFunction fSave;
    BMessage fSnapshot;
};
