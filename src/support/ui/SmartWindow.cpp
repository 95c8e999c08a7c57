// SPDX-License-Identifier: MIT
#include "src/support/ui/SmartWindow.h"

#include "kits/application/Application.h"
#include "kits/application/Archivable.h"
#include "kits/interface/Fields.h"
#include "src/support/Changes.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"

namespace {

const kits::Field<int32> kFlagsField("sw:flags", -kits::kMostNumber - 1.0, kits::kMostNumber);

} // namespace

SmartWindow::SmartWindow(BRect frame, const char* title, BHandler* target, SmartWindow** ownerSlot, uint32 flags)
    : BWindow(frame, title, B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS)
    , fTarget(target)
    , fOwnerSlot(ownerSlot)
    , fFlags(flags)
{
}

SmartWindow::SmartWindow(BMessage* archive, const char* title, BHandler* target, SmartWindow** ownerSlot)
    : BWindow(archive)
    , fTarget(target)
    , fOwnerSlot(ownerSlot)
    , fFlags(static_cast<uint32>(kFlagsField.Get(*archive)))
{
    SetTitle(title);
}

SmartWindow::~SmartWindow()
{
    ForgetOwner();
}

void SmartWindow::Quit()
{
    // The owner may go before a window that has to wait for a menu to close.
    ForgetOwner();
    BWindow::Quit();
}

void SmartWindow::ForgetOwner()
{
    if (fOwnerSlot != nullptr)
        *fOwnerSlot = nullptr;
    fOwnerSlot = nullptr;
}

status_t SmartWindow::Archive(BMessage* into, bool deep) const
{
    status_t status = BWindow::Archive(into, deep);
    if (status == B_OK)
        status = kits::kClassField.Add(into, "SmartWindow");
    if (status == B_OK) {
        status = kFlagsField.Add(into, static_cast<int32>(fFlags));
        kits::kWorkspacesField.Remove(into);
    }
    return status;
}

void SmartWindow::FrameMoved(BPoint)
{
    Changes::Note();
}

void SmartWindow::FrameResized(float, float)
{
    Changes::Note();
}

bool SmartWindow::QuitRequested()
{
    BMessage message(MSG_WINDOW_CLOSED);
    kWindowField.Add(&message, this);
    kWindowNameField.Add(&message, Name());
    kContainerField.Add(&message, fOwnerSlot);
    BMessage archive;
    Archive(&archive, (fFlags & ~uint32{1}) != 0);
    kArchiveField.Add(&message, archive);

    if (fTarget == nullptr) {
        if (be_app != nullptr)
            be_app->PostMessage(&message);
    } else if (BLooper* looper = fTarget->Looper()) {
        looper->PostMessage(&message, fTarget);
    }
    return true;
}
