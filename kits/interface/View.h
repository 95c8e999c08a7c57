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

/// A rectangle of a window, or of a bitmap, that draws and takes the user's input. Views stand in a tree; a view's
/// frame is in its parent's coordinates, its own start at (0, 0). A rectangle's right and bottom pixel belong to it: a
/// view of width 100 shows 101 columns.
///
/// **Ownership.** A view owns its children and deletes them with itself; a window or bitmap owns the views added to it.
/// RemoveChild and RemoveSelf give a view back to the caller.
///
/// **Threads.** A view of a window is used with its looper locked (LockLooper; the main thread holds that lock whenever
/// it runs kit code). A view of a bitmap is drawn into with the bitmap locked. A view that is attached to nothing
/// belongs to the thread that made it. Another thread than the main one may draw, invalidate, move, resize and ask; it
/// doesn't attach to windows. Hooks are called in the main thread.
///
/// **Drawing** is allowed at any time, inside and outside Draw. A window's view keeps what was drawn (its picture), and
/// shows the changed rectangles together, once per turn of the event loop. Coordinates name pixels; fractions go to the
/// nearest one, halves to the right and downwards. Colours are shown opaque whatever their alpha, but for
/// B_TRANSPARENT_COLOR, which shows what lies below: the parent. Drawing while attached to nothing does nothing. Before
/// a view is shown or uncovered its view colour fills what Draw is then asked to paint, unless that is
/// B_TRANSPARENT_COLOR.
class BView : public BHandler {
public:
    /// @param name  null counts as ""
    /// @param resizingMode  B_FOLLOW_* rules
    /// @param flags  B_WILL_DRAW and so on
    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    /// From what Archive wrote. Fields that are missing or not sane keep their default: frame (0, 0)-(0, 0), no name,
    /// mode and flags 0, white view colour. A null archive counts as an empty one.
    explicit BView(BMessage* archive);
    /// Removes itself from its parent, window or bitmap first, without detach hooks of its own class.
    ~BView() override;
    BView(const BView&) = delete;
    BView& operator=(const BView&) = delete;

    /// Adds "class" (this object's class), "_name", "_frame", "_resize_mode", "_flags", "_color" (high, low and view
    /// colour) and, deep, one "_views" message per child.
    virtual status_t Archive(BMessage* into, bool deep = true) const;

    // Hooks.

