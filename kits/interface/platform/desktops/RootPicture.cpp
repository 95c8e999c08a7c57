// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/RootPicture.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kits {

namespace {

/// The approximate number of bytes of one request.
constexpr uint32 kStrip = 1024 * 1024;
/// The number of rows that are read to recognise the background.
constexpr uint16 kRows = 32;

uint32 Scaled(uint8 value, uint32 mask)
{
    const int shift = std::countr_zero(mask);
    return (value * (mask >> shift) + 127) / 255 << shift;
}

} // namespace

/// Adds up pixels, component by component, in the server's own steps.
struct RootPicture::Sum {
    struct Part {
        explicit Part(uint32 of)
            : mask(of)
            , shift(std::countr_zero(of))
        {
        }
        void Add(uint32 pixel) { sum += (pixel & mask) >> shift; }
        uint8 Average(uint64 pixels) const
        {
            const uint64 most = pixels * (mask >> shift);
            return static_cast<uint8>((sum * 255 + most / 2) / most);
        }

        uint32 mask;
        int shift;
        uint64 sum = 0;
    };

    explicit Sum(const RootPicture& picture)
        : parts{Part(picture.fRed), Part(picture.fGreen), Part(picture.fBlue)}
    {
    }
    void Add(uint32 pixel)
    {
        for (Part& part : parts)
            part.Add(pixel);
        count++;
    }
    rgb_color Average() const
    {
        return make_color(parts[0].Average(count), parts[1].Average(count), parts[2].Average(count));
    }

    Part parts[3]; ///< red, green, blue
    uint64 count = 0;
};

/// A window beside the screen, one row high, that has the root window's background and covers none of it. The server
/// keeps its pixels though nobody sees them.
class RootPicture::Probe {
public:
    explicit Probe(const RootPicture& picture)
        : fConnection(picture.fConnection)
        , fWindow(xcb_generate_id(fConnection))
    {
        const xcb_screen_t* screen = picture.fScreen;
        const uint16 width = screen->width_in_pixels;
        const uint32 values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE, XCB_BACKING_STORE_ALWAYS, 1};
        xcb_create_window(fConnection, XCB_COPY_FROM_PARENT, fWindow, screen->root, static_cast<int16_t>(-width), 0,
                          width, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXMAP | XCB_CW_BACKING_STORE | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(fConnection, fWindow);
    }
    ~Probe()
    {
        xcb_destroy_window(fConnection, fWindow);
        xcb_flush(fConnection);
    }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    xcb_window_t Window() const { return fWindow; }
    /// Gives it that row's background.
    void MoveTo(int16_t y) const
    {
        const auto value = static_cast<uint32>(static_cast<int32>(y));
        xcb_configure_window(fConnection, fWindow, XCB_CONFIG_WINDOW_Y, &value);
        xcb_clear_area(fConnection, 0, fWindow, 0, 0, 0, 0);
    }

private:
    xcb_connection_t* fConnection;
    xcb_window_t fWindow;
};

