// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/FrameTracker.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QScreen;
class QWindow;

namespace kits {

class WindowPane;

/// How a window is shown beside its frame.
enum class Zoom { kNone, kMaximized, kFullScreen };

/// The internals of a window. With the interface lock held; on the main thread for everything that touches the widget.
class WindowImpl {
public:
    struct Settings {
        std::string title;
        window_type type = B_UNTYPED_WINDOW;
        window_look look = B_TITLED_WINDOW_LOOK;
        window_feel feel = B_NORMAL_WINDOW_FEEL;
        uint32 flags = 0;
        uint32 workspaces = B_CURRENT_WORKSPACE;
        Zoom zoom = Zoom::kNone;
        float minWidth = 0;
        float maxWidth = 32766;
        float minHeight = 0;
        float maxHeight = 32766;
        bigtime_t pulseRate = 500000;
    };

    WindowImpl(BWindow* window, const BRect& frame, Settings settings);
    ~WindowImpl();
    WindowImpl(const WindowImpl&) = delete;
    WindowImpl& operator=(const WindowImpl&) = delete;

    static WindowImpl& Of(const BWindow* window) { return *window->fImpl; }
    /// All windows of the process, in the order of their creation.
    static const std::vector<WindowImpl*>& All();

    /// Removes and deletes all views, with their hooks.
    void DeleteViews();
    /// A view, with those below it, is about to leave.
    void ViewLeaves(BView* view);
    void ForEachView(const std::function<void(BView*)>& function) const;
    BView* ViewAt(BPoint where) const;

    /// Screen pixels per logical pixel.
    double Scale() const { return fScale; }
    /// Whether drawing would be visible: shown, mapped, not minimised, and updates enabled.
    bool CanShow() const;
    /// Queues what was drawn while nothing could be shown.
    void QueueViews();

    /// Runs the function on the main thread, at once or in its next turn; not if the window is gone by then.
    void InMain(std::function<void()> function);
    void AskFrame(const PixelRect& frame);
    void AskLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    BRect HeldToLimits(BRect frame) const;
    void ApplyLimits();
    void ShowWidget();
    void HideWidget();
    void UpdatePulse();

    // Reports of the widget.

    void SizeReported(int32 width, int32 height);
    void PlaceReported(int32 left, int32 top);
    /// Another window manager has taken over the window, whose content was here before. Asks for this place if the new
    /// one reports another within a moment.
    void PutBack(int32 left, int32 top);
    void StateReported(bool minimized, Zoom zoom);
    void ExposeReported();
    void ActivationReported(bool active);
    /// Call it when the window's scale may have changed: redraws and shows everything again, at the same logical size
    /// and place.
    void CheckScale();
    /// Call it when the screens may have room elsewhere: a window that a change of scale has moved returns.
    void CheckPlace();

    BWindow* const fWindow;
    Settings fSettings;
    FrameTracker fTracker;
    std::vector<std::unique_ptr<BView>> fChildren;
    WindowPane* fPane; ///< owned by this
    bool fIsHidden = true;
    int32 fUpdatesOff = 0;
    bool fMinimized = false;
    bool fActive = false;
    bool fExposed = false;
    BView* fDefaultButton = nullptr;
    std::function<void()> fPressDefault;

private:
    void LayOut();
    void StartGrace();
    void ResizeWidget();
    void PostFrameMessage(uint32 what);
    void PutInReach();
    void Arrive();
    void PaintRescaled();
    void CheckPutBack();

    /// The place that PutBack received.
    struct Before {
        int32 left;
        int32 top;
        bigtime_t since; ///< when
        int tries;       ///< requests left: a window manager may refuse the place
    };
    std::optional<Before> fBefore;
    double fScale = 1;
    const QScreen* fScreen = nullptr; ///< the screen with this scale; only compared, never dereferenced
    int32 fLaidOutWidth;
    int32 fLaidOutHeight;
    Timer fGrace;
    Timer fArrival;       ///< checks, after the window has come to a screen of another scale, whether it stays there
    bool fRests = false;  ///< it has not been moved since the last check
    float fHeldWidth = 0; ///< the size that it covers meanwhile, in screen pixels
    float fHeldHeight = 0;
    Timer fPulse;
    /// Expires when the window is destroyed.
    std::shared_ptr<WindowImpl*> fSelf;
};

} // namespace kits
