// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRegion>

class QPixmap;

namespace kits {

/// While it exists, the window that shows the drag has the shape of its picture. Without a compositor, the toolkit
/// would put a background behind the transparent parts. Main thread; does nothing where windows have no shapes.
class DragShape : public QObject {
public:
    explicit DragShape(const QPixmap& picture);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QRegion fShape;
};

} // namespace kits