/// A pixmap for some rows of the root window, filled with one pixel at first.
class RootPicture::Scratch {
public:
    Scratch(const RootPicture& picture, uint32 pixel)
        : fPicture(picture)
        , fConnection(picture.fConnection)
        , fPixmap(xcb_generate_id(fConnection))
        , fContext(xcb_generate_id(fConnection))
    {
        const xcb_screen_t* screen = picture.fScreen;
        const uint16 rows = picture.RowCount();
        xcb_create_pixmap(fConnection, screen->root_depth, fPixmap, screen->root, Width(), rows);
        const uint32 values[] = {pixel, XCB_SUBWINDOW_MODE_CLIP_BY_CHILDREN, 0};
        xcb_create_gc(fConnection, fContext, fPixmap,
                      XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
        const xcb_rectangle_t all{0, 0, Width(), rows};
        xcb_poly_fill_rectangle(fConnection, fPixmap, fContext, 1, &all);
    }
    ~Scratch()
    {
        xcb_free_gc(fConnection, fContext);
        xcb_free_pixmap(fConnection, fPixmap);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// Copies the part of a row that the window has.
    void Copy(xcb_drawable_t window, int16_t y, int row) const
    {
        xcb_copy_area(fConnection, window, fPixmap, fContext, 0, y, 0, static_cast<int16_t>(row), Width(), 1);
    }
    /// Copies a row of a picture that repeats all over the root window.
    void Tile(xcb_pixmap_t picture, int16_t y, int row) const
    {
        const uint32 values[] = {XCB_FILL_STYLE_TILED, picture, 0, static_cast<uint32>(row - y)};
        xcb_change_gc(fConnection, fContext,
                      XCB_GC_FILL_STYLE | XCB_GC_TILE | XCB_GC_TILE_STIPPLE_ORIGIN_X | XCB_GC_TILE_STIPPLE_ORIGIN_Y,
                      values);
        const xcb_rectangle_t line{0, static_cast<int16_t>(row), Width(), 1};
        xcb_poly_fill_rectangle(fConnection, fPixmap, fContext, 1, &line);
    }
    /// Returns all pixels; none if the server does not give them.
    std::vector<uint32> Pixels() const
    {
        const auto image = fPicture.Image(fPixmap, 0, Width(), fPicture.RowCount());
        std::vector<uint32> pixels;
        if (image == nullptr)
            return pixels;
        const uint32 all = fPicture.fRed | fPicture.fGreen | fPicture.fBlue;
        const uint8* line = xcb_get_image_data(image.get());
        for (int row = 0; row < fPicture.RowCount(); row++, line += fPicture.LineBytes(Width()))
            for (uint32 x = 0; x < Width(); x++)
                pixels.push_back(fPicture.PixelAt(line + x * fPicture.fBytes) & all);
        return pixels;
    }

private:
    uint16 Width() const { return fPicture.fScreen->width_in_pixels; }

    const RootPicture& fPicture;
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

uint32 RootPicture::PixelAt(const uint8* bytes) const
{
    uint32 pixel = 0;
    if (fBytes == sizeof(pixel) && fBigEndian == (std::endian::native == std::endian::big)) {
        std::memcpy(&pixel, bytes, sizeof(pixel));
        return pixel;
    }
    for (uint32 i = 0; i < fBytes; i++)
        pixel |= static_cast<uint32>(bytes[fBigEndian ? fBytes - 1 - i : i]) << 8 * i;
    return pixel;
}

uint32 RootPicture::LineBytes(uint16 width) const
{
    return (width * fBytes * 8 + fPad - 1) / fPad * fPad / 8;
}

/// @return an image with all its bytes, or null
XWindows::Answer<xcb_get_image_reply_t> RootPicture::Image(xcb_drawable_t from, uint16 y, uint16 width,
                                                           uint16 height) const
{
    const auto request = xcb_get_image(fConnection, XCB_IMAGE_FORMAT_Z_PIXMAP, from, 0, static_cast<int16_t>(y), width,
                                       height, UINT32_MAX);
    auto image = XWindows::Await(fConnection, xcb_get_image_reply, request);
    if (image != nullptr && (image->depth != fScreen->root_depth ||
                             static_cast<uint32>(xcb_get_image_data_length(image.get())) < LineBytes(width) * height))
        image.reset();
    return image;
}

std::optional<rgb_color> RootPicture::AverageOf(xcb_pixmap_t pixmap) const
{
    const auto size = XWindows::Await(fConnection, xcb_get_geometry_reply, xcb_get_geometry(fConnection, pixmap));
    if (size == nullptr || size->depth != fScreen->root_depth)
        return std::nullopt;
    const uint32 line = LineBytes(size->width);
    const auto most = static_cast<uint16>(std::clamp<uint32>(kStrip / line, 1, size->height));
    Sum sum(*this);
    for (uint32 y = 0; y < size->height; y += most) {
        const auto rows = static_cast<uint16>(std::min<uint32>(most, size->height - y));
        const auto image = Image(pixmap, static_cast<uint16>(y), size->width, rows);
        if (image == nullptr)
            return std::nullopt;
        const uint8* bytes = xcb_get_image_data(image.get());
        for (uint32 row = 0; row < rows; row++)
            for (uint32 x = 0; x < size->width; x++)
                sum.Add(PixelAt(bytes + row * line + x * fBytes));
    }
    return sum.Average();
}

uint16 RootPicture::RowCount() const
{
    return std::min(kRows, fScreen->height_in_pixels);
}

int16_t RootPicture::RowAt(int row) const
{
    return static_cast<int16_t>((2 * row + 1) * fScreen->height_in_pixels / (2 * RowCount()));
}

/// @param window  the root window; or the probe's, moved from row to row
RootPicture::Rows RootPicture::RowsOf(xcb_drawable_t window, const Probe* probe) const
{
    // Pixels that the window does not have keep the colour that filled the pixmap, which differs between the two.
    const Scratch dark(*this, 0);
    const Scratch light(*this, fRed | fGreen | fBlue);
    for (int row = 0; row < RowCount(); row++) {
        if (probe != nullptr)
            probe->MoveTo(RowAt(row));
        for (const Scratch* scratch : {&dark, &light})
            scratch->Copy(window, probe != nullptr ? int16_t{0} : RowAt(row), row);
    }
    const std::vector<uint32> first = dark.Pixels();
    const std::vector<uint32> second = light.Pixels();
    Rows rows(std::min(first.size(), second.size()));
    for (size_t i = 0; i < rows.size(); i++)
        if (first[i] == second[i])
            rows[i] = first[i];
    return rows;
}

RootPicture::Rows RootPicture::BackgroundRows() const
{
    const Probe probe(*this);
    Rows rows = RowsOf(probe.Window(), &probe);
    if (std::none_of(rows.begin(), rows.end(), [](const auto& pixel) { return pixel.has_value(); }))
        rows = RowsOf(fScreen->root, nullptr);
    return rows;
}

bool RootPicture::HasRows(xcb_pixmap_t picture, const Rows& rows) const
{
    const Scratch scratch(*this, 0);
    for (int row = 0; row < RowCount(); row++)
        scratch.Tile(picture, RowAt(row), row);
    const std::vector<uint32> pixels = scratch.Pixels();
    return std::equal(rows.begin(), rows.end(), pixels.begin(), pixels.end(),
                      [](const std::optional<uint32>& known, uint32 pixel) { return known.value_or(pixel) == pixel; });
}

std::optional<RootPicture::Background> RootPicture::ReadBackground(xcb_pixmap_t picture) const
{
    const Rows rows = BackgroundRows();
    Sum sum(*this);
    Background background{{}, true, 0, false};
    for (const std::optional<uint32>& pixel : rows) {
        if (!pixel)
            continue;
        background.isPlain = background.isPlain && (sum.count == 0 || *pixel == background.pixel);
        background.pixel = *pixel;
        sum.Add(*pixel);
    }
    if (sum.count == 0)
        return std::nullopt;
    background.average = sum.Average();
    background.isPicture = picture != XCB_NONE && HasRows(picture, rows);
    return background;
}

} // namespace kits
