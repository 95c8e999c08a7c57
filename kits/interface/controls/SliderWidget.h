// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Slider.h"
#include "kits/interface/controls/WheelWithFocus.h"

#include <QSlider>
#include <QWidget>

class QLabel;

namespace kits {

/// The bar of a slider: Qt's, with any number of evenly spaced hash marks, and with a thumb that moves to the place
/// where the bar is pressed.
class SliderBar : public WheelWithFocus<QSlider> {
public:
    SliderBar() { setOrientation(Qt::Horizontal); }

    /// @param count  fewer than two show none
    void SetMarks(hash_mark_location where, int32 count);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    int32 fMarks = 0;
};

/// A slider with its texts: the label above the bar, the texts of the limits below its ends.
class SliderWidget : public QWidget {
public:
    SliderWidget();

    SliderBar* Bar() const { return fBar; }
    void SetTexts(const QString& label, const QString& min, const QString& max);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void LayOut();

    SliderBar* fBar;
    QLabel* fLabel;
    QLabel* fMin;
    QLabel* fMax;
};

} // namespace kits
