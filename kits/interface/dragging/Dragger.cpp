#include "kits/interface/Dragger.h"

BDragger::BDragger(BRect frame, BView* target, uint32 resizingMode, uint32 flags)
    : BView(frame, "_dragger_", resizingMode, flags)
    , fTarget(target)
{
}

BDragger::~BDragger() = default;
