// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"
#include "kits/application/MainThread.h"
#include "kits/interface/Clipboard.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartExport.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"
#include "src/support/ui/SmartWindow.h"

namespace {

ChartView::PreferencesOpener sPreferencesOpener = nullptr;

/// Lets the holder send a command with one field to the other charts.
template <class T> void Distribute(ChartView* chart, uint32 command, const kits::Field<T>& field, const T& value)
{
    if (chart->Owner() == nullptr || chart->Window() == nullptr)
        return;
    BMessage wish(command);
    field.Add(&wish, value);
    BMessage envelope(MSG_DISTRIBUTE);
    kSenderField.Add(&envelope, chart);
    kWishField.Add(&envelope, wish);
    chart->Window()->PostMessage(&envelope, chart->Owner());
}

void AddSibling(ChartViewHolder* holder)
{
    if (holder == nullptr)
        return;
    if (holder->CountCharts() >= kMaxCharts) {
        beep();
        return;
    }
    holder->AddChartView(new ChartView());
    holder->Rerender();
}

void Delete(ChartView* chart)
{
    if (chart->Owner() == nullptr)
        return;
    chart->Owner()->RemoveChartView(chart);
    // This handles one of the chart's own messages, and a menu or an alert may be open.
    kits::RunAtOutermostLoop([chart] { delete chart; });
}

} // namespace

void ChartView::SetPreferencesOpener(PreferencesOpener opener)
{
    sPreferencesOpener = opener;
}

void ChartView::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SYSINFO_SAMPLE:
        ChartConnection::TakeSample(*message,
                                    [this](Sysinfo* sampler, SysinfoNode* newest) { Refresh(sampler, newest); });
        break;
    case MSG_DISTRIBUTE_VALUE_POS:
        Distribute(this, MSG_SET_VALUE_POS, kCoordField, fSettings.value.where);
        break;
    case MSG_DISTRIBUTE_TITLE_POS:
        Distribute(this, MSG_SET_TITLE_POS, kCoordField, fSettings.title.where);
        break;
    case MSG_SYNC_OTHERS:
        beep();
        Distribute(this, MSG_SET_COLUMN, kColumnField, fPicture.Column());
        break;
    case MSG_SET_VALUE_POS:
        TakePlace(*message, fCaptions.Value());
        break;
    case MSG_SET_TITLE_POS:
        TakePlace(*message, fCaptions.Title());
        break;
    case MSG_SET_COLUMN:
        if (float column = 0; kColumnField.Find(*message, &column) && fPicture.MoveColumnTo(column))
            Invalidate();
        break;
    case MSG_CHART_PAUSE:
        Pause(!fPaused);
        break;
    case MSG_RECONNECT:
        Connect(true, true);
        break;
    case MSG_SAVE_PICTURE:
        fSaving.Ask(Tr("Save picture"), Tr("PNG pictures"), FileNameOf(fSettings.titleText, "png"), Window(),
                    [this] { return PictureAsPng(); });
        break;
    case MSG_SAVE_VALUES:
        // The figures at the moment when the user asked for them.
        fSaving.Ask(Tr("Save values"), Tr("Tables of values"), FileNameOf(fSettings.titleText, "csv"), Window(),
                    [table = ValuesAsCsv()] { return table; });
        break;
    case MSG_COPY_SETTINGS:
        kits::CopyFrom(this);
        break;
    case MSG_PASTE:
        if (!kits::PasteOnto(this))
            beep();
        break;
    case MSG_CHART_PREFS:
        if (fPrefsWindow != nullptr)
            fPrefsWindow->Activate();
        else if (sPreferencesOpener != nullptr)
            sPreferencesOpener(this, &fPrefsWindow, &fSettings.prefsWindow);
        else
            beep();
        break;
    case MSG_WINDOW_CLOSED:
        if (kContainerField.Get(*message) == &fPrefsWindow)
            kArchiveField.Find(*message, &fSettings.prefsWindow);
        break;
    case MSG_CHART_ADD:
        AddSibling(fOwner);
        break;
    case MSG_CHART_DELETE:
        Delete(this);
        break;
    case B_ABOUT_REQUESTED:
        if (IsReplicant())
            BMessenger(signature).SendMessage(B_ABOUT_REQUESTED);
        else
            be_app_messenger.SendMessage(message);
        break;
    case MSG_SERVER_GONE:
    case B_SOME_APP_QUIT:
        fConnection.ServerGone(*message);
        break;
    case MSG_SERVER_UNREACHABLE:
        fConnection.TellFailure();
        break;
    default:
        if (!DropReceived(message) && !DesktopMessageReceived(message))
            BView::MessageReceived(message);
    }
}

void ChartView::TakePlace(const BMessage& message, ChartCaption& caption)
{
    BPoint where;
    if (!kCoordField.Find(message, &where))
        return;
    LooperLock lock(this);
    fCaptions.MoveTo(caption, where, Bounds());
    DrawCaption(fCaptions.Value(), true);
    DrawCaption(fCaptions.Title(), true);
}
