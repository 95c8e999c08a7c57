// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/ServerPixels.h"

#include "kits/interface/platform/x11/XWindows.h"
#include "kits/kernel/Types.h"

#include <QWindow>

#include <array>
#include <bit>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace kits {

namespace {

/// What a socket takes at once without making the sender wait for the server.
constexpr size_t kMostBytes = 64 * 1024;

size_t BytesOf(const QRect& place)
{
    return static_cast<size_t>(place.width()) * static_cast<size_t>(place.height()) * sizeof(uint32);
}

/// The depth of a window; asks the server the first time. 0 if that fails.
uint8 DepthOf(xcb_connection_t* server, xcb_window_t window)
{
    constexpr size_t kMostKnown = 100;
    static std::unordered_map<xcb_window_t, uint8> sDepths;
    if (sDepths.size() >= kMostKnown)
        sDepths.clear();
    const auto [known, isNew] = sDepths.try_emplace(window);
    if (isNew) {
        const auto geometry = XWindows::Await(server, xcb_get_geometry_reply, xcb_get_geometry(server, window));
        known->second = geometry != nullptr ? geometry->depth : 0;
    }
    return known->second;
}

} // namespace

bool SendPixels(const QWindow& window, const QImage& picture, std::span<const QRect> places)
{
    xcb_connection_t* const server = XServer();
    size_t bytes = 0;
    for (const QRect& place : places)
        bytes += BytesOf(place);
    if (server == nullptr || window.handle() == nullptr || bytes > kMostBytes ||
        std::endian::native != std::endian::little ||
        xcb_get_setup(server)->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST)
        return false;
    const auto drawable = static_cast<xcb_window_t>(window.winId());
    const uint8 depth = DepthOf(server, drawable);
    if (depth != 24 && depth != 32)
        return false;
    // One for each depth; they last as long as the connection.
    static std::array<xcb_gcontext_t, 2> sContexts{};
    xcb_gcontext_t& context = sContexts[depth == 32];
    if (context == XCB_NONE) {
        context = xcb_generate_id(server);
        xcb_create_gc(server, context, drawable, 0, nullptr);
    }
    static std::vector<uchar> sBytes;
    for (const QRect& place : places) {
        sBytes.resize(BytesOf(place));
        const size_t row = static_cast<size_t>(place.width()) * sizeof(uint32);
        uchar* to = sBytes.data();
        for (int y = place.top(); y <= place.bottom(); y++, to += row)
            std::memcpy(to, picture.constScanLine(y) + static_cast<size_t>(place.x()) * sizeof(uint32), row);
        xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context, static_cast<uint16_t>(place.width()),
                      static_cast<uint16_t>(place.height()), static_cast<int16_t>(place.x()),
                      static_cast<int16_t>(place.y()), 0, depth, static_cast<uint32_t>(sBytes.size()), sBytes.data());
    }
    xcb_flush(server);
    return true;
}

} // namespace kits
