#pragma once

#include "kits/interface/View.h"

/// The handle by which a view can be pulled out of its window: a small view over a corner of its target, or beside it.
class BDragger : public BView {
public:
    /// @param target  the view that the handle stands for; not owned. The dragger is the target's child, its parent or
    /// a
    ///                sibling
    BDragger(BRect frame, BView* target, uint32 resizingMode = B_FOLLOW_NONE, uint32 flags = B_WILL_DRAW);
    ~BDragger() override;

    BView* Target() const { return fTarget; }

private:
    BView* fTarget;
};
