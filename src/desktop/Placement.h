// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"
#include "kits/support/Rect.h"

#include <string>
#include <vector>

class BMessage;

/// Where charts stand on screens that come and go. Pure: screens are frames in one plane, the main one first.

/// A chart on the desktop is no smaller than this: the difference between its right and left, in pixels.
inline constexpr float kLeastSide = 20;

/// Names an arrangement of screens; the same screens in another order are the same arrangement.
std::string ArrangementOf(const std::vector<BRect>& screens);

/// The same place, when its handle (the left top corner) can be reached; else the nearest one that lies on a screen, at
/// its left top when it is larger.
BRect InReach(BRect frame, const std::vector<BRect>& screens);

/// The frame with a size that can be shown: at least kLeastSide, at most what all screens together span.
BRect HeldToScreens(BRect frame, const std::vector<BRect>& screens);

/// A place on the main screen where a chart of this size lies over none of the others, from the right top corner
/// downwards and to the left; where there is none, over the others.
BPoint FreePlace(float width, float height, const std::vector<BRect>& others, const std::vector<BRect>& screens);

/// The places that the user gave a chart, one for each arrangement of screens.
class Places {
public:
    /// So many arrangements are remembered, the ones that were used last.
    static constexpr size_t kMost = 8;

    /// The user put it there.
    void Wish(const std::string& arrangement, BRect frame);
    /// The place for an arrangement: the one that was wished for there, else the last wish. Not valid without any.
    BRect For(const std::string& arrangement) const;

    /// As "Place" messages with "Screens" (string) and "Frame" (rectangle), the last wish last.
    void SaveTo(BMessage* into) const;
    /// Leaves out what is not sane.
    void LoadFrom(const BMessage& from);

private:
    struct Wished {
        std::string arrangement;
        BRect frame;
    };
    std::vector<Wished> fWishes; // the last one last
};
