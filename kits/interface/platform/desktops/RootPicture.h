// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/XWindows.h"
#include "kits/kernel/Types.h"
#include "kits/support/Color.h"

#include <optional>
#include <vector>

namespace kits {

/// Reads pixels of an X server's root window, and of pixmaps made for it, as colours. Waits for the server.
class RootPicture {
public:
    /// @param connection  must outlive this
    explicit RootPicture(xcb_connection_t* connection);

    /// True if pixels can be read as colours: the root window's have red, green and blue parts, in 16 or 32 bits.
    bool HasTrueColor() const { return fBytes != 0; }

    uint32 PixelOf(rgb_color color) const;

    /// The average colour of a pixmap; nothing if the pixmap is gone or has no true colours.
    std::optional<rgb_color> AverageOf(xcb_pixmap_t pixmap) const;

    /// The background of the root window, as some of its rows show it.
    struct Background {
        rgb_color average;
        bool isPlain;   ///< all pixels are the same
        uint32 pixel;   ///< one of them
        bool isPicture; ///< the root window shows the caller's picture
    };
    /// Reads the background of the root window, also where windows cover it. On a server that cannot do that it reads
    /// the uncovered parts, and returns nothing if windows cover everything.
    /// @param picture  the pixmap to compare with; XCB_NONE for none
    std::optional<Background> ReadBackground(xcb_pixmap_t picture) const;

    const xcb_screen_t* Screen() const { return fScreen; }

private:
    struct Sum;
    class Probe;
    class Scratch;
    /// The pixels of some rows, with gaps for unknown ones.
    using Rows = std::vector<std::optional<uint32>>;

    uint16 RowCount() const;
    int16_t RowAt(int row) const;
    Rows RowsOf(xcb_drawable_t window, const Probe* probe) const;
    Rows BackgroundRows() const;
    /// True if a picture that repeats all over the root window has these rows.
    bool HasRows(xcb_pixmap_t picture, const Rows& rows) const;

    XWindows::Answer<xcb_get_image_reply_t> Image(xcb_drawable_t from, uint16 y, uint16 width, uint16 height) const;
    uint32 PixelAt(const uint8* bytes) const;
    uint32 LineBytes(uint16 width) const;

    xcb_connection_t* fConnection;
    const xcb_screen_t* fScreen = nullptr;
    bool fBigEndian = false;
    uint32 fBytes = 0; ///< of a pixel
    uint32 fPad = 0;   ///< the bits of a line are padded to a multiple of this
    uint32 fRed = 0, fGreen = 0, fBlue = 0;
};

} // namespace kits
