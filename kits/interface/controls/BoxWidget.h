// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

#include <QString>
#include <QWidget>

namespace kits {

/// The frame of a box, optionally with a label. It lies over the view's own colour and below its children, is as large
/// as its parent widget, and lets the mouse through.
class BoxWidget : public QWidget {
public:
    explicit BoxWidget(QWidget* parent);

    void Take(border_style border, const QString& label);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    border_style fBorder = B_NO_BORDER;
    QString fLabel;
};

} // namespace kits
