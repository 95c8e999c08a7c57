// SPDX-License-Identifier: MIT
#include "kits/interface/core/ViewPane.h"

#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/interface/Clipboard.h"
#include "kits/interface/core/EventScope.h"
#include "kits/interface/core/KeyInput.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/ViewImpl.h"

#include <QContextMenuEvent>
#include <QImage>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>

#include <cmath>
#include <cstring>

namespace kits {

namespace {

/// Copies the pixels of a rectangle to another picture, unchanged. Both pictures contain the rectangle.
void CopyWords(const Surface& surface, const PixelRect& rect, uchar* bits, qsizetype bytesPerLine, QPoint offset)
{
    const auto stride = static_cast<size_t>(surface.DeviceWidth());
    const uint32* from = surface.Words() + static_cast<size_t>(rect.top) * stride + rect.left;
    uchar* to = bits + (rect.top + offset.y()) * bytesPerLine + (rect.left + offset.x()) * 4;
    const auto length = static_cast<size_t>(rect.Width()) * sizeof(uint32);
    for (int32 y = rect.top; y < rect.bottom; y++, from += stride, to += bytesPerLine)
        std::memcpy(to, from, length);
}

/// Returns the picture behind a painter if opaque pixels can be copied into it one for one, otherwise null.
QImage* PictureBehind(const QPainter& painter)
{
    QPaintDevice* const device = painter.paintEngine()->paintDevice();
    if (device == nullptr || device->devType() != QInternal::Image || device->devicePixelRatio() != 1 ||
        painter.deviceTransform().type() > QTransform::TxTranslate)
        return nullptr;
    auto* const image = static_cast<QImage*>(device);
    const QImage::Format format = image->format();
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied ? image : nullptr;
}

} // namespace

void DeleteWidget(QWidget* widget)
{
    widget->hide();
    if (EventScope::IsOpen())
        widget->deleteLater();
    else
        delete widget;
}

ViewPane::ViewPane(ViewImpl& impl, QWidget* parent)
    : QWidget(parent)
    , fImpl(&impl)
{
    setObjectName(QString::fromUtf8(impl.fView->Name()));
}

void ViewPane::Release()
{
    fImpl = nullptr;
    if (IsMainThread()) {
        DeleteWidget(this);
        return;
    }
    RunOnMainThread([widget = QPointer<QWidget>(this)] {
        if (widget != nullptr)
            DeleteWidget(widget);
    });
}

void ViewPane::LeaveWindow()
{
    hide();
    setParent(nullptr);
}

bool ViewPane::event(QEvent* event)
{
    // Once the view is gone, the widget's only event of interest is its own end.
    if (fImpl == nullptr && event->type() != QEvent::DeferredDelete)
        return true;
    return QWidget::event(event);
}

void ViewPane::paintEvent(QPaintEvent* event)
{
    const Surface& surface = fImpl->fSurface;
    const PixelRect frame = fImpl->PixelFrame();
    QPainter painter(this);
    // The scale may have changed since the drawing: drawing at the new scale comes next.
    const bool isOfThisScale = surface.Exists() && std::abs(surface.Grid().Scale() - devicePixelRatioF()) < 1e-3;
    // The view was resized since the drawing: drawing at the new size comes next.
    if (!isOfThisScale || surface.Width() != frame.Width() || surface.Height() != frame.Height()) {
        const rgb_color color = fImpl->fViewColor;
        if (color != B_TRANSPARENT_COLOR)
            painter.fillRect(event->rect(), QColor(color.red, color.green, color.blue));
        if (!isOfThisScale)
            return;
    }
    // Often only one column of pixels has changed: the toolkit's way of copying it takes much longer than the copy.
    if (QImage* const picture = surface.IsOpaque() && surface.Grid().IsUnit() ? PictureBehind(painter) : nullptr) {
        const QTransform transform = painter.deviceTransform();
        const QPoint offset(qRound(transform.dx()), qRound(transform.dy()));
        const QRect room = picture->rect().translated(-offset);
        const PixelRect common = Intersection({0, 0, surface.DeviceWidth(), surface.DeviceHeight()},
                                              {room.left(), room.top(), room.right() + 1, room.bottom() + 1});
        // The painter has detached the picture's pixels already; asking for writable ones may copy them.
        auto* const bits = const_cast<uchar*>(picture->constBits());
        for (const QRect& rect : event->region()) {
            const PixelRect place =
                Intersection({rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1}, common);
            if (!place.IsEmpty())
                CopyWords(surface, place, bits, picture->bytesPerLine(), offset);
        }
        return;
    }
    const QImage image(reinterpret_cast<const uchar*>(surface.Words()), surface.DeviceWidth(), surface.DeviceHeight(),
                       surface.DeviceWidth() * 4,
                       surface.IsOpaque() ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    painter.setCompositionMode(surface.IsOpaque() ? QPainter::CompositionMode_Source
                                                  : QPainter::CompositionMode_SourceOver);
    const PixelGrid& grid = surface.Grid();
    // On Wayland, a window may have its new scale before it has a picture of that scale to paint on.
    if (std::abs(painter.deviceTransform().m11() - grid.Scale()) > 1e-3) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(0, 0, surface.Width(), surface.Height()), image);
        return;
    }
    if (!grid.IsUnit()) {
        // In screen pixels, so that nothing is stretched or smoothed.
        const QTransform device = painter.deviceTransform();
        const QTransform wanted =
            QTransform::fromTranslate(std::floor(device.dx() + 0.5), std::floor(device.dy() + 0.5));
        painter.setWorldTransform(wanted * device.inverted());
    }
    for (const QRect& rect : event->region()) {
        const PixelRect place =
            Intersection(grid.ToDevice({rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1}),
                         {0, 0, surface.DeviceWidth(), surface.DeviceHeight()});
        if (!place.IsEmpty())
            painter.drawImage(QPoint(place.left, place.top), image,
                              QRect(place.left, place.top, place.Width(), place.Height()));
    }
}

