#include "kits/interface/dragging/DragCourse.h"

namespace kits {

DragCourse::DragCourse(Taker taker)
    : fTaker(taker)
{
}

void DragCourse::GiveUp()
{
    fIsOver = true;
}

bool DragCourse::Release(BPoint where, DesktopLayer::Ground ground)
{
    if (fIsOver)
        return false;
    fIsOver = true;
    const bool isBare = ground == DesktopLayer::Ground::kDesktop;
    const bool isDesktop = isBare || ground == DesktopLayer::Ground::kDesktopWindow;
    if ((fTaker == Taker::kBareDesktop && isBare) || (fTaker == Taker::kDesktop && isDesktop))
        fDropOnDesktop = where;
    return fDropOnDesktop.has_value();
}

} // namespace kits
