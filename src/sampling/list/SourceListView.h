// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/OutlineListView.h"
#include "src/sampling/SourceFilter.h"
#include "src/sampling/SourceTable.h"

#include <vector>

class BMessage;

/// A row of the source list: a source, or a group of them (target VP_NONE, its text set by the list).
class SourceListItem : public BStringItem {
public:
    SourceListItem(vptarget_t target, int32 flags);

    vptarget_t Target() const { return fKey.target; }
    int32 Flags() const { return fKey.flags; }

private:
    SourceKey fKey;
};

/// An outline list of every source that this machine has. Rows are dragged onto charts, a group with all the rows
/// directly under it. The drag message is MSG_SOURCE_DROP with one "ValueProvider" message for each source.
class SourceListView : public BOutlineListView {
public:
    /// As many processors as the machine has at this moment.
    SourceListView();

    /// Shows only the sources that fit the text (see SourceFilter), and the groups that have any, all open. It selects
    /// the source that fits best, a plain one rather than its smoothed form, then the first. An empty text shows all
    /// again, with the groups that were open and the row that was selected before something was typed.
    void SetFilter(const char* text);

    /// Adds what a drag of this row carries to the message, and sets its code.
    /// @return false, and nothing is changed, if there is no such row
    bool AddSourcesTo(BMessage* message, int32 index) const;

    /// What a drag of the selected row carries.
    bool CopyRequested(BMessage* message) override;
    bool InitiateDrag(BPoint where, int32 index, bool wasSelected) override;

private:
    void Fill();
    void AddGroup(const ProcessorGroup& group);
    void SelectBestSource();
    void KeepState();
    void RestoreState();

    int32 fProcessors;
    SourceFilter fFilter;
    // Of the whole list while a part of it is shown: full numbers of rows.
    int32 fSelectedRow = -1;
    std::vector<int32> fCollapsedRows;
};
