// SPDX-License-Identifier: MIT
#include "kits/interface/core/WindowImpl.h"

#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/ScaleWatch.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/kernel/Clock.h"

#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kits {

namespace {

std::vector<WindowImpl*> sWindows;

/// A window that has not moved for this long, with no button pressed, has arrived.
constexpr bigtime_t kArrival = 150000;

/// The toolkit asks for sizes in whole logical pixels, which at a fractional scale are not whole screen pixels.
int32 SlackAt(double scale)
{
    return scale == std::floor(scale) ? 0 : 1;
}

} // namespace

const std::vector<WindowImpl*>& WindowImpl::All()
{
    return sWindows;
}

WindowImpl::WindowImpl(BWindow* window, const BRect& frame, Settings settings)
    : fWindow(window)
    , fSettings(std::move(settings))
    , fTracker(ToPixels(HeldToLimits(frame)))
    , fPane(new WindowPane(*this))
    , fLaidOutWidth(fTracker.Frame().Width())
    , fLaidOutHeight(fTracker.Frame().Height())
    , fGrace([this] {
        if (fArrival.IsRunning())
            return;
        const PixelRect room = ScreenList::Nearest(fTracker.Frame()).available;
        if (fTracker.GraceOver(room.Width(), room.Height())) {
            LayOut();
            PostFrameMessage(B_WINDOW_RESIZED);
        }
    })
    , fArrival([this] { Arrive(); })
    , fPulse([this] {
        ForEachView([](BView* view) {
            if (view->Flags() & B_PULSE_NEEDED)
                view->Pulse();
        });
    })
    , fSelf(std::make_shared<WindowImpl*>(this))
{
    fTracker.SetZoomed(fSettings.zoom != Zoom::kNone, system_time());
    fScale = ScaleWatch::ScaleOf(*fPane);
    fScreen = fPane->screen();
    fTracker.SetSlack(SlackAt(fScale));
    ApplyLimits();
    ResizeWidget();
    sWindows.push_back(this);
}

WindowImpl::~WindowImpl()
{
    std::erase(sWindows, this);
    fPane->Release();
}

void WindowImpl::DeleteViews()
{
    while (!fChildren.empty()) {
        BView* const view = fChildren.back().get();
        // A hook of the view may have removed it meanwhile, and then the view belongs to the remover.
        if (view->RemoveSelf())
            delete view;
    }
}

void WindowImpl::ViewLeaves(BView* view)
{
    ViewImpl::Of(view).ForEach([this](ViewImpl& impl) {
        Pointer::Forget(impl.fView);
        if (fDefaultButton == impl.fView) {
            fDefaultButton = nullptr;
            fPressDefault = nullptr;
        }
    });
}

void WindowImpl::ForEachView(const std::function<void(BView*)>& function) const
{
    // Tokens of the current views, because the function may add, remove and delete views.
    std::vector<std::weak_ptr<ViewImpl*>> views;
    for (const std::unique_ptr<BView>& child : fChildren)
        ViewImpl::Of(child.get()).ForEach([&](ViewImpl& impl) { views.push_back(impl.fSelf); });
    for (const std::weak_ptr<ViewImpl*>& view : views) {
        // Holding the token over the call would make a view that is deleted meanwhile look alive.
        ViewImpl* const impl = view.expired() ? nullptr : *view.lock();
        if (impl != nullptr)
            function(impl->fView);
    }
}

BView* WindowImpl::ViewAt(BPoint where) const
{
    const std::vector<std::unique_ptr<BView>>* children = &fChildren;
    BView* found = nullptr;
    for (bool deeper = true; deeper;) {
        deeper = false;
        for (auto it = children->rbegin(); it != children->rend() && !deeper; ++it) {
            ViewImpl& impl = ViewImpl::Of(it->get());
            const PixelRect frame = impl.PixelFrame();
            const bool inside = where.x >= static_cast<float>(frame.left) &&
                                where.x < static_cast<float>(frame.right) && where.y >= static_cast<float>(frame.top) &&
                                where.y < static_cast<float>(frame.bottom);
            if (!inside)
                continue;
            found = it->get();
            where -= BPoint(static_cast<float>(frame.left), static_cast<float>(frame.top));
            children = &impl.fChildren;
            deeper = true;
        }
    }
    return found;
}

