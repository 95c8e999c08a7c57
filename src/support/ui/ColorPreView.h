// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Box.h"
#include "kits/interface/PopUpMenu.h"

class BColorControl;
class BMenuItem;

/// A framed swatch beside a colour control: it shows the picked colour, which is its view colour, can be dragged,
/// accepts drops of colours, and offers the desktop's colour in a pop-up menu.
///
/// Code that changes the control's colour must also set the swatch's view colour. A colour that the swatch itself
/// brings goes to the control, and MSG_COLOR_CHANGED goes to the swatch's parent, which treats it as any other change.
class ColorPreView : public BBox {
public:
    /// @param control  not owned; outlives the swatch
    ColorPreView(BRect frame, BColorControl* control);

    void AttachedToWindow() override;
    void Draw(BRect update) override;
    /// The primary button drags the colour at once; dropped on the desktop, it becomes the desktop's for good. The
    /// other buttons open the menu, the secondary one as long as it is held.
    void MouseDown(BPoint where) override;
    void ContextMenuRequested(BPoint where) override;
    /// By keyboard: what a drag of the swatch and a drop on it do.
    bool CopyRequested(BMessage* message) override;
    bool PasteRequested(BPoint* where) override;
    void MessageReceived(BMessage* message) override;
    std::string AccessibleValue() const override;

private:
    void DragColor();
    void OpenMenu(BPoint screenPoint, bool openAnyway);

    BPopUpMenu fMenu;
    BMenuItem* fPickItem; // fMenu's
    BColorControl* fControl;
};
