// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/drawing/TextBlend.h"
#include "kits/interface/drawing/TextCache.h"

#include <cmath>
#include <cstring>

namespace kits {

PixelGrid ViewImpl::CurrentGrid() const
{
    const double scale = WindowImpl::Of(fWindow).Scale();
    if (scale == 1)
        return {};
    const BPoint origin = Origin();
    return {scale, ToPixel(origin.x), ToPixel(origin.y)};
}

uint32 ViewImpl::WordOf(pattern which) const
{
    return ToWord(which.high ? fHigh : fLow);
}

bool ViewImpl::FitSurface()
{
    const PixelRect& frame = PixelFrame();
    const uint32 word = fViewColor == B_TRANSPARENT_COLOR ? 0 : ToWord(fViewColor) | 0xFF000000;
    return fSurface.SetSize(frame.Width(), frame.Height(), CurrentGrid(), word);
}

std::optional<Canvas> ViewImpl::BeginPaint()
{
    if (fBitmap != nullptr) {
        const PixelRect bounds = ToPixels(fBitmap->Bounds());
        const PixelRect frame = PixelFrame();
        const BPoint origin = Origin();
        Canvas canvas(static_cast<uint32*>(fBitmap->Bits()), bounds.Width(), {0, 0, bounds.Width(), bounds.Height()},
                      Canvas::kRaw, PixelGrid());
        canvas.SetOrigin(ToPixel(origin.x) - bounds.left, ToPixel(origin.y) - bounds.top);
        canvas.SetClip({0, 0, frame.Width(), frame.Height()});
        return canvas;
    }
    if (fWindow == nullptr || !FitSurface())
        return std::nullopt;
    Canvas canvas = fSurface.MakeCanvas();
    canvas.SetClip({0, 0, fSurface.Width(), fSurface.Height()});
    if (fInDraw)
        canvas.SetClip(fDrawClip);
    return canvas;
}

void ViewImpl::EndPaint(const Canvas& canvas)
{
    if (fBitmap != nullptr || canvas.Changed().IsEmpty())
        return;
    fSurface.Take(canvas);
    fDirty.Add(canvas.Changed());
    UpdateQueue::Add(*this);
}

void ViewImpl::Invalidate(const PixelRect& rect)
{
    if (fWindow == nullptr)
        return;
    const PixelRect frame = PixelFrame();
    const PixelRect visible = Intersection(rect, {0, 0, frame.Width(), frame.Height()});
    if (visible.IsEmpty())
        return;
    if (fFlags & B_WILL_DRAW)
        fInvalid = Union(fInvalid, visible);
    else
        fDirty.Add(visible);
    UpdateQueue::Add(*this);
}

void ViewImpl::InvalidateAll()
{
    const PixelRect frame = PixelFrame();
    Invalidate({0, 0, frame.Width(), frame.Height()});
}

void ViewImpl::DrawInvalid()
{
    const PixelRect frame = PixelFrame();
    const PixelRect invalid = Intersection(fInvalid, {0, 0, frame.Width(), frame.Height()});
    fInvalid = {};
    if (invalid.IsEmpty())
        return;
    const std::weak_ptr<ViewImpl*> self = fSelf;
    const bool wasInDraw = fInDraw;
    const PixelRect outerClip = fDrawClip;
    fInDraw = true;
    fDrawClip = invalid;
    // A view that has drawn nothing needs no pixels: its pane shows the view colour, and so would new pixels.
    if (fBitmap == nullptr && !fSurface.Exists() && fViewColor != B_TRANSPARENT_COLOR)
        fDirty.Add(invalid);
    else
        Paint([&](Canvas& canvas) { canvas.FillRect(invalid, ToWord(fViewColor)); });
    fView->Draw(FromPixels(invalid));
    if (self.expired())
        return;
    fInDraw = wasInDraw;
    fDrawClip = outerClip;
}

void ViewImpl::QueuePending()
{
    if (fWindow != nullptr && (!fInvalid.IsEmpty() || !fDirty.IsEmpty()))
        UpdateQueue::Add(*this);
}

void ViewImpl::ScaleChanged()
{
    // The pixels have an outdated resolution: the next drawing makes new ones, and everything is drawn again.
    if (fSurface.Exists())
        FitSurface();
    InvalidateAll();
}

void ViewImpl::RefreshViewColor()
{
    if (fUIColor.has_value())
        fView->SetViewUIColor(*fUIColor);
    else if (fHasParentColor)
        TakeParentColor(fView);
}

void ViewImpl::ThemeChanged()
{
    RefreshViewColor();
    fView->ViewColorChanged();
    InvalidateAll();
}

} // namespace kits

void BView::SetViewUIColor(color_which which)
{
    SetViewColor(ui_color(which));
    fImpl->fUIColor = which;
}

void BView::SetViewColor(rgb_color color)
{
    fImpl->fUIColor.reset();
    fImpl->fHasParentColor = false;
    if (fImpl->fViewColor == color)
        return;
    fImpl->fViewColor = color;
    if (fImpl->fWindow != nullptr) {
        fImpl->WidgetChanged();
        ViewColorChanged();
    }
}