bool WindowImpl::CanShow() const
{
    return !fIsHidden && fExposed && !fMinimized && fUpdatesOff == 0;
}

void WindowImpl::QueueViews()
{
    ForEachView([](BView* view) { ViewImpl::Of(view).QueuePending(); });
}

void WindowImpl::InMain(std::function<void()> function)
{
    if (IsMainThread()) {
        function();
        return;
    }
    RunOnMainThread([self = std::weak_ptr<WindowImpl*>(fSelf), run = std::move(function)] {
        if (!self.expired())
            run();
    });
}

BRect WindowImpl::HeldToLimits(BRect frame) const
{
    const float width = std::clamp(frame.Width(), fSettings.minWidth, std::min(fSettings.maxWidth, 32766.0F));
    const float height = std::clamp(frame.Height(), fSettings.minHeight, std::min(fSettings.maxHeight, 32766.0F));
    return {frame.left, frame.top, frame.left + width, frame.top + height};
}

void WindowImpl::AskFrame(const PixelRect& frame)
{
    const PixelRect before = fTracker.Frame();
    if (frame == before && !fTracker.IsZoomed())
        return;
    const bool isShown = !fIsHidden;
    const bool now = fTracker.Ask(frame, system_time());
    if (now && !isShown) {
        fTracker.ReportSize(frame.Width(), frame.Height(), system_time());
        fTracker.ReportPlace(frame.left, frame.top, system_time());
    }
    if (now) {
        LayOut();
        InMain([this] { ResizeWidget(); });
        if (fTracker.IsPending())
            StartGrace();
    }
    if (frame.Width() != before.Width() || frame.Height() != before.Height())
        PostFrameMessage(B_WINDOW_RESIZED);
    if (frame.left != before.left || frame.top != before.top)
        PostFrameMessage(B_WINDOW_MOVED);
}

void WindowImpl::AskLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    const auto sane = [](float value, float ifNot) { return std::isfinite(value) ? std::max(value, 0.0F) : ifNot; };
    fSettings.minWidth = sane(minWidth, 0);
    fSettings.maxWidth = std::max(sane(maxWidth, 32766), fSettings.minWidth);
    fSettings.minHeight = sane(minHeight, 0);
    fSettings.maxHeight = std::max(sane(maxHeight, 32766), fSettings.minHeight);
    InMain([this] { ApplyLimits(); });
    AskFrame(ToPixels(HeldToLimits(FromPixels(fTracker.Frame()))));
}

void WindowImpl::ApplyLimits()
{
    const auto pixels = [](float extent) { return static_cast<int>(std::min(extent, QWIDGETSIZE_MAX - 1.0F)) + 1; };
    QSize least(pixels(fSettings.minWidth), pixels(fSettings.minHeight));
    QSize most(pixels(fSettings.maxWidth), pixels(fSettings.maxHeight));
    const PixelRect frame = fTracker.Frame();
    if (fSettings.flags & B_NOT_H_RESIZABLE) {
        least.setWidth(frame.Width());
        most.setWidth(frame.Width());
    }
    if (fSettings.flags & B_NOT_V_RESIZABLE) {
        least.setHeight(frame.Height());
        most.setHeight(frame.Height());
    }
    // In an order in which the minimum never exceeds the maximum.
    fPane->setMinimumSize(0, 0);
    fPane->setMaximumSize(most);
    fPane->setMinimumSize(least);
}

void WindowImpl::ResizeWidget()
{
    const PixelRect frame = fTracker.Wanted();
    if (fSettings.flags & B_NOT_RESIZABLE)
        ApplyLimits();
    fPane->setGeometry(frame.left, frame.top, frame.Width(), frame.Height());
}

void WindowImpl::StartGrace()
{
    fGrace.Start(FrameTracker::kGrace, false);
}

