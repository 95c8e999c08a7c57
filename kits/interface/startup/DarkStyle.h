// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

#include <map>

namespace kits {

/// The toolkit's own style with frames that are visible on dark panels.
///
/// That style draws frames, hash marks and check boxes in a shade darker than the panel, whatever the palette says: on
/// a dark panel they disappear. Here they are lighter than the panel, at least three times as bright by the measure of
/// WCAG (contrast 3:1). On light panels nothing changes. Main thread.
class DarkStyle : public QProxyStyle {
public:
    /// Makes it the application's style if that is the toolkit's own, once; desktops that bring a style of their own
    /// keep it. Call it before the palette is set: the toolkit may take another palette with the style.
    static void Install();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

    /// Returns the contrast of two colours as WCAG 2.1 defines it, from 1 to 21.
    static double Contrast(const QColor& one, const QColor& other);

private:
    class FramedPalette;

    DarkStyle();
    const QPalette& Framed(const QPalette& palette) const;

    /// By the key of the palette from which each was made: the style caches pictures by the key of the palette that it
    /// gets.
    mutable std::map<qint64, QPalette> fFramed;
};

} // namespace kits
