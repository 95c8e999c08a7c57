// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/ScreenCopy.h"

#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/platform/Display.h"
#include "kits/interface/shortcuts/ServerPixels.h"

#include <QBackingStore>
#include <QImage>
#include <QPaintDevice>
#include <QRegion>
#include <QWindow>

#include <algorithm>
#include <cstring>

namespace kits {

namespace {

/// The picture of a window when opaque words can be copied into it one for one; null otherwise.
const QImage* PictureOf(const QWidget& window)
{
    QBackingStore* const store = window.backingStore();
    const QWindow* const handle = window.windowHandle();
    if (store == nullptr || handle == nullptr || store->size() != handle->size() || store->size() != window.size())
        return nullptr;
    QPaintDevice* const device = store->paintDevice();
    if (device == nullptr || device->devType() != QInternal::Image || device->devicePixelRatio() != 1)
        return nullptr;
    const auto* const image = static_cast<const QImage*>(device);
    const QImage::Format format = image->format();
    const bool fits = format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied;
    return fits && image->size() == store->size() && image->isDetached() ? image : nullptr;
}

} // namespace

bool ScreenCopy::Take(const ViewImpl& view)
{
    const Surface& surface = view.fSurface;
    const PixelRect& frame = view.PixelFrame();
    const QWidget* const pane = view.fPane;
    if (!Display::HasLastingPictures() || pane == nullptr || pane->isWindow() || !pane->isVisible() ||
        !surface.IsOpaque() || !surface.Grid().IsUnit() || surface.Width() != frame.Width() ||
        surface.Height() != frame.Height())
        return false;
    if (fWindow != pane->window())
        End();
    fWindow = pane->window();
    fPicture = PictureOf(*fWindow);
    if (fPicture == nullptr)
        return false;

    fView = &view;
    fCorner = pane->mapTo(fWindow, QPoint());
    fVisible = QRect(fCorner, QSize(frame.Width(), frame.Height()));
    fAbove.clear();
    AddChildren(*pane, fCorner, nullptr);
    QPoint corner = fCorner;
    for (const QWidget* widget = pane; !widget->isWindow(); widget = widget->parentWidget()) {
        const QWidget& parent = *widget->parentWidget();
        corner -= widget->pos();
        fVisible &= QRect(corner, parent.size());
        AddChildren(parent, corner, widget);
    }
    return true;
}

/// Notes the children of a widget that lie above one of them, or above the widget itself.
void ScreenCopy::AddChildren(const QWidget& parent, QPoint corner, const QWidget* below)
{
    bool isAbove = below == nullptr;
    for (const QObject* object : parent.children()) {
        const auto* const child = object->isWidgetType() ? static_cast<const QWidget*>(object) : nullptr;
        if (child == nullptr || child->isHidden() || child->isWindow())
            continue;
        const QRect place = child->geometry().translated(corner);
        if (isAbove && place.intersects(fVisible))
            fAbove.push_back(place);
        isAbove = isAbove || child == below;
    }
}

bool ScreenCopy::Add(const PixelRect& rect)
{
    const QRect place(fCorner.x() + rect.left, fCorner.y() + rect.top, rect.Width(), rect.Height());
    const bool isCovered =
        std::any_of(fAbove.begin(), fAbove.end(), [&](const QRect& above) { return above.intersects(place); });
    if (isCovered || !fVisible.contains(place))
        return false;
    // Not announced by beginPaint(), which waits until the X server has read what was shown before. A server that has
    // not reads these pixels a little early. It moves none of them by itself, see ViewImpl::SyncWidget.
    const Surface& surface = fView->fSurface;
    const auto stride = static_cast<size_t>(surface.DeviceWidth());
    const uint32* from = surface.Words() + static_cast<size_t>(rect.top) * stride + rect.left;
    // The memory is shared with the display: asking for pixels to write to could give a copy.
    uchar* const pixels = const_cast<uchar*>(fPicture->constBits());
    const qsizetype bytesPerLine = fPicture->bytesPerLine();
    uchar* to = pixels + place.y() * bytesPerLine + static_cast<qsizetype>(place.x()) * 4;
    for (int32 y = 0; y < rect.Height(); y++, from += stride, to += bytesPerLine)
        std::memcpy(to, from, static_cast<size_t>(rect.Width()) * sizeof(uint32));
    fChanged.push_back(place);
    return true;
}

void ScreenCopy::End()
{
    QBackingStore* const store = fWindow != nullptr ? fWindow->backingStore() : nullptr;
    if (store != nullptr && !fChanged.empty()) {
        const QImage* const picture = fSendsPixels ? PictureOf(*fWindow) : nullptr;
        if (picture == nullptr || !SendPixels(*store->window(), *picture, fChanged)) {
            QRegion region;
            for (const QRect& place : fChanged)
                region += place;
            store->flush(region);
        }
    }
    fChanged.clear();
    fWindow = nullptr;
}

} // namespace kits
