// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"
#include "kits/application/EventLoop.h"
#include "kits/application/MainThread.h"
#include "kits/interface/Clipboard.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/chart/PixelRows.h"
#include "src/support/MessageCodes.h"

#include <cmath>

namespace {

// What FontDropped takes, as font panels send it.
constexpr uint32 kFontDrop = '!FNT';

} // namespace

void ChartView::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SYSINFO_SAMPLE: {
        const rgb_color low = fLowColor;
        TakeSample(*message);
        // All else that a sample does is drawing.
        if (fLowColor == low)
            kits::EventLoop::NoteUnchanged();
        break;
    }
    case MSG_PREFS_DROP:
        LoadPrefsFrom(message);
        RedrawAll();
        break;
    case MSG_SOURCE_DROP:
        SourcesDropped(message);
        break;
    case B_SIMPLE_DATA:
    case B_MIME_DATA:
        TextDropped(message);
        break;
    case B_PASTE:
        ColorDropped(message);
        break;
    case kFontDrop:
        FontDropped(message);
        break;
    case MSG_REMOVE_SOURCE:
        RemoveSourceOf(*message);
        break;
    case MSG_DISTRIBUTE_VALUE_POS:
        DistributePlace(MSG_SET_VALUE_POS, fValueCaption);
        break;
    case MSG_DISTRIBUTE_TITLE_POS:
        DistributePlace(MSG_SET_TITLE_POS, fTitleCaption);
        break;
    case MSG_SYNC_OTHERS: {
        beep();
        BMessage wish(MSG_SET_COLUMN);
        wish.AddFloat("Pos", fColumn);
        Distribute(wish);
        break;
    }
    case MSG_SET_VALUE_POS:
        TakePlace(*message, fValueCaption);
        break;
    case MSG_SET_TITLE_POS:
        TakePlace(*message, fTitleCaption);
        break;
    case MSG_SET_COLUMN: {
        float column = 0;
        if (FindInRange(*message, "Pos", &column))
            MoveColumnTo(column);
        break;
    }
    case MSG_CHART_PAUSE:
        Pause(!fPaused);
        break;
    case MSG_RECONNECT:
        Connect(true, true);
        break;
    case MSG_SAVE_PICTURE:
        SavePicture();
        break;
    case MSG_SAVE_VALUES:
        SaveValues();
        break;
    case MSG_COPY_SETTINGS:
        kits::CopyFrom(this);
        break;
    case MSG_PASTE:
        if (!kits::PasteOnto(this))
            beep();
        break;
    case MSG_PASTE_COLOR:
        PasteColor(*message);
        break;
    case MSG_CHART_PREFS:
        OpenPrefs();
        break;
    case MSG_WINDOW_CLOSED:
        PrefsWindowClosed(*message);
        break;
    case MSG_CHART_ADD:
        AddSibling();
        break;
    case MSG_CHART_DELETE:
        Delete();
        break;
    case B_ABOUT_REQUESTED:
        ForwardAbout(message);
        break;
    case MSG_SERVER_GONE:
    case B_SOME_APP_QUIT:
        ServerGone(*message);
        break;
    case MSG_SERVER_UNREACHABLE:
        TellFailure();
        break;
    default:
        if (!DesktopMessageReceived(message))
            BView::MessageReceived(message);
    }
}

void ChartView::RemoveSourceOf(const BMessage& message)
{
    const int32 index = SourceMeantBy(message);
    if (index != -1)
        RemoveValueProvider(index);
}

// The source in whose submenu the item stands that sent the message; -1 for none.
int32 ChartView::SourceMeantBy(const BMessage& message) const
{
    void* item = nullptr;
    return fMenu != nullptr && message.FindPointer("source", &item) == B_OK ? fMenu->SourceOf(item) : -1;
}

void ChartView::Distribute(const BMessage& wish)
{
    if (fOwner == nullptr || Window() == nullptr)
        return;
    BMessage envelope(MSG_DISTRIBUTE);
    envelope.AddPointer("CView", this);
    envelope.AddMessage("Msg", &wish);
    Window()->PostMessage(&envelope, fOwner);
}

void ChartView::DistributePlace(uint32 command, const ChartCaption& caption)
{
    BMessage wish(command);
    wish.AddPoint("Coord", caption.where);
    Distribute(wish);
}

void ChartView::TakePlace(const BMessage& message, ChartCaption& caption)
{
    BPoint where;
    if (!FindInRange(message, "Coord", &where))
        return;
    LooperLock lock(this);
    const float width = caption.font.StringWidth(TextOf(caption));
    caption.where = ModerateStringCoord(where, Bounds(), width, caption.height);
    DrawValue(true);
    DrawTitle(true);
}

// Moves the picture so that the newest column comes to stand at another place: the next sample goes there.
void ChartView::MoveColumnTo(float column)
{
    LooperLock lock(this);
    PictureLock pictureLock(fBitmap.get());
    const BRect area = ChartRect();
    if (!pictureLock || column == fColumn || column > Bounds().right + 1)
        return;
    const float from = std::floor(fColumn);
    const float to = std::floor(column);
    const uint32 low = PixelWord(fLowColor);
    PixelRows rows(fBitmap.get());
    const auto distance = static_cast<int32>(to - from);
    if (distance > 0) {
        rows.MoveColumns(BRect(area.left, area.top, area.right - (to - from), area.bottom), distance);
        rows.Fill(BRect(area.left, area.top, area.left + (to - from) - 1, area.bottom), low);
    } else if (distance < 0) {
        rows.MoveColumns(BRect(area.left + (from - to), area.top, area.right, area.bottom), distance);
        rows.Fill(BRect(to + 1, area.top, from, area.bottom), low);
        fHistory.KeepNewest(distance + fHistory.CountRows());
    }
    fColumn = ColumnBefore(column);
    for (int32 i = 0; i < CountValueProviders(); i++)
        fLastPoints[static_cast<size_t>(i)].x = column;
    if (lock)
        Invalidate();
}

void ChartView::AddSibling()
{
    if (fOwner == nullptr)
        return;
    if (fOwner->CountCharts() >= kMaxCharts) {
        beep();
        return;
    }
    fOwner->AddChartView(new ChartView());
    fOwner->Rerender();
}

void ChartView::Delete()
{
    if (fOwner == nullptr)
        return;
    fOwner->RemoveChartView(this);
    // This is one of its own messages, and a menu or an alert may be open.
    kits::RunAtOutermostLoop([this] { delete this; });
}
