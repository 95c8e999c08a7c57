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

/// The usual pairs of look and feel.
enum window_type : int32 {
    B_UNTYPED_WINDOW = 0,
    B_TITLED_WINDOW = 1,
    B_DOCUMENT_WINDOW = 2,
    B_MODAL_WINDOW = 3,
    B_BORDERED_WINDOW = 4,
    B_FLOATING_WINDOW = 5
};

/// What the window manager puts around a window.
enum window_look : int32 {
    B_NO_BORDER_WINDOW_LOOK = 0,
    B_BORDERED_WINDOW_LOOK = 1,
    B_TITLED_WINDOW_LOOK = 2,
    B_DOCUMENT_WINDOW_LOOK = 3,
    /// A border without a title bar, or at least without buttons in it; that of a dialog where the feel is modal.
    B_MODAL_WINDOW_LOOK = 4,
    B_FLOATING_WINDOW_LOOK = 5
};

/// How a window stands to the others of its application.
enum window_feel : int32 {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_APP_WINDOW_FEEL = 1, ///< the others take no input while it is open
    B_FLOATING_APP_WINDOW_FEEL = 2,
    /// Belongs to the desktop: below all others, on all workspaces, not in task bar or pager, and it never gets the
    /// focus. Pixels where all its views are transparent show the desktop: what is there, where the screen is composed
    /// of all windows' pictures, else the desktop's colour. Only an X server knows all this; elsewhere it is a window
    /// like others, with a frame.
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
    B_ASYNCHRONOUS_CONTROLS = 0x80 ///< always so here
};

inline constexpr uint32 B_CURRENT_WORKSPACE = 0;
inline constexpr uint32 B_ALL_WORKSPACES = 0xFFFFFFFF;

/// A window: a looper whose messages the main thread handles. Made with `new`, it lives until Quit, which deletes it;
/// it owns its views. It is hidden at first: Show it once.
///
/// **Frames** are those of the content, in logical pixels of the screens' plane, right and bottom included. While the
/// window is maximised, full screen or tiled, Frame, MoveTo and ResizeTo speak of the frame that it goes back to, and
/// Bounds of what it covers now. A size asked for counts at once; what the window manager says before it has answered
/// is not taken for the user's doing.
///
/// **Threads.** Made and quit in the main thread; everything else with the window locked. Another thread may also call
/// all but Show for the first time, AddChild and SavePicture.
class BWindow : public BLooper {
public:
    /// @param title  UTF-8; null counts as ""
    BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspaces = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
            uint32 workspaces = B_CURRENT_WORKSPACE);
    /// From what Archive wrote; what is missing or not sane keeps its default: frame (0, 0)-(100, 100), titled, normal,
    /// no flags. A frame that lies outside all screens is moved onto the main one. The children are not rebuilt.
    explicit BWindow(BMessage* archive);
    ~BWindow() override;

    /// Adds "class" (this object's class), "_frame", "_title", "_wlook", "_wfeel", "_flags", "_wspace", "_type",
    /// "_zoom"
    /// ("maximised", "fullscreen" or absent), the size limits, pulse rate when set and, deep, one "_views" message per
    /// child.
    virtual status_t Archive(BMessage* into, bool deep = true) const;

    // Hooks.

    /// The frame was changed by the user, the window manager or a call; at most once per turn of the event loop.
    virtual void FrameResized(float width, float height);
    virtual void FrameMoved(BPoint origin);
    virtual void WindowActivated(bool active);
    /// The user wants it minimised or back. Does so.
    virtual void Minimize(bool minimize);
    /// True lets it close. Also the close button and B_QUIT_REQUESTED come here.
    bool QuitRequested() override;
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* target) override;

    /// Closes and deletes the window; the caller holds its lock, which is gone with it. Inside of a menu, an alert or a
    /// drag that is closed first, and the window goes when the outermost event loop is reached again.
    void Quit() override;

    // Views.

    /// Takes ownership; see BView::AddChild.
    virtual void AddChild(BView* child, BView* before = nullptr);
    virtual bool RemoveChild(BView* child);
    BView* ChildAt(int32 index) const;
    int32 CountChildren() const;
    BView* FindView(const char* name) const;
    /// The deepest shown view at a point of the content, or null.
    BView* FindView(BPoint where) const;
    /// The button that Return presses; a control of this window or null. Set by BButton.
    BView* DefaultButton() const;

    // Showing.

    /// Starts the looper, and shows the window, which is hidden until then.
    virtual void Show();
    bool IsHidden() const;
    bool IsMinimized() const;
    /// Brings it to the front and gives it the focus, as far as the window manager allows.
    void Activate(bool active = true);
    bool IsActive() const;

    BRect Bounds() const;
    BRect Frame() const;
    void MoveTo(BPoint where);
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    /// Held to the size limits. Not finite: ignored.
    void ResizeTo(float width, float height);
    /// In BRect widths; a minimum above its maximum moves the maximum up. The window is resized into the new limits.
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight) const;

    /// B_CURRENT_WORKSPACE moves a window that was shown to the workspace that the user sees, as far as the window
    /// manager allows. For one that was not shown, and for B_ALL_WORKSPACES, it counts when it is shown first.
    void SetWorkspaces(uint32 workspaces);

    void SetTitle(const char* title);
    const char* Title() const;
    window_look Look() const;
    window_feel Feel() const;
    uint32 Flags() const;

    BPoint ConvertToScreen(BPoint point) const;
    BPoint ConvertFromScreen(BPoint point) const;

    /// Microseconds between the Pulse calls of views that want them, at least 20000; 0 for none. 500000 at first.
    void SetPulseRate(bigtime_t rate);

    // Nestable: while off, drawing is recorded and nothing is shown or asked to draw.

    void DisableUpdates();
    void EnableUpdates();

    /// Writes what the window shows, without its frame, as a picture at the screen's resolution; the format by the
    /// file's ending, PNG when there is none. Works for hidden windows too. B_BAD_VALUE for a null path or unknown
    /// ending, else the error of the file.
    status_t SavePicture(const char* path);

private:
    friend class kits::WindowImpl;
    std::unique_ptr<kits::WindowImpl> fImpl;
};
