// SPDX-License-Identifier: MIT
#include "kits/interface/Window.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

kits::WindowImpl::Settings SettingsOf(const char* title, window_type type, window_look look, window_feel feel,
                                      uint32 flags, uint32 workspaces)
{
    kits::WindowImpl::Settings settings;
    settings.title = title != nullptr ? title : "";
    settings.type = type;
    settings.look = look;
    settings.feel = feel;
    settings.flags = flags;
    settings.workspaces = workspaces;
    return settings;
}

} // namespace

BWindow::BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspaces)
    : BLooper(title)
    , fImpl(std::make_unique<kits::WindowImpl>(
          this, frame, SettingsOf(title, type, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, flags, workspaces)))
{
}

BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags, uint32 workspaces)
    : BLooper(title)
    , fImpl(std::make_unique<kits::WindowImpl>(this, frame,
                                               SettingsOf(title, B_UNTYPED_WINDOW, look, feel, flags, workspaces)))
{
}

BWindow::~BWindow()
{
    fImpl->DeleteViews();
}

void BWindow::Quit()
{
    // It disappears at once, even if something has to end before it can be destroyed.
    fImpl->fIsHidden = true;
    fImpl->InMain([impl = fImpl.get()] { impl->HideWidget(); });
    BLooper::Quit();
}

void BWindow::DispatchMessage(BMessage* message, BHandler* target)
{
    if (target == this) {
        switch (message->what) {
        case B_WINDOW_RESIZED: {
            const BRect frame = Frame();
            FrameResized(frame.Width(), frame.Height());
            return;
        }
        case B_WINDOW_MOVED:
            FrameMoved(Frame().LeftTop());
            return;
        case B_WINDOW_ACTIVATED: {
            const bool active = fImpl->fActive;
            WindowActivated(active);
            fImpl->ForEachView([active](BView* view) { view->WindowActivated(active); });
            return;
        }
        case B_MINIMIZE: {
            Minimize(kits::kMinimizeField.Get(*message));
            return;
        }
        default:
            break;
        }
    } else if (auto* view = dynamic_cast<BView*>(target); view != nullptr && kits::Pointer::Dispatch(*message, *view)) {
        return;
    }
    BLooper::DispatchMessage(message, target);
}

void BWindow::AddChild(BView* child, BView* before)
{
    if (!kits::ViewImpl::Insert(fImpl->fChildren, child, before))
        return;
    kits::ViewImpl::Of(child).Attach(this);
    fImpl->UpdatePulse();
}

bool BWindow::RemoveChild(BView* child)
{
    return child != nullptr && child->Window() == this && child->Parent() == nullptr && child->RemoveSelf();
}

BView* BWindow::ChildAt(int32 index) const
{
    return index >= 0 && index < CountChildren() ? fImpl->fChildren[static_cast<size_t>(index)].get() : nullptr;
}

int32 BWindow::CountChildren() const
{
    return static_cast<int32>(fImpl->fChildren.size());
}

BView* BWindow::FindView(const char* name) const
{
    for (const std::unique_ptr<BView>& child : fImpl->fChildren)
        if (BView* found = child->FindView(name))
            return found;
    return nullptr;
}

BView* BWindow::FindView(BPoint where) const
{
    return fImpl->ViewAt(where);
}

BView* BWindow::DefaultButton() const
{
    return fImpl->fDefaultButton;
}

void BWindow::Show()
{
    if (!std::exchange(fImpl->fIsHidden, false))
        return;
    Run();
    fImpl->InMain([impl = fImpl.get()] { impl->ShowWidget(); });
}

bool BWindow::IsHidden() const
{
    return fImpl->fIsHidden;
}

void BWindow::Minimize(bool minimize)
{
    if (fImpl->fMinimized == minimize)
        return;
    fImpl->fMinimized = minimize;
    if (fImpl->fIsHidden)
        return;
    fImpl->InMain([impl = fImpl.get()] {
        const Qt::WindowStates state = impl->fPane->windowState();
        impl->fPane->setWindowState(impl->fMinimized ? state | Qt::WindowMinimized : state & ~Qt::WindowMinimized);
        if (!impl->fMinimized)
            impl->QueueViews();
    });
}

