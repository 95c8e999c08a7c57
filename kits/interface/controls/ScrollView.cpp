// SPDX-License-Identifier: MIT
#include "kits/interface/ScrollView.h"

#include "kits/interface/core/Content.h"

#include <QAbstractScrollArea>

namespace {

/// The width of a border in most themes. The program gives the view its real size, so nothing depends on it.
constexpr float kBorder = 2;
constexpr float kScrollBar = 14;

BRect FrameAround(const BView* target, bool horizontal, bool vertical, border_style border)
{
    BRect frame = target == nullptr ? BRect(0, 0, 0, 0) : target->Frame();
    if (border != B_NO_BORDER)
        frame.InsetBy(-kBorder, -kBorder);
    if (vertical)
        frame.right += kScrollBar;
    if (horizontal)
        frame.bottom += kScrollBar;
    return frame;
}

} // namespace

void kits::ScrollTarget::SetScrolling(bool horizontal, bool vertical, border_style border)
{
    fHorizontalBar = horizontal;
    fVerticalBar = vertical;
    fBorder = border;
    WidgetNeedsUpdate();
}

void kits::ScrollTarget::UpdateWidget()
{
    auto* widget = fContent->As<QAbstractScrollArea>();
    widget->setVerticalScrollBarPolicy(fVerticalBar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    widget->setHorizontalScrollBarPolicy(fHorizontalBar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    widget->setFrameStyle(fBorder == B_FANCY_BORDER   ? QFrame::StyledPanel | QFrame::Sunken
                          : fBorder == B_PLAIN_BORDER ? QFrame::Box | QFrame::Plain
                                                      : QFrame::NoFrame);
}

BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags, bool horizontal,
                         bool vertical, border_style border)
    : BView(FrameAround(target, horizontal, vertical, border), name, resizingMode, flags)
    , fTarget(target)
    , fBorder(border)
{
    if (target == nullptr)
        return;
    target->MoveTo(0, 0);
    target->ResizeTo(Bounds().Width(), Bounds().Height());
    target->SetResizingMode(B_FOLLOW_ALL_SIDES);
    auto* scrolls = dynamic_cast<kits::ScrollTarget*>(target);
    if (scrolls != nullptr)
        scrolls->SetScrolling(horizontal, vertical, border);
    AddChild(target);
}

void BScrollView::AttachedToWindow()
{
    kits::TakeParentColor(this);
}
