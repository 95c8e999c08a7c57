// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"
#include "kits/support/Rect.h"

#include <string>
#include <vector>

class BMessage;

/// The places of charts on screens that come and go. Pure: screens are frames in one plane, the main one first.

/// The smallest side of a chart on the desktop: the difference between its right and left, in pixels.
inline constexpr float kLeastSide = 20;

/// Returns the name of an arrangement of screens; the same screens in another order are the same arrangement.
std::string ArrangementOf(const std::vector<BRect>& screens);

/// Returns the same place if its handle (the top left corner) is within reach, otherwise the nearest one that lies on a
/// screen, at the screen's top left corner if it is larger.
BRect InReach(BRect frame, const std::vector<BRect>& screens);

/// Returns the frame with a size that can be shown: at least kLeastSide, at most the extent of all screens together.
BRect HeldToScreens(BRect frame, const std::vector<BRect>& screens);

/// Returns a place on the main screen where a chart of this size covers none of the others, searching from the top
/// right corner downwards and to the left; if there is none, a place over the others.
BPoint FreePlace(float width, float height, const std::vector<BRect>& others, const std::vector<BRect>& screens);

/// The places that the user gave a chart, one for each arrangement of screens.
class Places {
public:
    /// The most arrangements that are remembered, the ones used last.
    static constexpr size_t kMost = 8;

    /// Records that the user put it there.
    void Wish(const std::string& arrangement, BRect frame);
    /// Returns the user's place for an arrangement, or else the user's last place. Not valid if there is none.
    BRect For(const std::string& arrangement) const;

    /// Saves the places as "Place" messages with "Screens" (string) and "Frame" (rectangle), the last one last.
    void SaveTo(BMessage* into) const;
    /// Loads the places; ignores invalid ones.
    void LoadFrom(const BMessage& from);

private:
    struct Wished {
        std::string arrangement;
        BRect frame;
    };
    std::vector<Wished> fWishes; // the most recent last
};
