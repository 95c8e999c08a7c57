// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/RootPicture.h"

#include <utility>

namespace kits {

/// The root window of the X server at $DISPLAY. Its picture is a pixmap. By custom, a program that sets the picture
/// writes the pixmap's number into properties of the root window, and programs that show the picture watch these
/// properties. A program without that custom leaves the number of the picture before, so the property only counts while
/// the root window shows that picture. A background that no property names can be restored only if it is one colour.
///
/// Paint gives the root window a pixmap of ours, which outlives the process. The pixmap before stays alive, and Restore
/// gives it back to the root window. Change frees that pixmap, as every program does that sets a background for good.
class X11Desktop : public DesktopBackend {
public:
    /// Returns null if there is no such server, or it has no true colours.
    static std::unique_ptr<DesktopBackend> Connect();
    /// Returns the workspace that the window manager shows, from 0 on; 0 if it does not say. Queries the server at
    /// $DISPLAY.
    static int32 CurrentWorkspace();
    /// Returns width and height of all monitors together, in pixels. Queries the server at $DISPLAY; nothing without
    /// one.
    static std::optional<std::pair<int, int>> Size();
    explicit X11Desktop(XWindows::Connection connection);

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
        xcb_atom_t owned;        ///< the same pixmap, for the next program that sets a picture to free
        xcb_atom_t otherPicture; ///< some programs use this one instead of `picture`
        xcb_atom_t paint;        ///< a PaintMark: our pixmap, and the id of the kept background that it covers
    };
    /// The contents of the property `paint`.
    struct PaintMark {
        uint64 id;
        xcb_pixmap_t pixmap;
    };

    xcb_pixmap_t PropertyOf(xcb_atom_t atom) const;
    xcb_pixmap_t NamedPicture() const;
    std::optional<PaintMark> Mark() const;
    /// Returns whether the root window shows this pixmap, as far as that can be found out.
    bool Shows(xcb_pixmap_t pixmap) const;
    xcb_pixmap_t MakePixmap(uint32 pixel);
    void SetNames(xcb_pixmap_t picture, xcb_pixmap_t owned, xcb_pixmap_t otherPicture);
    void SetName(xcb_atom_t atom, xcb_pixmap_t pixmap);
    void SetBackground(uint32 what, uint32 value);
    /// Kills the client that has made a pixmap, which frees it; does nothing for XCB_NONE.
    void Free(xcb_pixmap_t pixmap);

    XWindows::Connection fConnection;
    RootPicture fPicture;
    xcb_window_t fRoot;
    Atoms fAtoms{};
    bool fIsNamed = true;
    xcb_pixmap_t fPainted = XCB_NONE;
};

} // namespace kits