bool BWindow::IsMinimized() const
{
    return fImpl->fMinimized;
}

void BWindow::Activate(bool active)
{
    if (!active || fImpl->fIsHidden)
        return;
    if (fImpl->fMinimized)
        Minimize(false);
    fImpl->InMain([impl = fImpl.get()] { impl->fPane->Activate(); });
}

bool BWindow::IsActive() const
{
    return fImpl->fActive;
}

BRect BWindow::Bounds() const
{
    const kits::PixelRect content = fImpl->fTracker.Content();
    return {0, 0, static_cast<float>(content.Width() - 1), static_cast<float>(content.Height() - 1)};
}

BRect BWindow::Frame() const
{
    return kits::FromPixels(fImpl->fTracker.Frame());
}

void BWindow::MoveTo(BPoint where)
{
    if (!std::isfinite(where.x) || !std::isfinite(where.y))
        return;
    BRect frame = Frame();
    frame.OffsetTo(where);
    fImpl->AskFrame(kits::ToPixels(frame));
}

void BWindow::ResizeTo(float width, float height)
{
    if (!std::isfinite(width) || !std::isfinite(height))
        return;
    const BPoint corner = Frame().LeftTop();
    fImpl->AskFrame(kits::ToPixels(fImpl->HeldToLimits({corner.x, corner.y, corner.x + width, corner.y + height})));
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    fImpl->AskLimits(minWidth, maxWidth, minHeight, maxHeight);
}

void BWindow::GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight) const
{
    const kits::WindowImpl::Settings& settings = fImpl->fSettings;
    *minWidth = settings.minWidth;
    *maxWidth = settings.maxWidth;
    *minHeight = settings.minHeight;
    *maxHeight = settings.maxHeight;
}

void BWindow::SetWorkspaces(uint32 workspaces)
{
    fImpl->fSettings.workspaces = workspaces;
    if (workspaces == B_CURRENT_WORKSPACE)
        fImpl->InMain([impl = fImpl.get()] { impl->fPane->MoveToCurrentWorkspace(); });
}

void BWindow::SetTitle(const char* title)
{
    fImpl->fSettings.title = title != nullptr ? title : "";
    SetName(title);
    fImpl->InMain([impl = fImpl.get()] { impl->fPane->setWindowTitle(QString::fromStdString(impl->fSettings.title)); });
}

const char* BWindow::Title() const
{
    return fImpl->fSettings.title.c_str();
}

window_look BWindow::Look() const
{
    return fImpl->fSettings.look;
}

window_feel BWindow::Feel() const
{
    return fImpl->fSettings.feel;
}

uint32 BWindow::Flags() const
{
    return fImpl->fSettings.flags;
}

BPoint BWindow::ConvertToScreen(BPoint point) const
{
    const kits::PixelRect content = fImpl->fTracker.Content();
    return point + BPoint(static_cast<float>(content.left), static_cast<float>(content.top));
}

BPoint BWindow::ConvertFromScreen(BPoint point) const
{
    const kits::PixelRect content = fImpl->fTracker.Content();
    return point - BPoint(static_cast<float>(content.left), static_cast<float>(content.top));
}

void BWindow::SetPulseRate(bigtime_t rate)
{
    constexpr bigtime_t kFastest = 20000;
    fImpl->fSettings.pulseRate = rate <= 0 ? 0 : std::max(rate, kFastest);
    fImpl->UpdatePulse();
}

void BWindow::DisableUpdates()
{
    fImpl->fUpdatesOff++;
}

void BWindow::EnableUpdates()
{
    if (fImpl->fUpdatesOff > 0 && --fImpl->fUpdatesOff == 0)
        fImpl->QueueViews();
}
