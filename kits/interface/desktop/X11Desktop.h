#pragma once

#include "kits/interface/desktop/DesktopBackend.h"
#include "kits/interface/desktop/RootPicture.h"

#include <utility>

namespace kits {

/// The root window of the X server at $DISPLAY. Its picture is a pixmap whose number stands in properties of the root
/// window, by a custom that all programs share which set or show it; they are told when it changes. A program that sets
/// a background without that custom leaves the property of the picture before, so the property only counts while the
/// root window shows that picture. A background that nobody names can be put back only if it is one colour.
///
/// To paint, the root window gets a pixmap of ours, which outlives the process. The one before is left alone: it stays
/// alive, and is what the root window has again after Restore. Change frees it, as every program does that sets a
/// background for good.
class X11Desktop : public DesktopBackend {
public:
    /// Null when there is no such server, or it has no true colours.
    static std::unique_ptr<DesktopBackend> Connect();
    /// The workspace that the window manager shows, from 0 on; 0 when it does not tell. Asks the server at $DISPLAY.
    static int32 CurrentWorkspace();
    /// Width and height of all monitors together, in pixels. Asks the server at $DISPLAY; nothing without one.
    static std::optional<std::pair<int, int>> Size();
    explicit X11Desktop(XConnection connection);

    const char* Name() const override { return "x11"; }
    std::optional<rgb_color> Read() override;
    std::optional<BMessage> Keep() override;
    bool Paint(rgb_color color, const BMessage& kept) override;
    bool Restore(const BMessage& kept) override;
    bool Change(rgb_color color, const BMessage* kept) override;
    bool IsPainted() const override;
    /// The root window ends with its server.
    bool OutlivesSession() const override { return false; }
    std::vector<int> Descriptors() const override;
    bool TakeNews() override;
    bool NeedsLooking() const override { return !fIsNamed; }

private:
    struct Atoms {
        xcb_atom_t picture;      ///< the picture's pixmap
        xcb_atom_t owned;        ///< the same, to be freed by who sets another one
        xcb_atom_t otherPicture; ///< what some programs use in place of these
        xcb_atom_t paint;        ///< which pixmap is ours, and what we keep it was painted over
    };
    /// What the property `paint` holds.
    struct PaintMark {
        uint64 id;
        xcb_pixmap_t pixmap;
    };

    xcb_pixmap_t PropertyOf(xcb_atom_t atom) const;
    xcb_pixmap_t NamedPicture() const;
    std::optional<PaintMark> Mark() const;
    /// Whether the root window shows this pixmap, as far as can be told.
    bool Shows(xcb_pixmap_t pixmap) const;
    xcb_pixmap_t MakePixmap(uint32 pixel);
    void SetNames(xcb_pixmap_t picture, xcb_pixmap_t owned, xcb_pixmap_t otherPicture);
    void SetName(xcb_atom_t atom, xcb_pixmap_t pixmap);
    void SetBackground(uint32 what, uint32 value);
    /// Ends the client that has made a pixmap, which frees it; nothing for XCB_NONE.
    void Free(xcb_pixmap_t pixmap);

    XConnection fConnection;
    RootPicture fPicture;
    xcb_window_t fRoot;
    Atoms fAtoms{};
    bool fIsNamed = true;
    xcb_pixmap_t fPainted = XCB_NONE;
};

} // namespace kits
