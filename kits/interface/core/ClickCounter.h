// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"

#include <cstdlib>

namespace kits {

/// Counts clicks: a click that comes soon after the last one, with the same button and near the same place, is one
/// more.
class ClickCounter {
public:
    /// @param target    what was clicked; another target starts over
    /// @param time      microseconds
    /// @param interval  the longest time after the last click
    /// @param distance  the longest distance from the first click, in pixels
    int32 Count(const void* target, uint32 button, BPoint where, bigtime_t time, bigtime_t interval, float distance)
    {
        const bool again = target == fTarget && button == fButton && time >= fTime && time - fTime <= interval &&
                           std::abs(where.x - fWhere.x) <= distance && std::abs(where.y - fWhere.y) <= distance;
        if (again) {
            fClicks++;
        } else {
            fClicks = 1;
            fWhere = where;
        }
        fTarget = target;
        fButton = button;
        fTime = time;
        return fClicks;
    }

    void Forget(const void* target)
    {
        if (target == fTarget)
            fTarget = nullptr;
    }

private:
    const void* fTarget = nullptr;
    uint32 fButton = 0;
    BPoint fWhere;
    bigtime_t fTime = 0;
    int32 fClicks = 0;
};

} // namespace kits
