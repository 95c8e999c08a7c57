// SPDX-License-Identifier: MIT
#include "kits/application/FieldRanges.h"
#include "kits/interface/Alert.h"
#include "kits/interface/Dragger.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartView.h"
#include "src/chart/DesktopSender.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"
#include "src/support/ui/MenuTargets.h"

// How a chart comes onto the desktop, and what its handle does.

namespace {

constexpr const char* kWindowTip = TrLater("Drag this onto the desktop to keep the chart there");
constexpr const char* kNoStart = TrLater("The chart could not be put on the desktop: qel-desktop does not start.");
constexpr const char* kNoAnswer =
    TrLater("The chart could not be put on the desktop: qel-desktop does not answer, and many charts wait for it.");
constexpr const char* kTooMany = TrLater("The chart could not be put on the desktop: there are too many charts there.");
constexpr const char* kDesktopTip = TrLater("Drag this to move the chart, or back into the window");

} // namespace

void ChartView::MakeDraggerMenu()
{
    auto menu = std::make_unique<BPopUpMenu>(Tr("Handle"), false, false);
    if (fReplicant) {
        menu->AddItem(new BMenuItem(Tr("About Qel..."), new BMessage(B_ABOUT_REQUESTED)));
        menu->AddSeparatorItem();
        menu->AddItem(new BMenuItem(Tr("Remove"), new BMessage(MSG_REMOVE_REPLICANT)));
    } else {
        menu->AddItem(new BMenuItem(Tr("Copy to desktop"), new BMessage(MSG_COPY_TO_DESKTOP)));
    }
    SetTargetForItemsRecursive(menu.get(), this);
    fDragger->SetPopUp(std::move(menu));
    fDragger->SetToolTip(Tr(fReplicant ? kDesktopTip : kWindowTip));
    fDragger->SetAccessibleName(Tr("Handle"));
}

DesktopSender& ChartView::Sender()
{
    if (fDesktopSender == nullptr)
        fDesktopSender = std::make_unique<DesktopSender>();
    return *fDesktopSender;
}

void ChartView::StartDesktop()
{
    if (Sender().Send(BMessage(MSG_ACTIVATE_REPLICANTS), BMessenger(this)) != B_OK)
        beep();
}

void ChartView::ShowOnDesktop(const BPoint* leftTop)
{
    BMessage request(MSG_SHOW_ON_DESKTOP);
    BMessage archive;
    status_t status = Archive(&archive, false);
    if (status == B_OK)
        status = request.AddMessage("Archive", &archive);
    if (status == B_OK && leftTop != nullptr)
        status = request.AddPoint("Where", *leftTop);
    if (status == B_OK)
        status = Sender().Send(request, BMessenger(this));
    if (status != B_OK)
        TellNotOnDesktop(Tr(status == B_WOULD_BLOCK ? kNoAnswer : kNoStart));
}

void ChartView::DroppedOnDesktop(const BMessage& message)
{
    BPoint where;
    BPoint offset;
    if (!kits::kKitFields.Find(message, "where", &where) || !kits::kKitFields.Find(message, "offset", &offset))
        return;
    const BPoint leftTop = where - offset;
    ShowOnDesktop(&leftTop);
}

void ChartView::TellNotOnDesktop(const char* why)
{
    auto* alert = new BAlert(Tr("Qel alert"), why, Tr("OK"), nullptr, nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    alert->Go(nullptr);
}

bool ChartView::DesktopMessageReceived(BMessage* message)
{
    switch (message->what) {
    case B_DROPPED_ON_DESKTOP:
    case B_REPLICANT_TAKEN:
    case MSG_REMOVE_REPLICANT:
        // On the desktop a chart has a window of its own, and all this is about that.
        if (fReplicant && Window() != nullptr)
            Window()->PostMessage(message);
        else if (message->what == B_DROPPED_ON_DESKTOP)
            DroppedOnDesktop(*message);
        return true;
    case MSG_COPY_TO_DESKTOP:
        if (!fReplicant)
            ShowOnDesktop(nullptr);
        return true;
    case MSG_GO_TO_DESKTOP: {
        const BMessenger host(kDesktopSignature);
        if (!host.IsValid() || host.SendMessage(MSG_ACTIVATE_REPLICANTS) != B_OK)
            StartDesktop();
        return true;
    }
    case MSG_NOTHING_ON_DESKTOP:
        beep();
        return true;
    case MSG_NOT_ON_DESKTOP: {
        bool isRefused = false;
        message->FindBool("Refused", &isRefused);
        if (!fReplicant)
            TellNotOnDesktop(Tr(isRefused ? kTooMany : kNoStart));
        return true;
    }
    default:
        return false;
    }
}
