#include "kits/interface/dragging/DragCourse.h"

namespace kits {

DragCourse::DragCourse(bool isForDesktop)
    : fIsForDesktop(isForDesktop)
{
}

void DragCourse::GiveUp()
{
    fIsOver = true;
}

bool DragCourse::Release(BPoint where, bool isOnDesktop)
{
    if (fIsOver)
        return false;
    fIsOver = true;
    if (!fIsForDesktop || !isOnDesktop)
        return false;
    fDropOnDesktop = where;
    return true;
}

} // namespace kits
