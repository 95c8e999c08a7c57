// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/WindowImpl.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

BRect Sane(const BRect& frame)
{
    if (!std::isfinite(frame.left) || !std::isfinite(frame.top) || !std::isfinite(frame.right) ||
        !std::isfinite(frame.bottom))
        return {0, 0, 0, 0};
    return frame;
}

} // namespace

ViewImpl::ViewImpl(BView* view, BRect frame, uint32 mode, uint32 flags)
    : fView(view)
    , fFrame(Sane(frame))
    , fPixelFrame(PixelsOf(fFrame))
    , fMode(mode)
    , fFlags(flags)
    , fSelf(std::make_shared<ViewImpl*>(this))
{
}

ViewImpl::~ViewImpl()
{
    UpdateQueue::Remove(*this);
    if (fPane != nullptr)
        fPane->Release();
}

void ViewImpl::ForEach(const std::function<void(ViewImpl&)>& function)
{
    function(*this);
    for (size_t i = 0; i < fChildren.size(); i++)
        Of(fChildren[i].get()).ForEach(function);
}

bool ViewImpl::Insert(std::vector<std::unique_ptr<BView>>& children, BView* child, BView* before)
{
    if (child == nullptr || Of(child).IsAttached())
        return false;
    const auto place = std::find_if(children.begin(), children.end(),
                                    [before](const std::unique_ptr<BView>& other) { return other.get() == before; });
    children.emplace(place, child);
    return true;
}

std::vector<std::unique_ptr<BView>>* ViewImpl::SiblingList() const
{
    if (fParent != nullptr)
        return &Of(fParent).fChildren;
    return fWindow != nullptr ? &WindowImpl::Of(fWindow).fChildren : nullptr;
}

void ViewImpl::SetBitmap(BBitmap* bitmap)
{
    ForEach([bitmap](ViewImpl& impl) { impl.fBitmap = bitmap; });
}

void ViewImpl::SetWindow(BWindow* window)
{
    fWindow = window;
    window->AddHandler(fView);
    for (const std::unique_ptr<BView>& child : fChildren)
        Of(child.get()).SetWindow(window);
}

void ViewImpl::Attach(BWindow* window)
{
    SetWindow(window);
    MakeWidgets();
    ForEach([](ViewImpl& impl) { impl.InvalidateAll(); });
    CallAttachHooks();
}

void ViewImpl::CallAttachHooks()
{
    if (fHooksCalled || fWindow == nullptr)
        return;
    fHooksCalled = true;
    const std::weak_ptr<ViewImpl*> self = fSelf;
    RefreshViewColor();
    fView->ViewColorChanged();
    fView->AttachedToWindow();
    // Hooks add, remove and delete views, including this one, so the search restarts after each.
    while (!self.expired() && fHooksCalled) {
        ViewImpl* child = ChildWithHooks(false);
        if (child == nullptr) {
            fView->AllAttached();
            return;
        }
        child->CallAttachHooks();
    }
}

void ViewImpl::CallDetachHooks()
{
    if (!fHooksCalled)
        return;
    fHooksCalled = false;
    const std::weak_ptr<ViewImpl*> self = fSelf;
    fView->DetachedFromWindow();
    while (!self.expired()) {
        ViewImpl* child = ChildWithHooks(true);
        if (child == nullptr) {
            fView->AllDetached();
            return;
        }
        child->CallDetachHooks();
    }
}

ViewImpl* ViewImpl::ChildWithHooks(bool called) const
{
    for (const std::unique_ptr<BView>& child : fChildren)
        if (Of(child.get()).fHooksCalled == called)
            return &Of(child.get());
    return nullptr;
}

void ViewImpl::Detach()
{
    if (fWindow == nullptr)
        return;
    CallDetachHooks();
    WindowImpl::Of(fWindow).ViewLeaves(fView);
    if (fPane != nullptr)
        fPane->LeaveWindow();
    ForEach([](ViewImpl& impl) {
        UpdateQueue::Remove(impl);
        if (impl.fWindow != nullptr)
            impl.fWindow->RemoveHandler(impl.fView);
        impl.fWindow = nullptr;
        impl.fMovedHook = false;
        impl.fResizedHook = false;
    });
}

} // namespace kits
