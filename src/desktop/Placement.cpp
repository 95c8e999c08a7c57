// SPDX-License-Identifier: MIT
#include "src/desktop/Placement.h"

#include "kits/application/Field.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

const kits::Field<std::string> kScreensField("Screens", 0, 1024);
const kits::Field<BRect> kFrameField("Frame", 0, kits::kFarthestPlace);
const kits::Field<BMessage> kPlacesField("Place", Places::kMost);

/// Size of the handle and its surroundings.
constexpr float kReach = 8;
constexpr float kGap = 8;

BRect Span(const std::vector<BRect>& screens)
{
    BRect span = screens.front();
    for (const BRect& screen : screens)
        span = span | screen;
    return span;
}

/// Returns the frame moved onto a screen.
BRect MovedOnto(BRect frame, const BRect& screen)
{
    const float left = std::max(std::min(frame.left, screen.right - frame.Width()), screen.left);
    const float top = std::max(std::min(frame.top, screen.bottom - frame.Height()), screen.top);
    frame.OffsetTo(BPoint(left, top));
    return frame;
}

float Distance(const BRect& a, const BRect& b)
{
    return std::abs(a.left - b.left) + std::abs(a.top - b.top);
}

} // namespace

std::string ArrangementOf(const std::vector<BRect>& screens)
{
    std::vector<std::string> names;
    for (const BRect& screen : screens) {
        char name[100];
        std::snprintf(name, sizeof(name), "%.0fx%.0f+%.0f+%.0f", screen.Width() + 1, screen.Height() + 1, screen.left,
                      screen.top);
        names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names)
        all += (all.empty() ? "" : " ") + name;
    return all;
}

BRect InReach(BRect frame, const std::vector<BRect>& screens)
{
    if (screens.empty())
        return frame;
    const BRect handle(frame.left, frame.top, frame.left + kReach - 1, frame.top + kReach - 1);
    BRect nearest = frame;
    float least = std::numeric_limits<float>::max();
    for (const BRect& screen : screens) {
        if (screen.Contains(handle))
            return frame;
        const BRect moved = MovedOnto(frame, screen);
        if (Distance(moved, frame) < least) {
            least = Distance(moved, frame);
            nearest = moved;
        }
    }
    return nearest;
}

BRect HeldToScreens(BRect frame, const std::vector<BRect>& screens)
{
    const BRect span = screens.empty() ? frame : Span(screens);
    const float width = std::max(std::min(frame.Width(), span.Width()), kLeastSide);
    const float height = std::max(std::min(frame.Height(), span.Height()), kLeastSide);
    return {frame.left, frame.top, frame.left + width, frame.top + height};
}

BPoint FreePlace(float width, float height, const std::vector<BRect>& others, const std::vector<BRect>& screens)
{
    if (screens.empty())
        return {0, 0};
    const BRect& room = screens.front();
    for (float right = room.right - kGap; right - width >= room.left; right -= kGap) {
        for (float top = room.top + kGap; top + height <= room.bottom; top += kGap) {
            const BRect place(right - width, top, right, top + height);
            const auto covers = [&](const BRect& other) { return place.Intersects(other); };
            const auto other = std::find_if(others.begin(), others.end(), covers);
            if (other == others.end())
                return place.LeftTop();
            // The space above the other's end is taken.
            top = std::max(top, other->bottom);
        }
    }
    const float step = 3 * kGap * static_cast<float>(others.size() % 10 + 1);
    return InReach(BRect(room.right - width - step, room.top + step, room.right - step, room.top + step + height),
                   screens)
        .LeftTop();
}

void Places::Wish(const std::string& arrangement, BRect frame)
{
    if (!kFrameField.Holds(frame))
        return;
    std::erase_if(fWishes, [&](const Wished& wish) { return wish.arrangement == arrangement; });
    fWishes.push_back({arrangement, frame});
    if (fWishes.size() > kMost)
        fWishes.erase(fWishes.begin());
}

BRect Places::For(const std::string& arrangement) const
{
    if (fWishes.empty())
        return {};
    const auto place = std::find_if(fWishes.begin(), fWishes.end(),
                                    [&](const Wished& wish) { return wish.arrangement == arrangement; });
    return place != fWishes.end() ? place->frame : fWishes.back().frame;
}

void Places::SaveTo(BMessage* into) const
{
    for (const Wished& wish : fWishes) {
        BMessage place;
        kScreensField.Add(&place, wish.arrangement);
        kFrameField.Add(&place, wish.frame);
        kPlacesField.Add(into, place);
    }
}

void Places::LoadFrom(const BMessage& from)
{
    fWishes.clear();
    BMessage place;
    for (int32 i = 0; kPlacesField.Find(from, &place, i); i++) {
        std::string arrangement;
        BRect frame;
        if (kScreensField.Find(place, &arrangement) && kFrameField.Find(place, &frame))
            Wish(arrangement, frame);
    }
}