    /// Before the children's.
    virtual void AttachedToWindow() {}
    /// After all children are attached.
    virtual void AllAttached() {}
    /// Before the children's; the view still has its window.
    virtual void DetachedFromWindow() {}
    /// After all children's; the view still has its window.
    virtual void AllDetached() {}
    /// Paints what the rectangle holds; drawing is clipped to it. Only with B_WILL_DRAW.
    virtual void Draw(BRect update);
    /// The window's current message has "where" (point), "buttons", "clicks", "modifiers" (int32 each) and "when"
    /// (int64).
    virtual void MouseDown(BPoint where);
    /// @param transit      B_ENTERED_VIEW, B_INSIDE_VIEW or B_EXITED_VIEW, from the pointer's place and the bounds
    /// @param dragMessage  what is being dragged over the view, else null. Not owned
    virtual void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage);
    /// Goes to the view that got the MouseDown, wherever the pointer is.
    virtual void MouseUp(BPoint where);
    /// @param bytes  one UTF-8 character, or one of the B_* keys; not NUL-terminated
    virtual void KeyDown(const char* bytes, int32 count);
    /// The key or the combination that opens the menu at the keyboard focus. The plain view does nothing.
    /// @param where  the middle of the view
    virtual void ContextMenuRequested(BPoint where);
    /// Ctrl+C, pressed here or in a view below that does not use it: writes what a drag of this view carries. The plain
    /// view has nothing.
    /// @return false, and nothing is copied, if there is nothing
    virtual bool CopyRequested(BMessage* message);
    /// Ctrl+V likewise: says where in this view the message from the clipboard is dropped then. The plain view takes
    /// nothing.
    /// @return false if nothing is taken
    virtual bool PasteRequested(BPoint* where);
    /// With B_FRAME_EVENTS, after the frame changed, however it did; at most once per turn of the event loop.
    virtual void FrameMoved(BPoint parentPoint);
    virtual void FrameResized(float width, float height);
    /// With B_PULSE_NEEDED, at the window's pulse rate.
    virtual void Pulse() {}
    virtual void WindowActivated(bool active);
    virtual void GetPreferredSize(float* width, float* height);
    virtual void ResizeToPreferred();
    /// Takes or gives up the keyboard focus. The plain view invalidates itself so that Draw can show IsFocus().
    virtual void MakeFocus(bool focus = true);
    /// Has the Tab key visit this view right before another child of its parent; else it visits children in the order
    /// in which they were attached. Where the two overlap, the other one is in front. Main thread, once both are
    /// attached; nothing happens otherwise.
    void PrecedeInTabOrder(BView* next);
    void MessageReceived(BMessage* message) override;

    // The tree.

    /// Appends the child, or puts it before another one. Nothing happens when the child has a parent already, is null,
    /// or is this view or one that holds it. Takes ownership.
    virtual void AddChild(BView* child, BView* before = nullptr);
    /// Gives the child back. False when it is not one of this view's.
    virtual bool RemoveChild(BView* child);
    /// False when the view is attached to nothing.
    bool RemoveSelf();
    BView* ChildAt(int32 index) const;
    int32 CountChildren() const;
    BView* NextSibling() const;
    /// Null for a view that a window or bitmap holds directly.
    BView* Parent() const;
    /// Null when it is not in a window.
    BWindow* Window() const;
    /// The view of that name: this one or the first below it in depth-first order, else null.
    BView* FindView(const char* name) const;

    // Geometry.

    BRect Bounds() const;
    BRect Frame() const;
    void MoveTo(BPoint where);
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    /// Children follow by their modes at once, the hooks later. Sizes that are not finite are ignored, others held to
    /// -1 (nothing to see) to 32766.
    virtual void ResizeTo(float width, float height);
    void SetResizingMode(uint32 mode);
    uint32 ResizingMode() const;
    virtual void SetFlags(uint32 flags);
    uint32 Flags() const;

    /// To the window's content and to and from the screen's coordinates. Outside a window the screen's are the
    /// outermost view's.
    BPoint ConvertToWindow(BPoint point) const;
    BPoint ConvertToScreen(BPoint point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    BRect ConvertToScreen(BRect rect) const;

    // Drawing state.

    virtual void SetViewColor(rgb_color color);
    void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    rgb_color ViewColor() const;
    /// A colour of the theme, which the view follows when the user changes that. Main thread, or with the lock held.
    void SetViewUIColor(color_which which);
    virtual void SetHighColor(rgb_color color);
    void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    virtual void SetLowColor(rgb_color color);
    void SetDrawingMode(drawing_mode mode);
    /// Takes the properties over that the mask selects. Null is ignored.
    virtual void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
    void GetFontHeight(font_height* height) const;
    float StringWidth(const char* text) const;

    // Drawing.

    /// One pixel wide, both ends included; the same pixels in both directions.
    void StrokeLine(BPoint from, BPoint to, pattern which = B_SOLID_HIGH);
    void StrokeRect(BRect rect, pattern which = B_SOLID_HIGH);
    void FillRect(BRect rect, pattern which = B_SOLID_HIGH);
    /// The text's base line starts at the point. In B_OP_COPY each pixel of the glyphs gets the colour between low and
    /// high colour by the glyph's coverage; pixels without coverage stay. An unrotated text stays inside of (x, y -
    /// ascent)-(x + StringWidth, y + descent), so who restores that rectangle erases it.
    void DrawString(const char* text, BPoint where);
    void DrawString(const char* text, int32 length, BPoint where);
    /// The source pixels stretched over the target rectangle, without smoothing. The caller holds the bitmap's lock.
    void DrawBitmap(const BBitmap* bitmap, BRect source, BRect target);
    /// Drawing is in the picture when a call returns: both return at once.
    void Sync() const {}
    void Flush() const {}
    /// What the view and its children show, at the screen's resolution, as the bytes of a PNG file. Main thread.
    /// B_NO_INIT outside a window, B_NO_MEMORY without room for it.
    status_t GetPicture(std::string* png) const;
    /// Asks for a Draw of everything at the end of this turn of the event loop.
    void Invalidate();

    // Input.

    /// The pointer in this view's coordinates and the buttons that are down, as the main thread last heard. Any thread
    /// with the looper locked; the message queue is never consulted.
    void GetMouse(BPoint* where, uint32* buttons, bool checkMessageQueue = true) const;
    bool IsFocus() const;
    /// Starts a drag of a copy of the message when the event loop is reached, if a button is still down then; returns
    /// at once. The rectangle, in this view, shows as an outline.
    /// @param replyTo  gets replies and the message back that was not understood; null for this view
    void DragMessage(BMessage* message, BRect rect, BHandler* replyTo = nullptr);
    /// The picture shows instead, with the pointer at `offset` in it. Takes the bitmap.
    void DragMessage(BMessage* message, BBitmap* bitmap, BPoint offset, BHandler* replyTo = nullptr);
    /// Text that shows when the pointer rests; null or "" for none. A text that starts with "<qt>" is markup: a small
    /// part of HTML, with <br>, <b>, <table> and <span style="...">; any other is shown as it is.
    void SetToolTip(const char* text);
    const char* ToolTip() const;
    /// How assistive technology calls the view; the view's name while there is none.
    void SetAccessibleName(const char* name);
    /// What it shows, in words, for assistive technology. Asked for when somebody wants to know; main thread. The plain
    /// view tells its parts, one after the other.
    virtual std::string AccessibleValue() const;
    /// What it shows that has a name and a value of its own; the plain view has none.
    virtual std::vector<AccessiblePart> AccessibleParts() const;

protected:
    /// For the kit's own controls. The view's widget was made (once in its life, in the main thread, before the first
    /// AttachedToWindow). See kits/interface/core/ViewPrivate.h.
    virtual void WidgetCreated(QWidget* widget);
    /// For the kit's own controls: the view colour changed, or the view was attached.
    virtual void ViewColorChanged() {}

private:
    friend class kits::ViewImpl;
    std::unique_ptr<kits::ViewImpl> fImpl;
};
