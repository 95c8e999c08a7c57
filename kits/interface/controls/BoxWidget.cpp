// SPDX-License-Identifier: MIT
#include "kits/interface/controls/BoxWidget.h"

#include <QStyleOptionFrame>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace kits {

void BoxWidget::Take(border_style border, const QString& label)
{
    fBorder = border;
    fLabel = label;
    update();
}

void BoxWidget::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    if (!fLabel.isEmpty()) {
        QStyleOptionGroupBox option;
        option.initFrom(this);
        option.text = fLabel;
        option.textColor = palette().color(QPalette::WindowText);
        option.lineWidth = 1;
        option.subControls = QStyle::SC_GroupBoxLabel;
        if (fBorder != B_NO_BORDER)
            option.subControls |= QStyle::SC_GroupBoxFrame;
        painter.drawComplexControl(QStyle::CC_GroupBox, option);
        return;
    }
    if (fBorder == B_NO_BORDER)
        return;
    QStyleOptionFrame option;
    option.initFrom(this);
    option.frameShape = fBorder == B_PLAIN_BORDER ? QFrame::Box : QFrame::StyledPanel;
    option.lineWidth = 1;
    option.state.setFlag(QStyle::State_Sunken, fBorder == B_FANCY_BORDER);
    painter.drawControl(QStyle::CE_ShapedFrame, option);
}

} // namespace kits