void WindowImpl::ShowWidget()
{
    if (fIsHidden)
        return;
    CheckScale();
    fTracker.Show();
    StartGrace();
    // Draws its content before it is mapped.
    UpdateQueue::DrawWindow(*this);
    fPane->WatchWindow();
    if (fMinimized)
        fPane->showMinimized();
    else if (fSettings.zoom == Zoom::kMaximized)
        fPane->showMaximized();
    else if (fSettings.zoom == Zoom::kFullScreen)
        fPane->showFullScreen();
    else
        fPane->show();
    UpdatePulse();
}

void WindowImpl::HideWidget()
{
    fPane->hide();
    fGrace.Stop();
    fArrival.Stop();
    UpdatePulse();
}

void WindowImpl::UpdatePulse()
{
    bool wanted = false;
    if (fSettings.pulseRate > 0 && !fIsHidden)
        ForEachView([&wanted](BView* view) { wanted = wanted || (view->Flags() & B_PULSE_NEEDED) != 0; });
    if (!wanted)
        fPulse.Stop();
    else if (!fPulse.IsRunning() || fPulse.Interval() != fSettings.pulseRate)
        fPulse.Start(fSettings.pulseRate);
}

void WindowImpl::LayOut()
{
    const PixelRect content = fTracker.Content();
    const auto dx = static_cast<float>(content.Width() - fLaidOutWidth);
    const auto dy = static_cast<float>(content.Height() - fLaidOutHeight);
    fLaidOutWidth = content.Width();
    fLaidOutHeight = content.Height();
    if (dx == 0 && dy == 0)
        return;
    for (const std::unique_ptr<BView>& child : fChildren)
        ViewImpl::Of(child.get()).FollowParent(dx, dy);
}

void WindowImpl::PostFrameMessage(uint32 what)
{
    BMessage message(what);
    message.SetNewestWins(true);
    fWindow->PostMessage(&message);
}

void WindowImpl::SizeReported(int32 width, int32 height)
{
    const auto differs = [this](int32 extent, float held) {
        return std::abs(static_cast<float>(extent * fScale) - held) > 2 * static_cast<float>(fScale);
    };
    // If the user resizes it across the screens, it gets the size that the user gives it.
    if (fArrival.IsRunning() && (differs(width, fHeldWidth) || differs(height, fHeldHeight))) {
        fArrival.Stop();
        fTracker.Release();
    }
    if (!fTracker.ReportSize(width, height, system_time()))
        return;
    LayOut();
    PostFrameMessage(B_WINDOW_RESIZED);
    // The system is about to paint, so everything that follows the new size is drawn first.
    UpdateQueue::FlushIfIdle();
}

void WindowImpl::PlaceReported(int32 left, int32 top)
{
    fRests = false;
    if (fTracker.ReportPlace(left, top, system_time()))
        PostFrameMessage(B_WINDOW_MOVED);
    // The widget does not know its new place yet, and would ignore a request for the old one.
    if (fBefore) {
        const auto check = [pane = fPane] {
            if (pane->Impl() != nullptr)
                pane->Impl()->CheckPutBack();
        };
        QMetaObject::invokeMethod(fPane, check, Qt::QueuedConnection);
    }
}

void WindowImpl::PutBack(int32 left, int32 top)
{
    fBefore = {left, top, system_time(), 2};
    CheckPutBack();
}

void WindowImpl::CheckPutBack()
{
    if (!fBefore || fTracker.IsZoomed() || fIsHidden)
        return;
    if (fBefore->tries == 0 || system_time() - fBefore->since > FrameTracker::kScaleGrace) {
        fBefore.reset();
        return;
    }
    const PixelRect content = fTracker.Content();
    const int32 left = fBefore->left;
    const int32 top = fBefore->top;
    if (content.left == left && content.top == top)
        return;
    fBefore->tries--;
    if (fTracker.IsElsewhere()) {
        fTracker.Rescale(left, top, system_time());
        fGrace.Start(FrameTracker::kScaleGrace, false);
        ResizeWidget();
        return;
    }
    const PixelRect frame = fTracker.Frame();
    AskFrame({left, top, left + frame.Width(), top + frame.Height()});
}

