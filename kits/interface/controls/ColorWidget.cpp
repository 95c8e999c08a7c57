// SPDX-License-Identifier: MIT
#include "kits/interface/controls/ColorWidget.h"

#include "kits/application/Language.h"
#include "kits/interface/core/Content.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyleOptionFocusRect>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

constexpr int kGap = 4;
constexpr int kPageStep = 16;
constexpr std::array<const char*, 3> kNames = {"Red", "Green", "Blue"};

QColor WithPart(rgb_color color, int part, int value)
{
    const std::array<int, 3> parts = {part == 0 ? value : color.red, part == 1 ? value : color.green,
                                      part == 2 ? value : color.blue};
    return {parts[0], parts[1], parts[2]};
}

} // namespace

namespace kits {

ColorRamp::ColorRamp(int part)
    : fPart(part)
{
    setOrientation(Qt::Horizontal);
    setRange(0, 255);
    setPageStep(kPageStep);
    setAccessibleName(ToText(Translate(kNames[static_cast<std::size_t>(part)])));
}

void ColorRamp::Take(rgb_color color)
{
    const QSignalBlocker silent(this);
    fColor = color;
    setValue(fPart == 0 ? color.red : fPart == 1 ? color.green : color.blue);
    update();
}

void ColorRamp::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.frameShape = QFrame::Box;
    frame.lineWidth = 1;
    style()->drawControl(QStyle::CE_ShapedFrame, &frame, &painter, this);

    const QRect inside = Inside();
    QLinearGradient colors(inside.left(), 0, inside.right() + 1, 0);
    colors.setColorAt(0, WithPart(fColor, fPart, 0));
    colors.setColorAt(1, WithPart(fColor, fPart, 255));
    painter.setOpacity(isEnabled() ? 1 : 0.4);
    painter.fillRect(inside, colors);

    // A bar in two colours is visible on any colour.
    const int x = inside.left() + value() * (inside.width() - 1) / 255;
    painter.fillRect(QRect(x - 1, inside.top(), 3, inside.height()).intersected(inside), Qt::black);
    painter.fillRect(QRect(x, inside.top() + 1, 1, inside.height() - 2), Qt::white);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void ColorRamp::GoTo(double x)
{
    const QRect inside = Inside();
    const double part = (x - inside.left()) / std::max(1, inside.width() - 1);
    setValue(qRound(std::clamp(part, 0.0, 1.0) * 255));
}

void ColorRamp::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    GoTo(event->position().x());
}

void ColorRamp::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        GoTo(event->position().x());
    else
        event->ignore();
}

void ColorRamp::mouseReleaseEvent(QMouseEvent* event)
{
    if (isSliderDown() && event->button() == Qt::LeftButton)
        setSliderDown(false);
    else
        event->ignore();
}

ColorWidget::ColorWidget(std::function<void(rgb_color)> picked)
    : fPicked(std::move(picked))
{
    for (int part = 0; part < 3; part++) {
        const auto i = static_cast<std::size_t>(part);
        auto* ramp = new ColorRamp(part);
        ramp->setParent(this);
        auto* number = new QSpinBox(this);
        number->setRange(0, 255);
        number->setButtonSymbols(QAbstractSpinBox::NoButtons);
        number->setAlignment(Qt::AlignRight);
        number->setAccessibleName(ramp->accessibleName());
        auto* letter = new QLabel(QString(QLatin1Char(kNames[i][0])), this);
        letter->setAttribute(Qt::WA_TransparentForMouseEvents);
        connect(
            ramp, &QSlider::valueChanged, this, [this, part](int value) { PartPicked(part, value); });
        connect(number, &QSpinBox::valueChanged, this, [this, part](int value) { PartPicked(part, value); });
        fRamps[i] = ramp;
        fLetters[i] = letter;
        fNumbers[i] = number;
    }
    setFocusProxy(fRamps[0]);
    for (std::size_t i = 1; i < fRamps.size(); i++) {
        setTabOrder(fNumbers[i - 1], fRamps[i]);
        setTabOrder(fRamps[i], fNumbers[i]);
    }
}

void ColorWidget::SetRampSize(QSize ramps)
{
    fRampSize = ramps;
    LayOut();
}

void ColorWidget::Take(rgb_color color)
{
    fColor = color;
    const std::array<int, 3> parts = {color.red, color.green, color.blue};
    for (std::size_t i = 0; i < parts.size(); i++) {
        fRamps[i]->Take(color);
        const QSignalBlocker silent(fNumbers[i]);
        if (fNumbers[i]->value() != parts[i])
            fNumbers[i]->setValue(parts[i]);
    }
}

void ColorWidget::PartPicked(int part, int value)
{
    const QColor color = WithPart(fColor, part, value);
    Take(make_color(static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
                    static_cast<uint8>(color.blue())));
    fPicked(fColor);
}

int ColorWidget::NumberWidth() const
{
    return fontMetrics().horizontalAdvance(QStringLiteral("2555")) + 10;
}

QSize ColorWidget::sizeHint() const
{
    const int letter = fontMetrics().horizontalAdvance(QLatin1Char('G'));
    const int rows = 3 * (fontMetrics().height() + kGap);
    return {fRampSize.width() + kGap + letter + kGap + NumberWidth(), std::max(fRampSize.height(), rows)};
}

void ColorWidget::LayOut()
{
    const int letter = fontMetrics().horizontalAdvance(QLatin1Char('G'));
    for (int row = 0; row < 3; row++) {
        const auto i = static_cast<std::size_t>(row);
        const int top = height() * row / 3;
        const int bottom = height() * (row + 1) / 3 - 1;
        int x = 0;
        fRamps[i]->setGeometry(x, top, fRampSize.width(), bottom - top);
        x += fRampSize.width() + kGap;
        fLetters[i]->setGeometry(x, top, letter, bottom - top);
        x += letter + kGap;
        fNumbers[i]->setGeometry(x, top, NumberWidth(), bottom - top);
    }
}

void ColorWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    LayOut();
}

} // namespace kits
