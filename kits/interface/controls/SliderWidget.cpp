// SPDX-License-Identifier: MIT
#include "kits/interface/controls/SliderWidget.h"

#include <QEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QStyleOptionSlider>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int kSmallestBar = 80;
constexpr int kTextGap = 8;

/// Returns the space between the label and the end of the bar: about a letter.
int AfterLabel(const QWidget& slider)
{
    return slider.fontMetrics().averageCharWidth();
}

} // namespace

namespace kits {

void SliderBar::SetMarks(hash_mark_location where, int32 count)
{
    fMarks = count;
    if (count < 2)
        where = B_HASH_MARKS_NONE;
    setTickPosition(where == B_HASH_MARKS_TOP      ? TicksAbove
                    : where == B_HASH_MARKS_BOTTOM ? TicksBelow
                    : where == B_HASH_MARKS_BOTH   ? TicksBothSides
                                                   : NoTicks);
    update();
}

void SliderBar::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    if (tickPosition() != NoTicks) {
        option.subControls |= QStyle::SC_SliderTickmarks;
        // Qt counts whole steps between marks. Multiplying the range by the number of gaps spaces any number of marks
        // evenly.
        const qint64 gaps = fMarks - 1;
        const qint64 range = static_cast<qint64>(maximum()) - minimum();
        if (range * gaps <= INT_MAX) {
            option.minimum = 0;
            option.maximum = static_cast<int>(range * gaps);
            option.sliderPosition = static_cast<int>((static_cast<qint64>(sliderPosition()) - minimum()) * gaps);
            option.tickInterval = static_cast<int>(range);
        }
    }
    if (isSliderDown()) {
        option.activeSubControls = QStyle::SC_SliderHandle;
        option.state |= QStyle::State_Sunken;
    }
    painter.drawComplexControl(QStyle::CC_Slider, option);
}

void SliderBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QStyleOptionSlider option;
        initStyleOption(&option);
        const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
        if (!handle.contains(event->position().toPoint())) {
            const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
            const int space = groove.width() - handle.width();
            const int place = qRound(event->position().x()) - groove.left() - handle.width() / 2;
            setSliderDown(true);
            setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(), place, space, option.upsideDown));
            initStyleOption(&option);
            const QRect moved = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
            QMouseEvent onThumb(QEvent::MouseButtonPress, moved.center(), event->globalPosition(), event->button(),
                                event->buttons(), event->modifiers());
            QSlider::mousePressEvent(&onThumb);
            event->accept();
            return;
        }
    }
    QSlider::mousePressEvent(event);
}

SliderWidget::SliderWidget()
    : fBar(new SliderBar)
    , fLabel(new QLabel(this))
    , fMin(new QLabel(this))
    , fMax(new QLabel(this))
{
    fBar->setParent(this);
    setFocusProxy(fBar);
    for (QLabel* text : {fLabel, fMin, fMax}) {
        text->setTextFormat(Qt::PlainText);
        text->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    fMax->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void SliderWidget::SetTexts(const QString& label, const QString& min, const QString& max)
{
    fLabel->setText(label);
    fMin->setText(min);
    fMax->setText(max);
    for (QLabel* text : {fLabel, fMin, fMax})
        text->setVisible(!text->text().isEmpty());
    fBar->setAccessibleName(label);
    LayOut();
}

QSize SliderWidget::sizeHint() const
{
    const int line = fontMetrics().height();
    int width = std::max(kSmallestBar, fLabel->sizeHint().width() + AfterLabel(*this) + kTextGap);
    int height = line + fBar->sizeHint().height();
    if (!fMin->text().isEmpty() || !fMax->text().isEmpty()) {
        width = std::max(width, fMin->sizeHint().width() + fMax->sizeHint().width() + kTextGap);
        height += line;
    }
    return {width, height};
}

void SliderWidget::LayOut()
{
    const int line = fontMetrics().height();
    const int bar = fBar->sizeHint().height();
    fLabel->setGeometry(0, 0, width() - AfterLabel(*this), line);
    fBar->setGeometry(0, line, width(), bar);
    const int end = fMax->sizeHint().width();
    fMin->setGeometry(0, line + bar, width() - end, line);
    fMax->setGeometry(width() - end, line + bar, end, line);
}

void SliderWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    LayOut();
}

void SliderWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        LayOut();
}

} // namespace kits
