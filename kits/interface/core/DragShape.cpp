// SPDX-License-Identifier: MIT
#include "kits/interface/core/DragShape.h"

#include "kits/interface/platform/Display.h"

#include <QBitmap>
#include <QGuiApplication>
#include <QPixmap>
#include <QPlatformSurfaceEvent>
#include <QWindow>

namespace kits {

DragShape::DragShape(const QPixmap& picture)
{
    if (!Display::IsX11() || !picture.hasAlphaChannel())
        return;
    fShape = QRegion(picture.mask());
    qGuiApp->installEventFilter(this);
}

bool DragShape::eventFilter(QObject* watched, QEvent* event)
{
    // The toolkit makes this window when the drag begins, and another one for another screen, and announces neither.
    constexpr const char* kClass = "QShapedPixmapWindow";
    if (event->type() == QEvent::PlatformSurface && watched->inherits(kClass) && watched->isWindowType() &&
        static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
        static_cast<QWindow*>(watched)->setMask(fShape);
    return false;
}

} // namespace kits