void ViewPane::mousePressEvent(QMouseEvent* event)
{
    Pointer::Press(*fImpl, *event);
}

void ViewPane::mouseDoubleClickEvent(QMouseEvent* event)
{
    Pointer::Press(*fImpl, *event);
}

void ViewPane::mouseMoveEvent(QMouseEvent*)
{
    // Pointer notifies views by the pointer's place. The event is accepted, so that it does not go to the parent.
}

void ViewPane::mouseReleaseEvent(QMouseEvent* event)
{
    Pointer::Release(*fImpl, *event);
}

void ViewPane::RequestMenu()
{
    const DispatchScope scope;
    fImpl->fView->ContextMenuRequested(BPoint(static_cast<float>(width() / 2), static_cast<float>(height() / 2)));
}

bool ViewPane::UseClipboard(const QKeyEvent& event)
{
    const DispatchScope scope;
    return (event.matches(QKeySequence::Copy) && CopyFrom(fImpl->fView)) ||
           (event.matches(QKeySequence::Paste) && PasteOnto(fImpl->fView));
}

void ViewPane::keyPressEvent(QKeyEvent* event)
{
    // The toolkit requests the context menu only for the menu key.
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        RequestMenu();
        return;
    }
    if (!UseClipboard(*event) && !KeyInput::Deliver(*fImpl, *event))
        event->ignore();
}

void ViewPane::focusInEvent(QFocusEvent*)
{
    fImpl->InvalidateAll();
}

void ViewPane::focusOutEvent(QFocusEvent*)
{
    fImpl->InvalidateAll();
}

void ViewPane::contextMenuEvent(QContextMenuEvent* event)
{
    // A mouse click arrives as a press of its button.
    if (event->reason() == QContextMenuEvent::Keyboard)
        RequestMenu();
}

} // namespace kits
