// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

#include <QString>
#include <QWidget>

namespace kits {

/// The frame of a box, optionally with a label.
class BoxWidget : public QWidget {
public:
    void Take(border_style border, const QString& label);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    border_style fBorder = B_NO_BORDER;
    QString fLabel;
};

} // namespace kits
