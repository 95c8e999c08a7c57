// SPDX-License-Identifier: MIT
#pragma once

#include "src/support/ui/SmartWindow.h"

#include <functional>

class DDTabView;
class PrefsButtonView;
class PrefsTab;

/// A window of tabbed pages that edit a live model. Nothing has to be applied; the buttons undo: "Revert" undoes the
/// changes of the visible page, "Revert all" those of all pages, and "Cancel" undoes those and closes the window.
///
/// Its owner keeps a pointer to it and passes that pointer's address, as for every SmartWindow. When the model is about
/// to be destroyed, the owner calls Quit(): from that moment no page touches the model, even if the window has to wait
/// for a menu to close.
class PrefsWindow : public SmartWindow {
public:
    /// @param target     gets MSG_WINDOW_CLOSED; null for the application
    /// @param ownerSlot  the owner's pointer to the window, or null
    PrefsWindow(BRect frame, const char* title, BHandler* target, SmartWindow** ownerSlot);
    /// A window from its archive, except for its title.
    PrefsWindow(BMessage* archive, const char* title, BHandler* target, SmartWindow** ownerSlot);

    /// Adds a page after the others; it belongs to the window. The first one is selected.
    void AddPrefsTab(PrefsTab* page);

    /// Restores the models of all pages.
    void RevertAll();
    /// Fills the controls of all pages.
    void GetState();

    /// Raises the window's minimum size, as its owner set it before it was shown, to what the pages need with this
    /// font, and enlarges the window to that. A page calls it when its needs have changed.
    void HoldPages();

    /// Calls HoldPages() the first time.
    void Show() override;
    void Quit() override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;

private:
    void initialise();
    void ForEachPage(const std::function<void(PrefsTab*)>& action);
    void LayOut(float width, float height);

    // Children of the window.
    DDTabView* fTabView = nullptr;
    PrefsButtonView* fButtons = nullptr;

    // The minimum size that the owner has set; negative before the window is shown.
    float fOwnersWidth = -1;
    float fOwnersHeight = -1;
};