void BView::SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetViewColor(make_color(red, green, blue, alpha));
}

rgb_color BView::ViewColor() const
{
    return fImpl->fViewColor;
}

void BView::SetHighColor(rgb_color color)
{
    fImpl->fHigh = color;
}

void BView::SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
    SetHighColor(make_color(red, green, blue, alpha));
}

void BView::SetLowColor(rgb_color color)
{
    fImpl->fLow = color;
}

void BView::SetDrawingMode(drawing_mode mode)
{
    fImpl->fDrawingMode = mode;
}

void BView::SetFont(const BFont* font)
{
    if (font != nullptr)
        fImpl->fFont = *font;
}

void BView::GetFontHeight(font_height* height) const
{
    fImpl->fFont.GetHeight(height);
}

float BView::StringWidth(const char* text) const
{
    return fImpl->fFont.StringWidth(text);
}

void BView::StrokeLine(BPoint from, BPoint to, pattern which)
{
    if (!which.high && fImpl->fDrawingMode == B_OP_OVER)
        return;
    fImpl->Paint([&](kits::Canvas& canvas) {
        canvas.StrokeLine(kits::ToPixel(from.x), kits::ToPixel(from.y), kits::ToPixel(to.x), kits::ToPixel(to.y),
                          fImpl->WordOf(which));
    });
}

void BView::StrokeRect(BRect rect, pattern which)
{
    if (!rect.IsValid() || (!which.high && fImpl->fDrawingMode == B_OP_OVER))
        return;
    fImpl->Paint([&](kits::Canvas& canvas) {
        const kits::PixelRect pixels = kits::ToPixels(rect);
        const uint32 word = fImpl->WordOf(which);
        canvas.StrokeLine(pixels.left, pixels.top, pixels.right - 1, pixels.top, word);
        canvas.StrokeLine(pixels.left, pixels.bottom - 1, pixels.right - 1, pixels.bottom - 1, word);
        canvas.StrokeLine(pixels.left, pixels.top, pixels.left, pixels.bottom - 1, word);
        canvas.StrokeLine(pixels.right - 1, pixels.top, pixels.right - 1, pixels.bottom - 1, word);
    });
}

void BView::FillRect(BRect rect, pattern which)
{
    if (!rect.IsValid() || (!which.high && fImpl->fDrawingMode == B_OP_OVER))
        return;
    fImpl->Paint([&](kits::Canvas& canvas) { canvas.FillRect(kits::ToPixels(rect), fImpl->WordOf(which)); });
}

void BView::DrawString(const char* text, BPoint where)
{
    if (text != nullptr)
        DrawString(text, static_cast<int32>(std::min<size_t>(std::strlen(text), INT32_MAX)), where);
}

void BView::DrawString(const char* text, int32 length, BPoint where)
{
    if (text == nullptr || length <= 0 || !std::isfinite(where.x) || !std::isfinite(where.y))
        return;
    const std::string_view string(text, strnlen(text, static_cast<size_t>(length)));
    fImpl->Paint([&](kits::Canvas& canvas) {
        const kits::PixelGrid& grid = canvas.Grid();
        const BFont& font = fImpl->fFont;
        const std::shared_ptr<const kits::CoverageMask> mask = kits::TextCache::Mask(font, string, grid.Scale());
        if (mask == nullptr)
            return;
        const int32 x = grid.EdgeX(static_cast<double>(where.x));
        const int32 y = grid.EdgeY(static_cast<double>(where.y));
        kits::PixelRect box{x + mask->left, y + mask->top, x + mask->left + mask->width, y + mask->top + mask->height};
        if (font.Rotation() == 0) {
            const font_height height = kits::TextCache::Height(font);
            const float width = kits::TextCache::Width(font, string);
            box = grid.ToDevice(
                kits::ToPixels({where.x, where.y - height.ascent, where.x + width, where.y + height.descent}));
        }
        canvas.DrawCoverage(*mask, x, y, box, kits::ToWord(fImpl->fLow), kits::ToWord(fImpl->fHigh),
                            fImpl->fDrawingMode == B_OP_OVER);
    });
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect source, BRect target)
{
    if (bitmap == nullptr || !bitmap->IsValid() || !source.IsValid() || !target.IsValid())
        return;
    fImpl->Paint([&](kits::Canvas& canvas) {
        const kits::PixelRect bounds = kits::ToPixels(bitmap->Bounds());
        kits::PixelRect from = kits::ToPixels(source);
        from = {from.left - bounds.left, from.top - bounds.top, from.right - bounds.left, from.bottom - bounds.top};
        canvas.DrawPixels(static_cast<const uint32*>(bitmap->Bits()), bounds.Width(), bounds.Width(), bounds.Height(),
                          from, kits::ToPixels(target), fImpl->fDrawingMode == B_OP_OVER);
    });
}

void BView::Invalidate()
{
    fImpl->InvalidateAll();
}
