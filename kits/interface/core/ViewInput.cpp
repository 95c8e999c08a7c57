// SPDX-License-Identifier: MIT
#include "kits/application/MainThread.h"
#include "kits/interface/Bitmap.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"

void BView::GetMouse(BPoint* where, uint32* buttons, bool) const
{
    if (where != nullptr)
        *where = ConvertFromScreen(kits::Pointer::Where());
    if (buttons != nullptr)
        *buttons = kits::Pointer::Buttons();
}

bool BView::IsFocus() const
{
    return fImpl->fPane != nullptr && fImpl->fWindow != nullptr && fImpl->fPane->hasFocus();
}

void BView::MakeFocus(bool focus)
{
    if (fImpl->fPane == nullptr || fImpl->fWindow == nullptr || !kits::IsMainThread())
        return;
    if (focus)
        fImpl->fPane->setFocus(Qt::OtherFocusReason);
    else
        fImpl->fPane->clearFocus();
}

void BView::PrecedeInTabOrder(BView* next)
{
    if (!kits::IsMainThread() || fImpl->fPane == nullptr || next->fImpl->fPane == nullptr || next->Parent() != Parent())
        return;
    // Windows visit the children of widgets in stacking order.
    fImpl->fPane->stackUnder(next->fImpl->fPane);
}

void BView::DragMessage(BMessage* message, BRect rect, BHandler* replyTo)
{
    if (message != nullptr)
        kits::Drag::Queue(*this, *message, rect, nullptr, BPoint(), replyTo);
}

void BView::DragMessage(BMessage* message, BBitmap* bitmap, BPoint offset, BHandler* replyTo)
{
    std::unique_ptr<BBitmap> owned(bitmap);
    if (message != nullptr)
        kits::Drag::Queue(*this, *message, BRect(), std::move(owned), offset, replyTo);
}

void BView::SetToolTip(const char* text)
{
    fImpl->fToolTip = text != nullptr ? text : "";
    fImpl->WidgetChanged();
}

const char* BView::ToolTip() const
{
    return fImpl->fToolTip.c_str();
}

void BView::SetAccessibleName(const char* name)
{
    fImpl->fAccessibleName = name != nullptr ? name : "";
    fImpl->WidgetChanged();
}
