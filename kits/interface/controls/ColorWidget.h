// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/controls/WheelWithFocus.h"
#include "kits/support/Color.h"

#include <QSlider>
#include <QWidget>

#include <array>
#include <functional>

class QLabel;
class QSpinBox;

namespace kits {

/// A slider for one component of a colour, from 0 to 255, over the colours that the other components form with it.
class ColorRamp : public WheelWithFocus<QSlider> {
public:
    /// @param part  0 red, 1 green, 2 blue
    explicit ColorRamp(int part);

    /// The colour whose variations the ramp shows; its value follows.
    void Take(rgb_color color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// The colours lie within the frame.
    QRect Inside() const { return rect().adjusted(1, 1, -1, -1); }
    void GoTo(double x);

    int fPart;
    rgb_color fColor;
};

/// Three ramps, each with its letter and number to the right.
class ColorWidget : public QWidget {
public:
    /// @param picked  called with the new colour whenever the user changes it
    explicit ColorWidget(std::function<void(rgb_color)> picked);

    /// @param ramps  pixels of the three ramps together
    void SetRampSize(QSize ramps);
    /// Shows a colour without notifying anybody.
    void Take(rgb_color color);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void PartPicked(int part, int value);
    int NumberWidth() const;
    void LayOut();

    std::function<void(rgb_color)> fPicked;
    std::array<ColorRamp*, 3> fRamps;
    std::array<QLabel*, 3> fLetters;
    std::array<QSpinBox*, 3> fNumbers;
    QSize fRampSize;
    rgb_color fColor;
};

} // namespace kits
