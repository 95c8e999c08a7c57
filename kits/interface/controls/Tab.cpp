// SPDX-License-Identifier: MIT
#include "kits/interface/TabView.h"
#include "kits/interface/controls/TabStrip.h"

BTab::BTab(BView* view)
    : fView(view)
{
}

BTab::~BTab()
{
    if (fView != nullptr)
        fView->RemoveSelf();
    delete fView;
}

void BTab::SetView(BView* view)
{
    if (view == fView)
        return;
    if (fView != nullptr)
        fView->RemoveSelf();
    delete fView;
    fView = view;
    if (fOwner == nullptr)
        return;
    if (fSelected && view != nullptr)
        fOwner->ContainerView()->AddChild(view);
    fOwner->WidgetNeedsUpdate();
}

const char* BTab::Label() const
{
    if (fHasLabel)
        return fLabel.c_str();
    return fView == nullptr ? "" : fView->Name();
}

void BTab::SetLabel(const char* label)
{
    fHasLabel = label != nullptr;
    fLabel = label == nullptr ? "" : label;
    if (fOwner != nullptr)
        fOwner->WidgetNeedsUpdate();
}

void BTab::Select(BView* owner)
{
    if (fView != nullptr && !fSelected) {
        auto* tabView = dynamic_cast<BTabView*>(owner);
        (tabView != nullptr ? tabView->ContainerView() : owner)->AddChild(fView);
    }
    fSelected = true;
}

void BTab::Deselect()
{
    fSelected = false;
    if (fView != nullptr)
        fView->RemoveSelf();
}

void BTab::DrawLabel(BView*, BRect)
{
    if (fOwner != nullptr)
        fOwner->PaintLabel();
}
