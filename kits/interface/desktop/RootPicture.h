#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Color.h"

#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace kits {

struct XDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XConnection = std::unique_ptr<xcb_connection_t, XDisconnect>;

struct XFree {
    void operator()(void* memory) const { std::free(memory); }
};
/// A reply of the X server.
template <typename Reply> using XReply = std::unique_ptr<Reply, XFree>;

/// Pixels of an X server's root window and of pixmaps that are made for it, as colours. Waits for the server.
class RootPicture {
public:
    /// @param connection  must outlive this
    explicit RootPicture(xcb_connection_t* connection);

    /// Whether colours can be told from pixels: the root window's are red, green and blue, 16 or 32 bits each.
    bool HasTrueColor() const { return fBytes != 0; }

    uint32 PixelOf(rgb_color color) const;

    /// The average over a pixmap; nothing if it is gone or its pixels are no colours.
    std::optional<rgb_color> AverageOf(xcb_pixmap_t pixmap) const;

    /// The background of the root window, as some of its rows show it.
    struct Background {
        rgb_color average;
        bool isPlain;   ///< all pixels are the same
        uint32 pixel;   ///< one of them
        bool isPicture; ///< it is the picture that was asked about
    };
    /// Reads what the root window has, also where windows cover it; a server that cannot show that gives what no window
    /// covers. Nothing if all of it is covered then.
    /// @param picture  the pixmap that it may have; XCB_NONE for none
    std::optional<Background> ReadBackground(xcb_pixmap_t picture) const;

    const xcb_screen_t* Screen() const { return fScreen; }

private:
    struct Sum;
    class Probe;
    class Scratch;
    /// Pixels of some rows, nothing where they are not known.
    using Rows = std::vector<std::optional<uint32>>;

    uint16 RowCount() const;
    int16_t RowAt(int row) const;
    Rows RowsOf(xcb_drawable_t window, const Probe* probe) const;
    Rows BackgroundRows() const;
    /// Whether a picture that repeats all over the root window has these rows.
    bool HasRows(xcb_pixmap_t picture, const Rows& rows) const;

    XReply<xcb_get_image_reply_t> Image(xcb_drawable_t from, uint16 y, uint16 width, uint16 height) const;
    uint32 PixelAt(const uint8* bytes) const;
    uint32 LineBytes(uint16 width) const;

    xcb_connection_t* fConnection;
    const xcb_screen_t* fScreen = nullptr;
    bool fBigEndian = false;
    uint32 fBytes = 0; ///< of a pixel
    uint32 fPad = 0;   ///< a line's bits are a multiple of this
    uint32 fRed = 0, fGreen = 0, fBlue = 0;
};

} // namespace kits
