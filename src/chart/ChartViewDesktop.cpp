// SPDX-License-Identifier: MIT
#include "kits/interface/Dragger.h"
#include "kits/interface/Fields.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartView.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"
#include "src/support/ui/MenuTargets.h"
#include "src/support/ui/ShowAlert.h"

// Copies a chart to the desktop, and carries out the commands of its handle there.

namespace {

constexpr const char* kWindowTip = TrLater("Drag this onto the desktop to keep the chart there");
constexpr const char* kNoStart = TrLater("The chart could not be put on the desktop: qel-desktop does not start.");
constexpr const char* kNoAnswer =
    TrLater("The chart could not be put on the desktop: qel-desktop does not answer, and many charts wait for it.");
constexpr const char* kTooMany = TrLater("The chart could not be put on the desktop: there are too many charts there.");
constexpr const char* kDesktopTip = TrLater("Drag this to move the chart, or back into the window");

// The chart gets a window of its own there; without a place, the host finds a free one.
void ShowOnDesktop(ChartView* chart, DesktopSender& sender, const BPoint* leftTop)
{
    BMessage request(MSG_SHOW_ON_DESKTOP);
    BMessage archive;
    status_t status = chart->Archive(&archive, false);
    if (status == B_OK)
        status = kArchiveField.Add(&request, archive);
    if (status == B_OK && leftTop != nullptr)
        status = kPlaceField.Add(&request, *leftTop);
    if (status == B_OK)
        status = sender.Send(request, BMessenger(chart));
    if (status != B_OK)
        ShowAlert(Tr(status == B_WOULD_BLOCK ? kNoAnswer : kNoStart), B_WARNING_ALERT);
}

} // namespace

void ChartView::MakeDraggerMenu()
{
    auto menu = std::make_unique<BPopUpMenu>(Tr("Handle"), false, false);
    if (IsReplicant()) {
        menu->AddItem(new BMenuItem(Tr("About Qel..."), new BMessage(B_ABOUT_REQUESTED)));
        menu->AddSeparatorItem();
        menu->AddItem(new BMenuItem(Tr("Remove"), new BMessage(MSG_REMOVE_REPLICANT)));
    } else {
        menu->AddItem(new BMenuItem(Tr("Copy to desktop"), new BMessage(MSG_COPY_TO_DESKTOP)));
    }
    SetTargetForItemsRecursive(menu.get(), this);
    fDragger->SetPopUp(std::move(menu));
    fDragger->SetToolTip(Tr(IsReplicant() ? kDesktopTip : kWindowTip));
    fDragger->SetAccessibleName(Tr("Handle"));
}

bool ChartView::DesktopMessageReceived(BMessage* message)
{
    BPoint where;
    BPoint offset;
    switch (message->what) {
    case B_DROPPED_ON_DESKTOP:
    case B_REPLICANT_TAKEN:
    case MSG_REMOVE_REPLICANT:
        // On the desktop a chart has a window of its own; everything below concerns that window.
        if (IsReplicant() && Window() != nullptr)
            Window()->PostMessage(message);
        else if (message->what == B_DROPPED_ON_DESKTOP && kits::kWhereField.Find(*message, &where) &&
                 kits::kOffsetField.Find(*message, &offset)) {
            where = where - offset;
            ShowOnDesktop(this, fDesktopSender, &where);
        }
        return true;
    case MSG_COPY_TO_DESKTOP:
        if (!IsReplicant())
            ShowOnDesktop(this, fDesktopSender, nullptr);
        return true;
    case MSG_GO_TO_DESKTOP: {
        const BMessenger host(kDesktopSignature);
        if ((!host.IsValid() || host.SendMessage(MSG_ACTIVATE_REPLICANTS) != B_OK) &&
            fDesktopSender.Send(BMessage(MSG_ACTIVATE_REPLICANTS), BMessenger(this)) != B_OK)
            beep();
        return true;
    }
    case MSG_NOTHING_ON_DESKTOP:
        beep();
        return true;
    case MSG_NOT_ON_DESKTOP:
        if (!IsReplicant())
            ShowAlert(Tr(kRefusedField.Get(*message) ? kTooMany : kNoStart), B_WARNING_ALERT);
        return true;
    default:
        return false;
    }
}
