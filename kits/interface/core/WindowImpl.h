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

/// What a window is made of. With the interface lock held; what touches the widget, in the main thread.
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
    /// All windows of the process, in the order of their making.
    static const std::vector<WindowImpl*>& All();

    /// Removes and deletes all views, with their hooks.
    void DeleteViews();
    /// A view, and those below, is about to leave.
    void ViewLeaves(BView* view);
    void ForEachView(const std::function<void(BView*)>& function) const;
    BView* ViewAt(BPoint where) const;

    /// Screen pixels per logical pixel.
    double Scale() const { return fScale; }
    /// Whether what is drawn can be seen: shown, mapped, and not minimised or with its updates off.
    bool CanShow() const;
    /// Queues what was drawn while nothing could be shown.
    void QueueViews();

    /// Runs the function in the main thread, at once or in its next turn; not when the window is gone by then.
    void InMain(std::function<void()> function);
    void AskFrame(const PixelRect& frame);
    void AskLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    BRect HeldToLimits(BRect frame) const;
    void ApplyLimits();
    void ShowWidget();
    void HideWidget();
    void UpdatePulse();

    // What the widget reports.

    void SizeReported(int32 width, int32 height);
    void PlaceReported(int32 left, int32 top);
    /// Another window manager has taken the window, which had its content here before. Asks for this place if the new
    /// one reports another within a moment.
    void PutBack(int32 left, int32 top);
    void StateReported(bool minimized, Zoom zoom);
    void ExposeReported();
    void ActivationReported(bool active);
    /// To be called when the scale of the window may have become another one: has everything drawn and shown anew, at
    /// the same logical size and place.
    void CheckScale();
    /// To be called when the screens may have room elsewhere: a window that a change of scale has moved goes back.
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
    void Rescale();
    void Arrive();
    void PaintRescaled();
    void CheckPutBack();

    /// The place that PutBack was given.
    struct Before {
        int32 left;
        int32 top;
        bigtime_t since; ///< when
        int tries;       ///< requests left: a window manager may refuse the place
    };
    std::optional<Before> fBefore;
    double fScale = 1;
    const QScreen* fScreen = nullptr; ///< the one that has the scale; never followed
    int32 fLaidOutWidth;
    int32 fLaidOutHeight;
    Timer fGrace;
    Timer fArrival;       ///< looks, from when it came to a screen of another scale, whether it stays there
    bool fRests = false;  ///< it has not been moved since the last look
    float fHeldWidth = 0; ///< what it covers meanwhile, in screen pixels
    float fHeldHeight = 0;
    Timer fPulse;
    /// Expires when the window goes.
    std::shared_ptr<WindowImpl*> fSelf;
};

} // namespace kits
