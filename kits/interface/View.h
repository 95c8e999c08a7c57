// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Handler.h"
#include "kits/interface/Font.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

#include <memory>
#include <string>
#include <vector>

class BBitmap;
struct AccessiblePart;
class BMessage;
class BWindow;
class QWidget;

namespace kits {
class ViewImpl;
}

/// A rectangle of a window, or of a bitmap, that draws and receives the user's input. Views form a tree; a view's frame
/// is in its parent's coordinates, and its own coordinates start at (0, 0). A rectangle's right and bottom pixels are
/// part of it: a view of width 100 shows 101 columns.
///
/// **Ownership.** A view owns its children and deletes them with itself; a window or bitmap owns the views added to it.
/// RemoveChild and RemoveSelf give a view back to the caller.
///
/// **Threads.** Use a view of a window with its looper locked (LockLooper; the main thread holds that lock whenever it
/// runs kit code). Draw into a view of a bitmap with the bitmap locked. A view that is attached to nothing belongs to
/// the thread that made it. Threads other than the main one may draw into a view, invalidate, move, resize and query
/// it, but must not attach it to a window. Hooks are called in the main thread.
///
/// **Drawing** is allowed at any time, inside and outside Draw. A window's view keeps its drawing (its picture), and
/// shows the changed rectangles together, once per turn of the event loop. Coordinates name pixels; fractions go to the
/// nearest one, halves to the right and downwards. Colours are shown opaque whatever their alpha, except
/// B_TRANSPARENT_COLOR, which shows the parent below. Drawing has no effect while the view is attached to nothing. When
/// a view is shown or uncovered, its view colour first fills the area that Draw is then asked to paint, unless that
/// colour is B_TRANSPARENT_COLOR.
class BView : public BHandler {
public:
    /// @param name          null counts as ""
    /// @param resizingMode  B_FOLLOW_* rules
    /// @param flags         B_WILL_DRAW and so on
    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    /// A view from the output of Archive. Missing or invalid fields have their defaults: frame (0, 0)-(0, 0), no name,
    /// mode and flags 0, white view colour. A null archive counts as an empty one.
    explicit BView(BMessage* archive);
    /// Removes the view from its parent, window or bitmap first, without detach hooks of its own class.
    ~BView() override;
    BView(const BView&) = delete;
    BView& operator=(const BView&) = delete;

    /// Adds "class" (this object's class), "_name", "_frame", "_resize_mode", "_flags", "_color" (high, low and view
    /// colour) and, deep, one "_views" message per child.
    virtual status_t Archive(BMessage* into, bool deep = true) const;

    // Hooks.

    /// Before those of the children.
    virtual void AttachedToWindow() {}
    /// After all children are attached.
    virtual void AllAttached() {}
    /// Before those of the children; the view still has its window.
    virtual void DetachedFromWindow() {}
    /// After those of all children; the view still has its window.
    virtual void AllDetached() {}
    /// Paints the content of the rectangle; drawing is clipped to it. Only with B_WILL_DRAW.
    virtual void Draw(BRect /*update*/) {}
    /// The window's current message has "where" (point), "buttons", "clicks", "modifiers" (int32 each) and "when"
    /// (int64).
    virtual void MouseDown(BPoint /*where*/) {}
    /// @param transit      B_ENTERED_VIEW, B_INSIDE_VIEW or B_EXITED_VIEW, from the pointer's place and the bounds
    /// @param dragMessage  the message that is dragged over the view, or null. Not owned
    virtual void MouseMoved(BPoint /*where*/, uint32 /*transit*/, const BMessage* /*dragMessage*/) {}
    /// Goes to the view that got the MouseDown, wherever the pointer is.
    virtual void MouseUp(BPoint /*where*/) {}
    /// @param bytes  one UTF-8 character, or one of the B_* keys; not NUL-terminated
    virtual void KeyDown(const char* bytes, int32 count);
    /// The user has pressed the key or the combination that opens the menu at the keyboard focus. The plain view does
    /// nothing.
    /// @param where  the middle of the view
    virtual void ContextMenuRequested(BPoint /*where*/) {}
    /// Ctrl+C was pressed here, or in a view below that does not use it: writes the message that a drag of this view
    /// carries. The plain view has none.
    /// @return false, and nothing is copied, if there is none
    virtual bool CopyRequested(BMessage* /*message*/) { return false; }
    /// Ctrl+V likewise: says where in this view the message from the clipboard is dropped. The plain view accepts none.
    /// @return false if the view accepts nothing
    virtual bool PasteRequested(BPoint* /*where*/) { return false; }
    /// With B_FRAME_EVENTS: called after any change of the frame, at most once per turn of the event loop.
    virtual void FrameMoved(BPoint /*parentPoint*/) {}
    virtual void FrameResized(float /*width*/, float /*height*/) {}
    /// With B_PULSE_NEEDED, at the window's pulse rate.
    virtual void Pulse() {}
    virtual void WindowActivated(bool /*active*/) {}
    virtual void GetPreferredSize(float* width, float* height);
    virtual void ResizeToPreferred();
    /// Takes or gives up the keyboard focus. The plain view invalidates itself so that Draw can show IsFocus().
    virtual void MakeFocus(bool focus = true);
    /// Makes the Tab key visit this view right before another child of its parent; otherwise it visits children in the
    /// order in which they were attached. Where the two overlap, the other one is in front. Main thread, once both are
    /// attached; otherwise it does nothing.
    void PrecedeInTabOrder(BView* next);
    void MessageReceived(BMessage* message) override;

