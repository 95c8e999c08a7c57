// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"

class BMessage;
class DDTab;
class PrefsTab;

/// The tab view of a preferences window. The user drags pages out of it by their tabs: pressing the selected tab's
/// label and moving the pointer out of the view across the strip drags a MSG_PREFS_DROP message with the page's
/// settings, or, with any button but the primary one, the settings of all pages in one message.
class DDTabView : public BTabView {
public:
    explicit DDTabView(BRect frame);

    /// Adds a page under a tab of its own kind.
    /// @param target  the page; owned by its tab
    /// @param tab     not used; deleted
    void AddTab(BView* target, BTab* tab = nullptr) override;

    void MouseDown(BPoint where) override;
    /// Copies the settings of the visible page, when the focus is on the tabs.
    bool CopyRequested(BMessage* message) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;

private:
    DDTab* SelectedTab() const;
    void DragAllPages();
    void DragPressedPage(BRect outline);

    /// The page whose label was pressed last. A press elsewhere does not clear it.
    PrefsTab* fPressedPage = nullptr;
};
