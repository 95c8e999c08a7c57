#include "kits/interface/desktop/RootPicture.h"

#include <algorithm>
#include <bit>

namespace kits {

namespace {

/// Bytes that are asked for at once, about.
constexpr uint32 kStrip = 1024 * 1024;
/// Rows that are looked at to tell what the root window shows.
constexpr uint16 kRows = 32;

uint32 Scaled(uint8 value, uint32 mask)
{
    const int shift = std::countr_zero(mask);
    return (value * (mask >> shift) + 127) / 255 << shift;
}

uint8 Unscaled(uint32 pixel, uint32 mask)
{
    const int shift = std::countr_zero(mask);
    const uint32 most = mask >> shift;
    return static_cast<uint8>((((pixel & mask) >> shift) * 255 + most / 2) / most);
}

} // namespace

struct RootPicture::Sum {
    uint64 red = 0, green = 0, blue = 0, count = 0;

    void Add(rgb_color color)
    {
        red += color.red;
        green += color.green;
        blue += color.blue;
        count++;
    }
    rgb_color Average() const
    {
        const auto part = [this](uint64 sum) { return static_cast<uint8>((sum + count / 2) / count); };
        return make_color(part(red), part(green), part(blue));
    }
};

/// A pixmap that has some rows of the root window where no window covers them, and one pixel everywhere else.
class RootPicture::Scratch {
public:
    Scratch(const RootPicture& picture, uint16 width, uint16 rows, uint32 elsewhere)
        : fConnection(picture.fConnection)
        , fPixmap(xcb_generate_id(fConnection))
        , fContext(xcb_generate_id(fConnection))
    {
        const xcb_screen_t* screen = picture.fScreen;
        xcb_create_pixmap(fConnection, screen->root_depth, fPixmap, screen->root, width, rows);
        const uint32 values[] = {elsewhere, XCB_SUBWINDOW_MODE_CLIP_BY_CHILDREN, 0};
        xcb_create_gc(fConnection, fContext, fPixmap,
                      XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
        const xcb_rectangle_t all{0, 0, width, rows};
        xcb_poly_fill_rectangle(fConnection, fPixmap, fContext, 1, &all);
        for (int row = 0; row < rows; row++) {
            const auto y = static_cast<int16_t>((2 * row + 1) * screen->height_in_pixels / (2 * rows));
            xcb_copy_area(fConnection, screen->root, fPixmap, fContext, 0, y, 0, static_cast<int16_t>(row), width, 1);
        }
    }
    ~Scratch()
    {
        xcb_free_gc(fConnection, fContext);
        xcb_free_pixmap(fConnection, fPixmap);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    xcb_pixmap_t Pixmap() const { return fPixmap; }

private:
    xcb_connection_t* fConnection;
    xcb_pixmap_t fPixmap;
    xcb_gcontext_t fContext;
};

RootPicture::RootPicture(xcb_connection_t* connection)
    : fConnection(connection)
{
    const xcb_setup_t* setup = xcb_get_setup(connection);
    fBigEndian = setup->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    fScreen = xcb_setup_roots_iterator(setup).data;
    for (auto depth = xcb_screen_allowed_depths_iterator(fScreen); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == fScreen->root_visual && visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR) {
                fRed = visual.data->red_mask;
                fGreen = visual.data->green_mask;
                fBlue = visual.data->blue_mask;
            }
        }
    }
    if (fRed == 0 || fGreen == 0 || fBlue == 0)
        return;
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format)) {
        const uint32 bits = format.data->bits_per_pixel;
        if (format.data->depth == fScreen->root_depth && (bits == 16 || bits == 32)) {
            fBytes = bits / 8;
            fPad = format.data->scanline_pad;
        }
    }
}

uint32 RootPicture::PixelOf(rgb_color color) const
{
    return Scaled(color.red, fRed) | Scaled(color.green, fGreen) | Scaled(color.blue, fBlue);
}

rgb_color RootPicture::ColorOf(uint32 pixel) const
{
    return make_color(Unscaled(pixel, fRed), Unscaled(pixel, fGreen), Unscaled(pixel, fBlue));
}

uint32 RootPicture::PixelAt(const uint8* bytes) const
{
    uint32 pixel = 0;
    for (uint32 i = 0; i < fBytes; i++)
        pixel |= static_cast<uint32>(bytes[fBigEndian ? fBytes - 1 - i : i]) << 8 * i;
    return pixel;
}

uint32 RootPicture::LineBytes(uint16 width) const
{
    return (width * fBytes * 8 + fPad - 1) / fPad * fPad / 8;
}

/// Null, or an image that has all the bytes that it should have.
XReply<xcb_get_image_reply_t> RootPicture::Image(xcb_drawable_t from, uint16 y, uint16 width, uint16 height) const
{
    const auto request = xcb_get_image(fConnection, XCB_IMAGE_FORMAT_Z_PIXMAP, from, 0, static_cast<int16_t>(y), width,
                                       height, UINT32_MAX);
    XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(fConnection, request, nullptr));
    if (image != nullptr && (image->depth != fScreen->root_depth ||
                             static_cast<uint32>(xcb_get_image_data_length(image.get())) < LineBytes(width) * height))
        image.reset();
    return image;
}

std::optional<rgb_color> RootPicture::AverageOf(xcb_pixmap_t pixmap) const
{
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(fConnection, xcb_get_geometry(fConnection, pixmap), nullptr));
    if (size == nullptr || size->depth != fScreen->root_depth)
        return std::nullopt;
    const uint32 line = LineBytes(size->width);
    const auto most = static_cast<uint16>(std::clamp<uint32>(kStrip / line, 1, size->height));
    Sum sum;
    for (uint32 y = 0; y < size->height; y += most) {
        const auto rows = static_cast<uint16>(std::min<uint32>(most, size->height - y));
        const auto image = Image(pixmap, static_cast<uint16>(y), size->width, rows);
        if (image == nullptr)
            return std::nullopt;
        const uint8* bytes = xcb_get_image_data(image.get());
        for (uint32 row = 0; row < rows; row++) {
            for (uint32 x = 0; x < size->width; x++)
                sum.Add(ColorOf(PixelAt(bytes + row * line + x * fBytes)));
        }
    }
    return sum.Average();
}

std::optional<RootPicture::Visible> RootPicture::VisibleRoot() const
{
    // What is covered keeps what the pixmap was filled with: that differs between the two.
    const uint32 all = fRed | fGreen | fBlue;
    const uint16 width = fScreen->width_in_pixels;
    const uint16 rows = std::min(kRows, fScreen->height_in_pixels);
    const Scratch dark(*this, width, rows, 0);
    const Scratch light(*this, width, rows, all);
    const auto first = Image(dark.Pixmap(), 0, width, rows);
    const auto second = Image(light.Pixmap(), 0, width, rows);
    if (first == nullptr || second == nullptr)
        return std::nullopt;
    Sum sum;
    Visible visible{{}, true, 0};
    for (uint32 row = 0; row < rows; row++) {
        for (uint32 x = 0; x < width; x++) {
            const uint32 at = row * LineBytes(width) + x * fBytes;
            const uint32 pixel = PixelAt(xcb_get_image_data(first.get()) + at) & all;
            if (pixel != (PixelAt(xcb_get_image_data(second.get()) + at) & all))
                continue;
            visible.isPlain = visible.isPlain && (sum.count == 0 || pixel == visible.pixel);
            visible.pixel = pixel;
            sum.Add(ColorOf(pixel));
        }
    }
    if (sum.count == 0)
        return std::nullopt;
    visible.average = sum.Average();
    return visible;
}

} // namespace kits
