#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Color.h"

#include <memory>
#include <optional>
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
    rgb_color ColorOf(uint32 pixel) const;

    /// The average over a pixmap; nothing if it is gone or its pixels are no colours.
    std::optional<rgb_color> AverageOf(xcb_pixmap_t pixmap) const;

    /// What can be seen of the root window itself.
    struct Visible {
        rgb_color average;
        bool isPlain; ///< all pixels are the same
        uint32 pixel; ///< one of them
    };
    /// Read off some of its rows; nothing if windows cover all of them.
    std::optional<Visible> VisibleRoot() const;

    const xcb_screen_t* Screen() const { return fScreen; }

private:
    struct Sum;
    class Scratch;

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
