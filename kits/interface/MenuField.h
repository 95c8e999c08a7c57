// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

class BMenu;

/// A label with a button beside it that opens a menu. With a menu in label-from-marked mode, the button shows the label
/// of the marked item. The field itself sends nothing: the items of its menu do.
///
/// Space, Enter and the down arrow key open the menu. Assistive technology speaks the label and the button's text. When
/// it is attached, it takes the view colour of its parent and the height that its font needs, and keeps the width of
/// its frame.
class BMenuField : public BControl {
public:
    /// @param menu  owned from here, not null
    BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
               uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BMenuField() override;

    void AttachedToWindow() override;

    BMenu* Menu() const { return fMenu.get(); }

    /// Where the button begins, in pixels from the left edge; the label has the room before it. Until it is set, the
    /// label takes the room that it needs.
    virtual void SetDivider(float position);
    /// For tests, which look at windows through it.
    float Divider() const { return fDivider; }

    /// The room that the button needs for every choice. It prefers more: below its preference, choices are set in
    /// narrower letters; below this width they are cut. Main thread.
    float NarrowestMenuWidth();
    /// The divider at which the label is set in its narrowest letters; a smaller one shortens the label. Main thread.
    float NarrowestLabelWidth();

private:
    friend class BMenu;

    QWidget* MakeWidget() override;
    void UpdateWidget() override;
    void OpenMenu();

    std::unique_ptr<BMenu> fMenu;
    float fDivider = -1;
};
