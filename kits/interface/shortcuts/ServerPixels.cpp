// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/ServerPixels.h"

#include "kits/interface/platform/x11/XServer.h"
#include "kits/kernel/Types.h"

#include <QWindow>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace kits {

namespace {

/// What a socket takes at once without making the sender wait for the server.
constexpr qsizetype kMostBytes = 64 * 1024;

/// What is known of a connection: how pixels have to be sent, and with what.
class Sender {
public:
    explicit Sender(xcb_connection_t* server)
        : fServer(server)
    {
        const xcb_setup_t* const setup = xcb_get_setup(server);
        if (std::endian::native != std::endian::little || setup->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST)
            return;
        for (auto formats = xcb_setup_pixmap_formats_iterator(setup); formats.rem > 0; xcb_format_next(&formats)) {
            for (Format& format : fFormats)
                if (format.depth == formats.data->depth && formats.data->bits_per_pixel == 32)
                    format.isKnown = true;
        }
    }

    xcb_connection_t* Server() const { return fServer; }

    bool Send(xcb_window_t window, const QImage& picture, std::span<const QRect> places)
    {
        // The toolkit gives a picture these formats only if the window's pixels have its red, green and blue.
        if (picture.format() != QImage::Format_RGB32 && picture.format() != QImage::Format_ARGB32_Premultiplied)
            return false;
        Format* const format = FormatOf(window);
        if (format == nullptr)
            return false;
        if (format->context == XCB_NONE) {
            format->context = xcb_generate_id(fServer);
            xcb_create_gc(fServer, format->context, window, 0, nullptr);
        }
        for (const QRect& place : places) {
            const auto row = static_cast<size_t>(place.width()) * sizeof(uint32);
            fBytes.resize(row * static_cast<size_t>(place.height()));
            const uchar* from = picture.constBits() + place.y() * picture.bytesPerLine() +
                                static_cast<qsizetype>(place.x()) * static_cast<qsizetype>(sizeof(uint32));
            for (uchar* to = fBytes.data(); to < fBytes.data() + fBytes.size(); to += row) {
                std::memcpy(to, from, row);
                from += picture.bytesPerLine();
            }
            xcb_put_image(fServer, XCB_IMAGE_FORMAT_Z_PIXMAP, window, format->context,
                          static_cast<uint16_t>(place.width()), static_cast<uint16_t>(place.height()),
                          static_cast<int16_t>(place.x()), static_cast<int16_t>(place.y()), 0, format->depth,
                          static_cast<uint32_t>(fBytes.size()), fBytes.data());
        }
        xcb_flush(fServer);
        return true;
    }

private:
    /// Of the windows of one depth.
    struct Format {
        uint8 depth;
        bool isKnown = false; ///< its pixels are sent as words
        xcb_gcontext_t context = XCB_NONE;
    };
    struct Known {
        xcb_window_t window = XCB_NONE;
        uint8 depth = 0;
    };

    /// Asks the server the first time.
    Format* FormatOf(xcb_window_t window)
    {
        auto known = std::find_if(fKnown.begin(), fKnown.end(), [&](const Known& it) { return it.window == window; });
        if (known == fKnown.end()) {
            const std::unique_ptr<xcb_get_geometry_reply_t, decltype(&std::free)> geometry(
                xcb_get_geometry_reply(fServer, xcb_get_geometry(fServer, window), nullptr), &std::free);
            if (geometry == nullptr)
                return nullptr;
            known = fKnown.begin() + static_cast<ptrdiff_t>(fNext++ % fKnown.size());
            *known = {window, geometry->depth};
        }
        const auto format = std::find_if(fFormats.begin(), fFormats.end(),
                                         [&](const Format& it) { return it.depth == known->depth && it.isKnown; });
        return format != fFormats.end() ? &*format : nullptr;
    }

    xcb_connection_t* const fServer;
    std::array<Format, 2> fFormats{{{24}, {32}}};
    std::array<Known, 8> fKnown;
    size_t fNext = 0;
    std::vector<uchar> fBytes;
};

} // namespace

bool SendPixels(const QWindow& window, const QImage& picture, std::span<const QRect> places)
{
    xcb_connection_t* const server = XServer();
    qsizetype bytes = 0;
    for (const QRect& place : places)
        bytes += static_cast<qsizetype>(place.width()) * place.height() * static_cast<qsizetype>(sizeof(uint32));
    if (server == nullptr || window.handle() == nullptr || bytes > kMostBytes)
        return false;
    // The connection is there as long as the toolkit is.
    static Sender sSender(server);
    if (sSender.Server() != server)
        return false;
    return sSender.Send(static_cast<xcb_window_t>(window.winId()), picture, places);
}

} // namespace kits
