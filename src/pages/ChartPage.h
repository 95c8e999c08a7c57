// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/prefs/PrefsTab.h"

#include <functional>

class ChartView;

/// Base of the pages that edit a chart: each edits one group of its settings, which Revert() restores and a drag
/// carries.
///
/// The chart is not owned. Before it is destroyed, ForgetModel() must be called.
class ChartPage : public PrefsTab {
public:
    /// Puts the group into a message, for example one of the chart's Save...PrefsTo().
    typedef std::function<void(const ChartView& chart, BMessage* into)> SaveFunction;

    ChartPage(const char* name, ChartView* chart, SaveFunction save);

    void Revert() override;
    bool SavePrefsForDD(BMessage* message) override;
    void ForgetModel() override { fChart = nullptr; }

protected:
    /// Returns the chart; null after ForgetModel().
    ChartView* Chart() const { return fChart; }

    /// The settings that Revert() restores: the group as it was when the page was made. A page whose changes affect
    /// other settings adds those.
    BMessage& Snapshot() { return fSnapshot; }

private:
    ChartView* fChart;
    SaveFunction fSave;
    BMessage fSnapshot;
};
