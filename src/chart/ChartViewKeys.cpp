// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartView.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

// The keyboard on a chart. It offers every action of the mouse: the chosen caption stands for the one under the
// pointer.

namespace {

constexpr float kLongStep = 10;
/// A place outside everything that a chart contains.
constexpr BPoint kBeside(-30000, -30000);

} // namespace

void ChartView::KeyDown(const char* bytes, int32 count)
{
    if (fFocusByMouse) {
        fFocusByMouse = false;
        Invalidate();
    }
    if (count != 1 || !UseKey(*bytes))
        BView::KeyDown(bytes, count);
}

bool ChartView::UseKey(char key)
{
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const auto modifiers = static_cast<uint32>(message != nullptr ? kits::kModifiersField.Get(*message) : 0);
    switch (key) {
    case B_ENTER:
        if (fCaptions.Choose(fCaptions.NextToChoose()))
            Invalidate();
        return true;
    case B_ESCAPE:
        if (fCaptions.Chosen() == nullptr)
            return false;
        MoveChosen(fCaptions.ChosenFrom());
        fCaptions.Choose(nullptr);
        Invalidate();
        return true;
    case B_TAB: {
        if (!IsReplicant())
            return false;
        BMessage wish(MSG_NEXT_REPLICANT);
        kBackField.Add(&wish, (modifiers & B_SHIFT_KEY) != 0);
        Window()->PostMessage(&wish);
        return true;
    }
    case B_LEFT_ARROW:
        return UseArrow(BPoint(-1, 0), modifiers);
    case B_RIGHT_ARROW:
        return UseArrow(BPoint(1, 0), modifiers);
    case B_UP_ARROW:
        return UseArrow(BPoint(0, -1), modifiers);
    case B_DOWN_ARROW:
        return UseArrow(BPoint(0, 1), modifiers);
    default:
        return false;
    }
}

bool ChartView::UseArrow(BPoint direction, uint32 modifiers)
{
    const float length = (modifiers & B_SHIFT_KEY) != 0 ? kLongStep : 1;
    const BPoint step(direction.x * length, direction.y * length);
    const uint32 others = modifiers & ~B_SHIFT_KEY;
    if (others == 0 && fCaptions.Chosen() != nullptr) {
        MoveChosen(fCaptions.Chosen()->look.where + step);
    } else if (others == 0 && IsReplicant()) {
        BMessage wish(MSG_MOVE_REPLICANT);
        kDistanceField.Add(&wish, step);
        Window()->PostMessage(&wish);
    } else if (others == B_COMMAND_KEY && IsReplicant()) {
        ResizeTo(std::max(Bounds().Width() + step.x, kSmallestReplicant),
                 std::max(Bounds().Height() + step.y, kSmallestReplicant));
    } else {
        return false;
    }
    return true;
}

void ChartView::MoveChosen(BPoint where)
{
    TrackCaption(*fCaptions.Chosen(), where);
    DoneTracking();
    DrawFocus();
}

bool ChartView::CopyRequested(BMessage* message)
{
    message->what = MSG_PREFS_DROP;
    return SavePrefsTo(message) == B_OK;
}

bool ChartView::PasteRequested(BPoint* where)
{
    const ChartCaption* chosen = fCaptions.Chosen();
    *where = chosen != nullptr ? fCaptions.PlaceOn(*chosen) : kBeside;
    return true;
}
