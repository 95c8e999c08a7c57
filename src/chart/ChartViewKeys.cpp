// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Clipboard.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/support/ColorMessage.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

// The keyboard on a chart: whatever the hand does, one of its captions chosen where the pointer would be on it.

namespace {

constexpr float kLongStep = 10;
/// A place that is on nothing of a chart.
constexpr BPoint kBeside(-30000, -30000);

uint32 ModifiersOf(const BMessage* message)
{
    int32 modifiers = 0;
    if (message != nullptr)
        message->FindInt32("modifiers", &modifiers);
    return static_cast<uint32>(modifiers);
}

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
    const uint32 modifiers = ModifiersOf(Window() != nullptr ? Window()->CurrentMessage() : nullptr);
    switch (key) {
    case B_ENTER:
        Choose(NextToChoose());
        return true;
    case B_ESCAPE:
        if (Chosen() == nullptr)
            return false;
        MoveChosen(fChosenFrom);
        Choose(nullptr);
        return true;
    case B_TAB:
        if (!fReplicant)
            return false;
        GoToNextOnDesktop((modifiers & B_SHIFT_KEY) != 0);
        return true;
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
    if (others == 0 && Chosen() != nullptr)
        MoveChosen(Chosen()->where + step);
    else if (others == 0 && fReplicant)
        MoveOnDesktop(step);
    else if (others == B_COMMAND_KEY && fReplicant)
        ResizeOnDesktop(step);
    else
        return false;
    return true;
}

void ChartView::MoveOnDesktop(BPoint distance)
{
    BMessage message(MSG_MOVE_REPLICANT);
    message.AddPoint("By", distance);
    Window()->PostMessage(&message);
}

void ChartView::ResizeOnDesktop(BPoint difference)
{
    const BRect bounds = Bounds();
    ResizeTo(std::max(bounds.Width() + difference.x, kSmallestReplicant),
             std::max(bounds.Height() + difference.y, kSmallestReplicant));
}

void ChartView::GoToNextOnDesktop(bool back)
{
    BMessage message(MSG_NEXT_REPLICANT);
    message.AddBool("Back", back);
    Window()->PostMessage(&message);
}

ChartCaption* ChartView::Chosen() const
{
    return fChosen != nullptr && fChosen->shown ? fChosen : nullptr;
}

ChartCaption* ChartView::NextToChoose()
{
    bool isBehind = Chosen() == nullptr;
    for (ChartCaption* caption : {&fTitleCaption, &fValueCaption}) {
        if (isBehind && caption->shown && *TextOf(*caption) != '\0')
            return caption;
        isBehind = isBehind || caption == fChosen;
    }
    return nullptr;
}

void ChartView::Choose(ChartCaption* caption)
{
    if (caption == fChosen)
        return;
    fChosen = caption;
    if (caption != nullptr)
        fChosenFrom = caption->where;
    Invalidate();
}

void ChartView::MoveChosen(BPoint where)
{
    TrackCaption(*fChosen, where);
    DoneTracking();
    DrawFocus();
}

// Not on the other caption, where they do not cover each other.
BPoint ChartView::PlaceOn(const ChartCaption& caption) const
{
    const ChartCaption& other = &caption == &fTitleCaption ? fValueCaption : fTitleCaption;
    const BRect& drawn = caption.drawn;
    const BPoint middle((drawn.left + drawn.right) / 2, (drawn.top + drawn.bottom) / 2);
    for (const BPoint place : {middle, drawn.LeftTop(), drawn.RightTop(), drawn.LeftBottom(), drawn.RightBottom()})
        if (!IsOn(other, place))
            return place;
    return middle;
}

bool ChartView::CopyRequested(BMessage* message)
{
    message->what = MSG_PREFS_DROP;
    return SavePrefsTo(message) == B_OK;
}

bool ChartView::PasteRequested(BPoint* where)
{
    const ChartCaption* chosen = Chosen();
    *where = chosen != nullptr ? PlaceOn(*chosen) : kBeside;
    return true;
}

// The menu may change before the colour comes, so the source is looked up again then.
void ChartView::PasteColor(const BMessage& message)
{
    const auto take = [chart = BMessenger(this), message](BMessage& pasted) {
        auto* const view = dynamic_cast<ChartView*>(chart.Target(nullptr));
        if (view != nullptr)
            view->TakePastedColor(message, pasted);
    };
    if (SourceMeantBy(message) == -1 || !kits::FetchClipboard(take))
        beep();
}

void ChartView::TakePastedColor(const BMessage& message, const BMessage& pasted)
{
    const int32 source = SourceMeantBy(message);
    rgb_color color;
    if (source != -1 && FindColorMessage(pasted, &color))
        ColorSource(source, color);
    else
        beep();
}
