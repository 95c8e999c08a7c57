// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

#include <memory>
#include <string>

class BPopUpMenu;

/// The handle by which a view can be dragged out of its window: a small view over a corner of its target. Its mark is
/// visible on the view colour, light or dark, and on whatever lies below a transparent view.
///
/// Dragging it with the primary button drags the target's archive (code B_ARCHIVED_OBJECT), with the target's picture.
/// The target learns the outcome:
/// - dropped on the desktop: B_DROPPED_ON_DESKTOP with "where" (point, on the screen) and "offset" (point, the
///   pointer's place in the target). Only a system that knows what lies below the pointer can report this (X11).
/// - taken by a shelf of another process (BShelf): B_REPLICANT_TAKEN. A drag that ends in any other way changes
///   nothing. A click without a move is no drag.
class BDragger : public BView {
public:
    /// @param target  the view that the handle drags; not owned. The dragger is the target's child, its parent or a
    ///                sibling
    BDragger(BRect frame, BView* target, uint32 resizingMode = B_FOLLOW_NONE, uint32 flags = B_WILL_DRAW);
    ~BDragger() override;

    BView* Target() const { return fTarget; }

    /// A unique name (kits::NewIdentity()) for the life of the target, even over several sessions: by it a shelf
    /// recognises what it has taken. Without one, every drag has a name of its own.
    void SetIdentity(const std::string& identity) { fIdentity = identity; }

    /// The menu that the other buttons open; its items have targets. Null: none.
    void SetPopUp(std::unique_ptr<BPopUpMenu> menu);

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;
    void ContextMenuRequested(BPoint where) override;
    void SetViewColor(rgb_color color) override;
    using BView::SetViewColor;

protected:
    void WidgetCreated(QWidget* widget) override;

private:
    void StartDrag(BPoint where);
    rgb_color MarkColor() const;

    BView* fTarget;
    std::string fIdentity;
    std::unique_ptr<BPopUpMenu> fPopUp;
    BPoint fPressedAt;
    bool fPressed = false;
    bool fHovered = false;
};
