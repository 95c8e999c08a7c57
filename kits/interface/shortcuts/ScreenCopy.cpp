// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/ScreenCopy.h"

#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/shortcuts/ServerPixels.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QImage>
#include <QRegion>
#include <QWindow>

#include <algorithm>
#include <cstring>

namespace kits {

namespace {

/// Where a window has one picture that can be written to at any time. Elsewhere the display and the toolkit take turns
/// at several.
bool HasLastingPictures()
{
    static const bool has = [] {
        const QString platform = QGuiApplication::platformName();
        return platform == QLatin1String("xcb") || platform == QLatin1String("offscreen");
    }();
    return has;
}

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

ScreenCopy::~ScreenCopy()
{
    for (const Window& window : fWindows) {
        QBackingStore* const store = window.widget != nullptr ? window.widget->backingStore() : nullptr;
        if (store == nullptr || window.changed.empty() || SendPixels(*store->window(), *window.picture, window.changed))
            continue;
        QRegion region;
        for (const QRect& place : window.changed)
            region += place;
        store->flush(region);
    }
}

ScreenCopy::Window& ScreenCopy::WindowOf(QWidget& widget)
{
    const auto known =
        std::find_if(fWindows.begin(), fWindows.end(), [&](const Window& it) { return it.widget == &widget; });
    if (known != fWindows.end())
        return *known;
    Window& window = fWindows.emplace_back();
    window.widget = &widget;
    window.picture = PictureOf(widget);
    return window;
}

void ScreenCopy::ListChildren(const QWidget& widget, QPoint corner,
                              std::vector<std::pair<const QWidget*, QRect>>* children)
{
    for (const QObject* child : widget.children()) {
        if (!child->isWidgetType())
            continue;
        const auto* const shown = static_cast<const QWidget*>(child);
        if (!shown->isHidden() && !shown->isWindow())
            children->emplace_back(shown, shown->geometry().translated(corner));
    }
}

const ScreenCopy::Holder& ScreenCopy::HolderOf(const QWidget& widget)
{
    const auto known =
        std::find_if(fHolders.begin(), fHolders.end(), [&](const Holder& it) { return it.widget == &widget; });
    if (known != fHolders.end())
        return *known;
    const Holder* const outer = widget.isWindow() ? nullptr : &HolderOf(*widget.parentWidget());
    Holder& holder = fHolders.emplace_back();
    holder.widget = &widget;
    holder.visible = widget.rect();
    if (outer != nullptr) {
        holder.corner = outer->corner + widget.pos();
        holder.visible = holder.visible.translated(holder.corner) & outer->visible;
        holder.above = outer->above;
        bool isAbove = false;
        for (const auto& [sibling, frame] : outer->children) {
            if (isAbove && frame.intersects(holder.visible))
                holder.above.push_back(frame);
            isAbove = isAbove || sibling == &widget;
        }
        if (!isAbove)
            holder.visible = {}; // hidden
    }
    ListChildren(widget, holder.corner, &holder.children);
    return holder;
}

bool ScreenCopy::Take(const ViewImpl& impl)
{
    fView = nullptr;
    const Surface& surface = impl.fSurface;
    const PixelRect& frame = impl.PixelFrame();
    const QWidget* const pane = impl.fPane;
    if (!HasLastingPictures() || pane == nullptr || pane->isWindow() || !surface.IsOpaque() ||
        !surface.Grid().IsUnit() || surface.Width() != frame.Width() || surface.Height() != frame.Height())
        return false;
    const Holder& holder = HolderOf(*pane->parentWidget());
    fWindow = &WindowOf(*pane->window());
    if (fWindow->picture == nullptr)
        return false;

    fCorner = holder.corner + pane->pos();
    fVisible = QRect(fCorner, QSize(frame.Width(), frame.Height())) & holder.visible;
    fAbove.clear();
    const auto add = [this](const QRect& rect) {
        if (rect.intersects(fVisible))
            fAbove.push_back(rect);
    };
    for (const QRect& rect : holder.above)
        add(rect);
    bool isAbove = false;
    for (const auto& [sibling, rect] : holder.children) {
        if (isAbove)
            add(rect);
        isAbove = isAbove || sibling == pane;
    }
    if (!isAbove)
        return false; // hidden
    for (const QObject* child : pane->children()) {
        const auto* const inside = child->isWidgetType() ? static_cast<const QWidget*>(child) : nullptr;
        if (inside != nullptr && !inside->isHidden() && !inside->isWindow())
            add(inside->geometry().translated(fCorner));
    }
    fView = &impl;
    return true;
}

bool ScreenCopy::Add(const PixelRect& rect)
{
    if (fView == nullptr)
        return false;
    const QRect place(fCorner.x() + rect.left, fCorner.y() + rect.top, rect.Width(), rect.Height());
    const bool isCovered =
        std::any_of(fAbove.begin(), fAbove.end(), [&](const QRect& above) { return above.intersects(place); });
    if (isCovered || !fVisible.contains(place))
        return false;
    // Not announced by beginPaint(): that waits for the X server's word that it has read what was shown before. Should
    // it not have, it reads these pixels a little early. It moves none of them by itself, see ViewImpl::SyncWidget.
    const Surface& surface = fView->fSurface;
    const auto stride = static_cast<size_t>(surface.DeviceWidth());
    const uint32* from = surface.Words() + static_cast<size_t>(rect.top) * stride + rect.left;
    // The memory is shared with the display: asking for pixels to write to could give a copy.
    uchar* const pixels = const_cast<uchar*>(fWindow->picture->constBits());
    const qsizetype bytesPerLine = fWindow->picture->bytesPerLine();
    uchar* to = pixels + place.y() * bytesPerLine + static_cast<qsizetype>(place.x()) * 4;
    // A caption that says nearly the same again is shown only where it differs.
    const int32 width = rect.Width();
    PixelRect changed{width, rect.Height(), 0, 0};
    for (int32 y = 0; y < rect.Height(); y++, from += stride, to += bytesPerLine) {
        auto* const shown = reinterpret_cast<uint32*>(to);
        if (std::memcmp(from, shown, static_cast<size_t>(width) * sizeof(uint32)) == 0)
            continue;
        int32 first = 0;
        while (from[first] == shown[first])
            first++;
        int32 end = width;
        while (from[end - 1] == shown[end - 1])
            end--;
        std::memcpy(shown + first, from + first, static_cast<size_t>(end - first) * sizeof(uint32));
        changed = {std::min(changed.left, first), std::min(changed.top, y), std::max(changed.right, end), y + 1};
    }
    if (!changed.IsEmpty())
        fWindow->changed.emplace_back(place.x() + changed.left, place.y() + changed.top, changed.Width(),
                                      changed.Height());
    return true;
}

} // namespace kits
