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

/// What a view is made of. Everything with the interface lock held, but for a view that is in a bitmap (its lock) or in
/// nothing.
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
    /// Puts a child into one of the lists of children, window's or view's. False when it can't be.
    static bool Insert(std::vector<std::unique_ptr<BView>>& children, BView* child, BView* before);
    /// Everything below the window, from this view down: widgets, then the attach hooks.
    void Attach(BWindow* window);
    /// The detach hooks, then the widgets are taken out.
    void Detach();
    /// The list that it stands in, of its parent, window or nothing (null).
    std::vector<std::unique_ptr<BView>>* SiblingList() const;
    void ForEach(const std::function<void(ViewImpl&)>& function);

    // Geometry.

    /// Moves and resizes, children with it, and has the hooks called later.
    void SetFrame(const BRect& frame);
    /// The parent grew by this much.
    void FollowParent(float dx, float dy);
    /// In whole pixels, in the parent.
    const PixelRect& PixelFrame() const { return fPixelFrame; }
    /// Its corner in the window, or in the bitmap.
    BPoint Origin() const;

    // Drawing.

    /// Has the function draw on the view's canvas, if there is one, and notes what changed.
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
    /// Adds it to the update queue if something waits to be drawn or shown.
    void QueuePending();
    /// Fills what is invalid with the view colour and calls Draw for it.
    void DrawInvalid();
    /// Makes the surface fit the view; what is new in it becomes invalid.
    bool FitSurface();
    PixelGrid CurrentGrid() const;
    uint32 ViewColorWord() const;
    uint32 WordOf(pattern which) const;
    /// Takes the view colour anew from where it comes from.
    void RefreshViewColor();
    /// The colours of the theme changed. Of views in windows.
    void ThemeChanged();
    /// The scale of the screen changed.
    void ScaleChanged();

    // The widget. Main thread, unless a line says more.

    /// Makes it, if there is none, and those of the views below.
    void MakeWidgets();
    /// Brings the widget to the view's state, in the main thread at once, else in its next turn. Any thread.
    void WidgetChanged();
    void SyncWidget();
    /// Shows what was drawn since.
    void ShowDirty();
    /// Calls FrameMoved and FrameResized if they are due. False when the view went away in them.
    bool CallFrameHooks();

    BView* const fView;
    BView* fParent = nullptr;
    BWindow* fWindow = nullptr;
    BBitmap* fBitmap = nullptr;
    std::vector<std::unique_ptr<BView>> fChildren;
    bool fHooksCalled = false; ///< AttachedToWindow was called, DetachedFromWindow was not

    BRect fFrame;
    PixelRect fPixelFrame; ///< the same; never negative
    uint32 fMode;
    uint32 fFlags;
    bool fMovedHook = false;
    bool fResizedHook = false;

    rgb_color fHigh{0, 0, 0, 255};
    rgb_color fLow{255, 255, 255, 255};
    rgb_color fViewColor{255, 255, 255, 255};
    /// Where the view colour comes from, if not from the program.
    std::optional<color_which> fUIColor;
    bool fHasParentColor = false;
    drawing_mode fDrawingMode = B_OP_COPY;
    BFont fFont;

    Surface fSurface;
    PixelRect fInvalid;   ///< to be drawn
    DirtyRects fDirty;    ///< drawn and not yet shown
    bool fInDraw = false; ///< fDrawClip holds
    PixelRect fDrawClip;
    bool fQueued = false;      ///< see UpdateQueue
    bool fWidgetDirty = false; ///< SyncWidget is due
    bool fKeyIgnored = false;  ///< the last key was not used

    ViewPane* fPane = nullptr; ///< its widget, null until it first comes into a window; owned by this
    BShelf* fShelf = nullptr;  ///< takes dragged archives; not owned
    std::string fToolTip;
    std::string fAccessibleName;
    /// Expires when the view goes: for what runs later in the main thread.
    std::shared_ptr<ViewImpl*> fSelf;

private:
    static PixelRect PixelsOf(const BRect& frame);
    std::optional<Canvas> BeginPaint();
    void EndPaint(const Canvas& canvas);
    void SetWindow(BWindow* window);
    void CallAttachHooks();
    void CallDetachHooks();
    /// The first child whose hooks were called, or were not.
    ViewImpl* ChildWithHooks(bool called) const;
    void SyncOpaque();
    void DropWidget();
};

} // namespace kits
