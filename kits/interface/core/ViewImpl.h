// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "kits/interface/drawing/DirtyRects.h"
#include "kits/interface/drawing/Surface.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class BShelf;

namespace kits {

class ViewPane;

/// The internals of a view. Use everything with the interface lock held; for a view in a bitmap, with the bitmap's
/// lock, and for a detached view with none.
class ViewImpl {
public:
    ViewImpl(BView* view, BRect frame, uint32 mode, uint32 flags);
    ~ViewImpl();
    ViewImpl(const ViewImpl&) = delete;
    ViewImpl& operator=(const ViewImpl&) = delete;

    static ViewImpl& Of(const BView* view) { return *view->fImpl; }

    // The tree.

    bool IsAttached() const { return fParent != nullptr || fWindow != nullptr || fBitmap != nullptr; }
    void SetBitmap(BBitmap* bitmap);
    /// Inserts a child into one of the lists of children, a window's or a view's. Returns false if it cannot be
    /// inserted.
    static bool Insert(std::vector<std::unique_ptr<BView>>& children, BView* child, BView* before);
    /// Attaches everything from this view down: makes the widgets, then calls the attach hooks.
    void Attach(BWindow* window);
    /// Calls the detach hooks, then removes the widgets.
    void Detach();
    /// The list that contains this view, of its parent or window, or null.
    std::vector<std::unique_ptr<BView>>* SiblingList() const;
    void ForEach(const std::function<void(ViewImpl&)>& function);

    // Geometry.

    /// Moves and resizes the view and its children, and queues the hooks.
    void SetFrame(const BRect& frame);
    /// The parent's size has changed by this much.
    void FollowParent(float dx, float dy);
    /// The frame in whole pixels, in the parent.
    const PixelRect& PixelFrame() const { return fPixelFrame; }
    /// The place of its corner in the window, or in the bitmap.
    BPoint Origin() const;

    // Drawing.

    /// Draws with the function on the view's canvas, if there is one, and records what has changed.
    template <class Function> void Paint(Function&& function)
    {
        std::optional<Canvas> canvas = BeginPaint();
        if (canvas.has_value()) {
            function(*canvas);
            EndPaint(*canvas);
        }
    }
    void Invalidate(const PixelRect& rect);
    void InvalidateAll();
    /// Adds the view to the update queue if something waits to be drawn or shown.
    void QueuePending();
    /// Fills invalid areas with the view colour and calls Draw for them.
    void DrawInvalid();
    /// Fits the surface to the view; its new parts become invalid.
    bool FitSurface();
    PixelGrid CurrentGrid() const;
    uint32 WordOf(pattern which) const;
    /// Takes the view colour from its source again.
    void RefreshViewColor();
    /// The colours of the theme have changed. For views in windows.
    void ThemeChanged();
    /// The scale of the screen has changed.
    void ScaleChanged();

    // The widget. Main thread, unless stated otherwise.

    /// Makes the widget, if there is none, and those of the views below.
    void MakeWidgets();
    /// Updates the widget to the view's state, at once on the main thread, otherwise in its next turn. Any thread.
    void WidgetChanged();
    void SyncWidget();
    /// Shows what was drawn since the last call.
    void ShowDirty();
    /// Calls FrameMoved and FrameResized if they are due. Returns false if the view was destroyed in them.
    bool CallFrameHooks();

    BView* const fView;
    BView* fParent = nullptr;
    BWindow* fWindow = nullptr;
    BBitmap* fBitmap = nullptr;
    std::vector<std::unique_ptr<BView>> fChildren;
    bool fHooksCalled = false; ///< AttachedToWindow was called, DetachedFromWindow was not

    BRect fFrame;
    PixelRect fPixelFrame; ///< the frame in pixels; never negative
    uint32 fMode;
    uint32 fFlags;
    bool fMovedHook = false;
    bool fResizedHook = false;

    rgb_color fHigh{0, 0, 0, 255};
    rgb_color fLow{255, 255, 255, 255};
    rgb_color fViewColor{255, 255, 255, 255};
    /// The source of the view colour, if it is not the program.
    std::optional<color_which> fUIColor;
    bool fHasParentColor = false;
    drawing_mode fDrawingMode = B_OP_COPY;
    BFont fFont;

    Surface fSurface;
    PixelRect fInvalid;   ///< must be drawn
    DirtyRects fDirty;    ///< drawn and not shown yet
    bool fInDraw = false; ///< fDrawClip is valid
    PixelRect fDrawClip;
    bool fQueued = false;      ///< see UpdateQueue
    bool fWidgetDirty = false; ///< SyncWidget is due
    bool fKeyIgnored = false;  ///< the last key was not used

    ViewPane* fPane = nullptr; ///< its widget; null until the view is first in a window; owned by this
    BShelf* fShelf = nullptr;  ///< takes dragged archives; not owned
    std::string fToolTip;
    std::string fAccessibleName;
    /// Expires when the view is destroyed: for actions that run later on the main thread.
    std::shared_ptr<ViewImpl*> fSelf;

private:
    static PixelRect PixelsOf(const BRect& frame);
    std::optional<Canvas> BeginPaint();
    void EndPaint(const Canvas& canvas);
    void SetWindow(BWindow* window);
    void CallAttachHooks();
    void CallDetachHooks();
    /// Returns the first child whose hooks were called, or were not.
    ViewImpl* ChildWithHooks(bool called) const;
    void SyncOpaque();
};

} // namespace kits