    // The tree.

    /// Appends the child, or inserts it before another one. Does nothing if the child has a parent already, is null, or
    /// is this view or one that contains it. Takes ownership.
    virtual void AddChild(BView* child, BView* before = nullptr);
    /// Gives ownership of the child to the caller. Returns false if it is not one of this view's.
    virtual bool RemoveChild(BView* child);
    /// Returns false if the view is detached.
    bool RemoveSelf();
    /// For tests, which look at windows through these two.
    BView* ChildAt(int32 index) const;
    int32 CountChildren() const;
    BView* NextSibling() const;
    /// Null for a view that a window or bitmap contains directly.
    BView* Parent() const;
    /// Null if it is not in a window.
    BWindow* Window() const;
    /// Returns the view with that name: this one or the first below it in depth-first order, or null.
    BView* FindView(const char* name) const;

    // Geometry.

    BRect Bounds() const;
    BRect Frame() const;
    void MoveTo(BPoint where);
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    /// Children follow by their modes at once, the hooks are called later. Ignores sizes that are not finite; holds
    /// others to -1 (invisible) to 32766.
    virtual void ResizeTo(float width, float height);
    void SetResizingMode(uint32 mode);
    /// For tests.
    uint32 ResizingMode() const;
    virtual void SetFlags(uint32 flags);
    uint32 Flags() const;

    /// Converts to the window's content, and to and from the screen's coordinates. Outside a window, the outermost
    /// view's coordinates serve as the screen's.
    BPoint ConvertToWindow(BPoint point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;

    // Drawing state.

    virtual void SetViewColor(rgb_color color);
    void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    rgb_color ViewColor() const;
    /// Takes a colour of the theme, and follows it when the user changes it. Main thread, or with the lock held.
    void SetViewUIColor(color_which which);
    virtual void SetHighColor(rgb_color color);
    void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    virtual void SetLowColor(rgb_color color);
    void SetDrawingMode(drawing_mode mode);
    /// Null is ignored.
    virtual void SetFont(const BFont* font);
    void GetFontHeight(font_height* height) const;
    float StringWidth(const char* text) const;

    // Drawing.

    /// One pixel wide, both ends included; the same pixels in both directions.
    void StrokeLine(BPoint from, BPoint to, pattern which = B_SOLID_HIGH);
    void StrokeRect(BRect rect, pattern which = B_SOLID_HIGH);
    void FillRect(BRect rect, pattern which = B_SOLID_HIGH);
    /// The text's base line starts at the point. In B_OP_COPY each pixel of the glyphs gets a colour between low and
    /// high colour by the glyph's coverage; pixels without coverage stay. An unrotated text stays inside of (x, y -
    /// ascent)-(x + StringWidth, y + descent), so restoring that rectangle erases it.
    void DrawString(const char* text, BPoint where);
    void DrawString(const char* text, int32 length, BPoint where);
    /// Stretches the source pixels over the target rectangle, without smoothing. The caller holds the bitmap's lock.
    void DrawBitmap(const BBitmap* bitmap, BRect source, BRect target);
    /// Returns what the view and its children show, at the screen's resolution, as the bytes of a PNG file. Main
    /// thread. B_NO_INIT outside a window, B_NO_MEMORY without enough memory.
    status_t GetPicture(std::string* png) const;
    /// Requests a Draw of the whole view at the end of this turn of the event loop.
    void Invalidate();

    // Input.

    /// Returns the pointer in this view's coordinates and the pressed buttons, according to the main thread's last
    /// event. Any thread with the looper locked; never consults the message queue.
    void GetMouse(BPoint* where, uint32* buttons, bool checkMessageQueue = true) const;
    bool IsFocus() const;
    /// Starts a drag of a copy of the message when the event loop is reached, if a button is still down then; returns
    /// at once. The rectangle, in this view, is shown as an outline.
    /// @param replyTo  gets replies, and the message itself if nobody understood it; null for this view
    void DragMessage(BMessage* message, BRect rect, BHandler* replyTo = nullptr);
    /// Shows the picture instead, with the pointer at `offset` in it. Takes ownership of the bitmap.
    void DragMessage(BMessage* message, BBitmap* bitmap, BPoint offset, BHandler* replyTo = nullptr);
    /// Sets the text that is shown when the pointer rests; null or "" for none. A text that starts with "<qt>" is
    /// markup: a small part of HTML, with <br>, <b>, <table> and <span style="...">; any other is shown literally.
    void SetToolTip(const char* text);
    /// For tests.
    const char* ToolTip() const;
    /// Sets the name of the view for assistive technology; without one it uses the view's name.
    void SetAccessibleName(const char* name);
    /// Returns the view's value in words for assistive technology. Called only on request; main thread. The plain view
    /// lists its parts.
    virtual std::string AccessibleValue() const;
    /// Returns the parts that have names and values of their own; the plain view has none.
    virtual std::vector<AccessiblePart> AccessibleParts() const;

protected:
    /// For the kit's own controls. Called after the view's widget was made (once in its life, on the main thread,
    /// before the first AttachedToWindow). See kits/interface/core/ViewPrivate.h.
    virtual void WidgetCreated(QWidget* /*widget*/) {}
    /// For the kit's own controls: the view colour changed, or the view was attached.
    virtual void ViewColorChanged() {}

private:
    friend class kits::ViewImpl;
    std::unique_ptr<kits::ViewImpl> fImpl;
};
