// SPDX-License-Identifier: MIT
#include "kits/interface/TabView.h"

#include "kits/interface/controls/TabStrip.h"
#include "kits/interface/core/Content.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

/// Assumed height of a strip that cannot be measured, because the tab view was made on another thread.
constexpr float kLikelyHeight = 26;

} // namespace

BTabView::BTabView(BRect frame, const char* name, button_width, uint32 resizingMode, uint32 flags)
    : WidgetView(frame, name, resizingMode, flags)
    , fContainer(new BView(BRect(0, 0, 0, 0), "container", B_FOLLOW_ALL_SIDES, B_WILL_DRAW))
{
    AddChild(fContainer);
    Strip();
    LayOut();
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    fContainer->SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
}

BTabView::~BTabView()
{
    // Otherwise the selected tab's view would be deleted with the container.
    fTabs.clear();
}

void BTabView::AttachedToWindow()
{
    LayOut();
}

void BTabView::MouseDown(BPoint where)
{
    if (fContent == nullptr)
        return;
    const QPoint point(static_cast<int>(where.x), static_cast<int>(where.y));
    Select(Strip()->tabAt(point));
}

void BTabView::AddTab(BView* target, BTab* tab)
{
    if (tab == nullptr)
        tab = new BTab;
    if (tab->fOwner != nullptr)
        return;
    if (target != nullptr)
        tab->SetView(target);
    tab->fOwner = this;
    fTabs.emplace_back(tab);
    WidgetNeedsUpdate();
}

BTab* BTabView::TabAt(int32 index) const
{
    return index < 0 || index >= CountTabs() ? nullptr : fTabs[static_cast<std::size_t>(index)].get();
}

void BTabView::Select(int32 index)
{
    BTab* tab = TabAt(index);
    if (tab == nullptr || index == fSelection)
        return;
    BTab* former = TabAt(fSelection);
    if (former != nullptr)
        former->Deselect();
    fSelection = index;
    WidgetNeedsUpdate();
    tab->Select(this);
}

float BTabView::TabHeight() const
{
    return fContent == nullptr ? kLikelyHeight : static_cast<float>(fContent->As<kits::TabStrip>()->height());
}

void BTabView::GetPreferredSize(float* width, float* height)
{
    float pageWidth = 0;
    float pageHeight = 0;
    for (const auto& tab : fTabs) {
        if (tab->View() == nullptr)
            continue;
        float w = 0;
        float h = 0;
        tab->View()->GetPreferredSize(&w, &h);
        pageWidth = std::max(pageWidth, w);
        pageHeight = std::max(pageHeight, h);
    }
    if (width != nullptr)
        *width = pageWidth;
    if (height != nullptr)
        *height = pageHeight + TabHeight();
}

QWidget* BTabView::MakeWidget()
{
    auto* strip = new kits::TabStrip(this);
    strip->resize(strip->width(), strip->Height());
    QObject::connect(strip, &QTabBar::currentChanged, fContent.get(), [this](int index) { Select(index); });
    return strip;
}

kits::TabStrip* BTabView::Strip()
{
    return static_cast<kits::TabStrip*>(EnsureWidget());
}

void BTabView::PaintLabel()
{
    fContent->As<kits::TabStrip>()->PaintLabel();
}

void BTabView::WidgetCreated(QWidget* widget)
{
    Strip()->PutInto(widget);
}

void BTabView::UpdateWidget()
{
    auto* strip = fContent->As<kits::TabStrip>();
    const QSignalBlocker silent(strip);
    strip->Update();
}

void BTabView::LayOut()
{
    const BRect bounds = Bounds();
    fContainer->MoveTo(0, TabHeight());
    fContainer->ResizeTo(bounds.Width(), bounds.Height() - TabHeight());
}
