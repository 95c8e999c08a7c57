// SPDX-License-Identifier: MIT
#include "kits/interface/core/UpdateQueue.h"

#include "kits/application/EventLoop.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/interface/core/ScreenPath.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"

#include <algorithm>
#include <vector>

namespace kits::UpdateQueue {

namespace {

/// The waiting views. Hooks add views and, when they delete views, remove them, even while the queue is being emptied.
std::vector<ViewImpl*> sWaiting;

ViewImpl* TakeFirst()
{
    ViewImpl* view = sWaiting.front();
    sWaiting.erase(sWaiting.begin());
    view->fQueued = false;
    return view;
}

/// Returns false if the view is gone.
bool Prepare(ViewImpl& view)
{
    if (view.fWidgetDirty)
        view.SyncWidget();
    if (!view.fMovedHook && !view.fResizedHook)
        return true;
    const DispatchScope scope;
    return view.CallFrameHooks();
}

bool CanDraw(const ViewImpl& view)
{
    return view.fWindow != nullptr && WindowImpl::Of(view.fWindow).CanShow();
}

/// Returns false if the view is gone.
bool Draw(ViewImpl& view)
{
    if (view.fInvalid.IsEmpty())
        return true;
    const DispatchScope scope;
    const std::weak_ptr<ViewImpl*> self = view.fSelf;
    view.DrawInvalid();
    return !self.expired();
}

} // namespace

void Add(ViewImpl& view)
{
    if (view.fQueued)
        return;
    view.fQueued = true;
    sWaiting.push_back(&view);
    if (!IsMainThread())
        EventLoop::Wake();
}

void Remove(ViewImpl& view)
{
    if (!view.fQueued)
        return;
    view.fQueued = false;
    std::erase(sWaiting, &view);
}

void Flush()
{
    if (sWaiting.empty())
        return;
    // First all views take their places, then the visible ones are drawn: a layout hook moves views that wait as well.
    std::vector<std::weak_ptr<ViewImpl*>> placed;
    // Stops at some point if a hook keeps resizing its view.
    for (size_t budget = 1000 + 8 * sWaiting.size(); budget > 0 && !sWaiting.empty(); budget--) {
        ViewImpl* const view = TakeFirst();
        if (Prepare(*view))
            placed.push_back(view->fSelf);
    }
    for (const std::weak_ptr<ViewImpl*>& waiting : placed) {
        // Holding the token itself over Draw would make a view that Draw deletes look alive.
        ViewImpl* const view = waiting.expired() ? nullptr : *waiting.lock();
        if (view != nullptr && CanDraw(*view) && Draw(*view))
            view->ShowDirty();
    }
    if (ScreenPath* const path = ScreenPath::Current(); path != nullptr)
        path->End();
    // What Draw itself queued was shown with it, or comes in the next turn.
    std::erase_if(sWaiting, [](ViewImpl* view) {
        view->fQueued = !view->fInvalid.IsEmpty() || !view->fDirty.IsEmpty() || view->fWidgetDirty ||
                        view->fMovedHook || view->fResizedHook;
        return !view->fQueued;
    });
}

void FlushIfIdle()
{
    if (IsOutermost())
        Flush();
}

void DrawWindow(WindowImpl& window)
{
    window.ForEachView([](BView* view) {
        ViewImpl& impl = ViewImpl::Of(view);
        if (Prepare(impl))
            Draw(impl);
    });
}

} // namespace kits::UpdateQueue
