// SPDX-License-Identifier: MIT
#include "kits/interface/Box.h"

#include "kits/interface/controls/BoxWidget.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

BBox::BBox(BRect frame, const char* name, uint32 resizingMode, uint32 flags, border_style border)
    : WidgetView(frame, name, resizingMode, flags)
    , fBorder(border)
{
}

void BBox::AttachedToWindow()
{
    if (!fHasColor)
        kits::TakeParentColor(this);
    fHasColor = true;
}

void BBox::SetViewColor(rgb_color color)
{
    fHasColor = true;
    BView::SetViewColor(color);
}

void BBox::SetLabel(const char* label)
{
    fLabel = label == nullptr ? "" : label;
    if (!fLabel.empty())
        SetAccessibleName(fLabel.c_str());
    WidgetNeedsUpdate();
}

void BBox::WidgetCreated(QWidget* widget)
{
    // Over the view's own colour and below its children, which get the mouse and the focus.
    QWidget* const frame = EnsureWidget();
    frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    kits::FollowSize(widget, frame);
    frame->lower();
    frame->show();
}

QWidget* BBox::MakeWidget()
{
    return new kits::BoxWidget;
}

void BBox::UpdateWidget()
{
    fContent->As<kits::BoxWidget>()->Take(fBorder, kits::ToLabel(fLabel.c_str()));
}
