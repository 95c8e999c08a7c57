// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Box.h"
#include "kits/interface/PopUpMenu.h"

class BColorControl;
class BMenuItem;

/// A framed swatch beside a colour control: it shows the picked colour, which is its view colour, lets it be dragged
/// away, takes colours that are dropped on it, and offers the desktop's colour from a pop-up menu.
///
/// Whoever changes the control's colour sets the swatch's view colour, too. A colour that the swatch itself brings goes
/// to the control, and MSG_COLOR_CHANGED to the swatch's parent, which does with it what it does with any other.
class ColorPreView : public BBox {
public:
    /// @param control  not owned; lives as long as the swatch
    ColorPreView(BRect frame, BColorControl* control);
    ~ColorPreView() override;

    void AttachedToWindow() override;
    void Draw(BRect update) override;
    /// The primary button drags the colour at once; dropped on the desktop, it becomes the desktop's for good. The
    /// others open the menu, the secondary one for as long as it is held.
    void MouseDown(BPoint where) override;
    void ContextMenuRequested(BPoint where) override;
    /// By keyboard what a drag of the swatch and a drop on it do.
    bool CopyRequested(BMessage* message) override;
    bool PasteRequested(BPoint* where) override;
    void MessageReceived(BMessage* message) override;
    std::string AccessibleValue() const override;

private:
    void DragColor();
    void OpenMenu(BPoint screenPoint, bool openAnyway);
    void TakeColor(rgb_color color);

    BPopUpMenu fMenu;
    BMenuItem* fPickItem; // fMenu's
    BColorControl* fControl;
};
