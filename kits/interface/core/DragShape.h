// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRegion>

class QPixmap;

namespace kits {

/// While it exists, the window that shows what is dragged has the shape of its picture. Where there is no compositor
/// the toolkit would lay what is transparent of it over a ground of its own. Main thread; nothing happens where windows
/// have no shapes.
class DragShape : public QObject {
public:
    explicit DragShape(const QPixmap& picture);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QRegion fShape;
};

} // namespace kits
