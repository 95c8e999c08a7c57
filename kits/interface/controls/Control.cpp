// SPDX-License-Identifier: MIT
#include "kits/interface/Control.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/Content.h"
#include "kits/kernel/Clock.h"

#include <QWidget>

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode,
                   uint32 flags)
    : WidgetView(frame, name, resizingMode, flags)
    , BInvoker(message, static_cast<const BHandler*>(nullptr))
    , fLabel(label == nullptr ? "" : label)
{
    SetAccessibleName(fLabel.c_str());
}

void BControl::AttachedToWindow()
{
    kits::TakeParentColor(this);
    if (BInvoker::Messenger() == BMessenger())
        SetTarget(Window());
}

void BControl::SetLabel(const char* label)
{
    fLabel = label == nullptr ? "" : label;
    SetAccessibleName(fLabel.c_str());
    WidgetNeedsUpdate();
}

void BControl::SetValue(int32 value)
{
    if (value == fValue)
        return;
    fValue = value;
    WidgetNeedsUpdate();
}

void BControl::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    WidgetNeedsUpdate();
}

status_t BControl::Invoke(BMessage* message)
{
    const BMessage* what = message != nullptr ? message : Message();
    if (what == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*what);
    kits::kWhenField.Add(&copy, system_time());
    kits::kSourceField.Add(&copy, this);
    return BInvoker::Invoke(&copy);
}

void BControl::GetPreferredSize(float* width, float* height)
{
    QWidget* widget = EnsureWidget();
    if (widget == nullptr) {
        BView::GetPreferredSize(width, height);
        return;
    }
    kits::GetSizeHint(widget, width, height);
}

void BControl::GrowToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    const BRect bounds = Bounds();
    ResizeTo(std::max(bounds.Width(), width), std::max(bounds.Height(), height));
}

void BControl::TakePreferredHeight()
{
    float height = 0;
    GetPreferredSize(nullptr, &height);
    ResizeTo(Bounds().Width(), height);
}

void BControl::UpdateWidget()
{
    QWidget* widget = fContent->As<>();
    widget->setEnabled(fEnabled);
    // A control without a label keeps the name that it was given.
    if (!fLabel.empty() || *Name() != '\0')
        widget->setAccessibleName(kits::ToText(fLabel.empty() ? Name() : Label()));
}
