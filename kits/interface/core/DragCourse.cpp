// SPDX-License-Identifier: MIT
#include "kits/interface/core/DragCourse.h"

namespace kits {

bool DragCourse::IsTaken(Taker taker, DesktopLayer::Ground ground)
{
    const bool isBare = ground == DesktopLayer::Ground::kDesktop;
    const bool isDesktop = isBare || ground == DesktopLayer::Ground::kDesktopWindow;
    return (taker == Taker::kBareDesktop && isBare) || (taker == Taker::kDesktop && isDesktop);
}

bool DragCourse::Release(BPoint where, DesktopLayer::Ground ground)
{
    if (fIsOver)
        return false;
    fIsOver = true;
    if (IsTaken(fTaker, ground))
        fDropOnDesktop = where;
    return fDropOnDesktop.has_value();
}

} // namespace kits