void WindowImpl::StateReported(bool minimized, Zoom zoom)
{
    fMinimized = minimized;
    // A minimised window keeps its state for the time when it is restored.
    if (!minimized) {
        fSettings.zoom = zoom;
        if (fTracker.SetZoomed(zoom != Zoom::kNone, system_time())) {
            if (fTracker.IsElsewhere())
                PutInReach();
            ResizeWidget();
            StartGrace();
        }
        LayOut();
        PostFrameMessage(B_WINDOW_RESIZED);
        QueueViews();
    }
}

void WindowImpl::ExposeReported()
{
    const bool exposed = fPane->IsExposed();
    if (exposed == fExposed)
        return;
    fExposed = exposed;
    if (exposed) {
        QueueViews();
        UpdateQueue::FlushIfIdle();
    }
}

void WindowImpl::ActivationReported(bool active)
{
    if (active == fActive)
        return;
    fActive = active;
    BMessage message(B_WINDOW_ACTIVATED);
    kActiveField.Add(&message, active);
    fWindow->PostMessage(&message);
}

void WindowImpl::CheckScale()
{
    const double scale = ScaleWatch::ScaleOf(*fPane);
    const bool isSameScreen = fScreen == fPane->screen();
    fScreen = fPane->screen();
    if (scale == fScale)
        return;
    const double before = std::exchange(fScale, scale);
    fTracker.SetSlack(SlackAt(scale));
    ForEachView([](BView* view) { ViewImpl::Of(view).ScaleChanged(); });
    const QWindow* const window = fPane->windowHandle();
    const bool hasWindow = window != nullptr && window->handle() != nullptr;
    // Where windows know no place, the system scales them.
    if (!hasWindow || fTracker.IsPlaceless())
        return;
    if (isSameScreen) {
        PutInReach();
        PaintRescaled();
        return;
    }
    // On its way to another screen, a window stays as large as it is under the pointer that moves it. Larger or
    // smaller, it might belong to the previous screen again, and so on.
    if (!fArrival.IsRunning()) {
        fHeldWidth = static_cast<float>(fTracker.Content().Width() * before);
        fHeldHeight = static_cast<float>(fTracker.Content().Height() * before);
    }
    fTracker.HoldSize();
    fRests = false;
    fArrival.Start(kArrival);
}

void WindowImpl::Arrive()
{
    if (!std::exchange(fRests, true) || ScaleWatch::IsButtonDown())
        return;
    fArrival.Stop();
    if (fTracker.IsZoomed() || fTracker.HasWantedSize()) {
        fTracker.Show();
        StartGrace();
        return;
    }
    PixelRect place = fTracker.Frame();
    const QWindow* const window = fPane->windowHandle();
    place = ScreenList::PutWithin(place, window != nullptr ? window->frameMargins().top() : 0,
                                  ScaleWatch::ScreenOf(*fPane));
    fTracker.Ask(place, system_time());
    PaintRescaled();
    PostFrameMessage(B_WINDOW_MOVED);
}

void WindowImpl::PutInReach()
{
    const QWindow* const window = fPane->windowHandle();
    const PixelRect place =
        ScreenList::PutInReach(fTracker.Frame(), window != nullptr ? window->frameMargins().top() : 0);
    fTracker.Rescale(place.left, place.top, system_time());
}

void WindowImpl::CheckPlace()
{
    const PixelRect wanted = fTracker.Wanted();
    if (wanted == fTracker.Frame() || fTracker.IsZoomed() || fIsHidden)
        return;
    PutInReach();
    if (fTracker.Wanted() == wanted)
        return;
    fGrace.Start(FrameTracker::kScaleGrace, false);
    ResizeWidget();
}

void WindowImpl::PaintRescaled()
{
    LayOut();
    // Draws its content before it is painted.
    UpdateQueue::DrawWindow(*this);
    ApplyLimits();
    if (fSettings.zoom != Zoom::kNone) {
        ScaleWatch::KeepSystemSize(*fPane);
        return;
    }
    fGrace.Start(FrameTracker::kScaleGrace, false);
    const PixelRect frame = fTracker.Wanted();
    ScaleWatch::SetGeometry(*fPane, QRect(frame.left, frame.top, frame.Width(), frame.Height()));
}

} // namespace kits
