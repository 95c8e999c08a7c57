// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Looper.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

#include <memory>

class BMessage;
class BView;

namespace kits {
class WindowImpl;
}

/// A window with any look and feel, or a normal one with a title.
enum window_type : int32 { B_UNTYPED_WINDOW = 0, B_TITLED_WINDOW = 1 };

/// The frame that the window manager puts around a window.
enum window_look : int32 {
    B_NO_BORDER_WINDOW_LOOK = 0,
    B_BORDERED_WINDOW_LOOK = 1,
    B_TITLED_WINDOW_LOOK = 2,
    B_DOCUMENT_WINDOW_LOOK = 3,
    /// A border without a title bar, or at least without buttons in it; a dialog's frame if the feel is modal.
    B_MODAL_WINDOW_LOOK = 4,
    B_FLOATING_WINDOW_LOOK = 5
};

/// The relation of a window to the others of its application.
enum window_feel : int32 {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_APP_WINDOW_FEEL = 1, ///< the others take no input while it is open
    B_FLOATING_APP_WINDOW_FEEL = 2,
    /// Belongs to the desktop: below all others, on all workspaces, in no task bar or pager, and never focused. Pixels
    /// where all its views are transparent show the desktop: the desktop itself if there is a compositor, otherwise the
    /// desktop's colour. Only an X server supports all this; elsewhere it is an ordinary window, with a frame.
    B_DESKTOP_WINDOW_FEEL = 3
};

/// Flags of a window.
enum : uint32 {
    B_NOT_MOVABLE = 0x01,
    B_NOT_CLOSABLE = 0x02,
    B_NOT_ZOOMABLE = 0x04,
    B_NOT_MINIMIZABLE = 0x08,
    B_NOT_H_RESIZABLE = 0x10,
    B_NOT_V_RESIZABLE = 0x20,
    B_NOT_RESIZABLE = 0x30,
    B_AVOID_FOCUS = 0x40,
    B_ASYNCHRONOUS_CONTROLS = 0x80 ///< always set here
};

inline constexpr uint32 B_CURRENT_WORKSPACE = 0;
inline constexpr uint32 B_ALL_WORKSPACES = 0xFFFFFFFF;

/// A window: a looper whose messages the main thread handles. Made with `new`, it lives until Quit, which deletes it;
/// it owns its views. It is initially hidden: Show it once.
///
/// **Frames** are those of the content, in logical pixels of the screens' plane, right and bottom included. While the
/// window is maximised, full screen or tiled, Frame, MoveTo and ResizeTo refer to the frame to which it returns, and
/// Bounds to the area that it covers now. A requested size counts at once; until the window manager has confirmed it,
/// its reports do not count as the user's.
///
/// **Threads.** Make and quit it on the main thread; use everything else with the window locked. Another thread may
/// also call everything except the first Show, AddChild and SavePicture.
class BWindow : public BLooper {
public:
    /// @param title  UTF-8; null counts as ""
    BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspaces = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
            uint32 workspaces = B_CURRENT_WORKSPACE);
    /// A window from the output of Archive; missing or invalid fields have their defaults: frame (0, 0)-(100, 100),
    /// titled, normal, no flags. A frame that lies outside all screens is moved onto the main one. Does not rebuild the
    /// children.
    explicit BWindow(BMessage* archive);
    ~BWindow() override;

    /// Adds "class" (this object's class), "_frame", "_title", "_wlook", "_wfeel", "_flags", "_wspace", "_type",
    /// "_zoom" ("maximised", "fullscreen" or absent), the size limits, the pulse rate if it is set and, deep, one
    /// "_views" message per child.
    virtual status_t Archive(BMessage* into, bool deep = true) const;

    // Hooks.

    /// Hook: the user, the window manager or a call has changed the frame; at most once per turn of the event loop.
    virtual void FrameResized(float /*width*/, float /*height*/) {}
    virtual void FrameMoved(BPoint /*origin*/) {}
    virtual void WindowActivated(bool /*active*/) {}
    /// Hook: the user wants to minimise or restore it. Does so.
    virtual void Minimize(bool minimize);
    void DispatchMessage(BMessage* message, BHandler* target) override;

    /// Closes and deletes the window; the caller holds its lock, which is destroyed with it. Inside a menu, an alert or
    /// a drag, that is closed first, and the window is destroyed when the outermost event loop is reached again.
    void Quit() override;

    // Views.

    /// Takes ownership; see BView::AddChild.
    virtual void AddChild(BView* child, BView* before = nullptr);
    virtual bool RemoveChild(BView* child);
    /// For tests, which look at windows through these two.
    BView* ChildAt(int32 index) const;
    int32 CountChildren() const;
    BView* FindView(const char* name) const;
    /// Returns the deepest visible view at a point of the content, or null.
    BView* FindView(BPoint where) const;
    /// The button that Return presses: a control of this window, or null. BButton sets it.
    BView* DefaultButton() const;

    // Showing.

    /// Starts the looper, and shows the window, which is hidden until then.
    virtual void Show();
    bool IsHidden() const;
    /// For tests.
    bool IsMinimized() const;
    /// Brings the window to the front and gives it the focus, as far as the window manager allows.
    void Activate(bool active = true);
    bool IsActive() const;

    BRect Bounds() const;
    BRect Frame() const;
    void MoveTo(BPoint where);
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    /// Held to the size limits. Ignores sizes that are not finite.
    void ResizeTo(float width, float height);
    /// In BRect widths; a minimum above its maximum raises the maximum. The window is resized to the new limits.
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight) const;

    /// B_CURRENT_WORKSPACE moves a window that was shown to the workspace that the user sees, as far as the window
    /// manager allows. For a window that was not shown, and for B_ALL_WORKSPACES, it takes effect when the window is
    /// first shown.
    void SetWorkspaces(uint32 workspaces);

    void SetTitle(const char* title);
    // For tests, which look at windows through these four.

    const char* Title() const;
    window_look Look() const;
    window_feel Feel() const;
    uint32 Flags() const;

    BPoint ConvertToScreen(BPoint point) const;
    BPoint ConvertFromScreen(BPoint point) const;

    /// Microseconds between the Pulse calls of views that want them, at least 20000; 0 for none. Initially 500000.
    void SetPulseRate(bigtime_t rate);

    // Nestable: while updates are disabled, drawing is recorded, and nothing is shown or asked to draw.

    void DisableUpdates();
    void EnableUpdates();

    /// Writes the window's content as a picture at the screen's resolution; the file's suffix selects the format, PNG
    /// if there is none. Works for hidden windows too. B_BAD_VALUE for a null path or unknown suffix, otherwise the
    /// error of the file.
    status_t SavePicture(const char* path);

private:
    friend class kits::WindowImpl;
    std::unique_ptr<kits::WindowImpl> fImpl;
};
