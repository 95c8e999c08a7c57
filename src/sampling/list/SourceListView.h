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

/// An outline list of every source that this machine has. The user drags rows onto charts, a group with all the rows
/// directly under it. The drag message is MSG_SOURCE_DROP with one "ValueProvider" message for each source.
class SourceListView : public BOutlineListView {
public:
    /// A list for as many processors as the machine has at this moment.
    SourceListView();

    /// Shows only the sources that fit the text (see SourceFilter), and their groups, all expanded. Selects the best
    /// fit, preferring a plain source to its smoothed form, and then the first one. An empty text shows all again, with
    /// the groups that were expanded and the row that was selected before the user typed.
    void SetFilter(const char* text);

    /// Adds the content of a drag of this row to the message, and sets its code.
    /// @return false, and nothing is changed, if there is no such row
    bool AddSourcesTo(BMessage* message, int32 index) const;

    /// Copies what a drag of the selected row carries.
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
    // State of the whole list while only a part of it is shown: full numbers of rows.
    int32 fSelectedRow = -1;
    std::vector<int32> fCollapsedRows;
};
