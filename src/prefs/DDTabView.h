// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"

class BMessage;
class DDTab;
class PrefsTab;

/// The tab view of a preferences window. Pages are dragged out of it by their tabs: a press on the selected tab's
/// label, and the pointer pulled out of the view across the strip, drags a MSG_PREFS_DROP message with the page's
/// settings, or with any other button than the primary one the settings of all pages in one message.
class DDTabView : public BTabView {
public:
    explicit DDTabView(BRect frame);

    /// Adds a page under a tab of its own kind.
    /// @param target  the page; owned by its tab
    /// @param tab     not used; deleted
    void AddTab(BView* target, BTab* tab = nullptr) override;

    void MouseDown(BPoint where) override;
    /// The settings of the page that shows, for who stands on the tabs.
    bool CopyRequested(BMessage* message) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;

private:
    DDTab* SelectedTab() const;
    void DragAllPages();
    void DragPressedPage(BRect outline);

    /// The page whose label was pressed last. A press elsewhere does not clear it.
    PrefsTab* fPressedPage = nullptr;
};
