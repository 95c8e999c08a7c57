// SPDX-License-Identifier: MIT
#include "kits/interface/startup/DarkStyle.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace kits {

namespace {

const QString& OwnStyle()
{
    static const QString name = QStringLiteral("fusion");
    return name;
}

/// A little more than 3, because smoothly drawn frames lose some contrast.
constexpr double kFrameContrast = 3.6;
/// Percentage by which the style darkens the panel's colour for a frame.
constexpr int kStyleDarkens = 140;
constexpr size_t kMostPalettes = 64;

double Luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

bool IsDark(const QPalette& palette)
{
    return qGray(palette.color(QPalette::Window).rgb()) < 128;
}

/// Returns the darkest grey with enough contrast on the panel.
QColor FrameOn(const QColor& panel)
{
    int grey = qGray(panel.rgb());
    while (grey < 255 && DarkStyle::Contrast(QColor(grey, grey, grey), panel) < kFrameContrast)
        grey++;
    return {grey, grey, grey};
}

bool IsFramed(QStyle::PrimitiveElement element)
{
    constexpr QStyle::PrimitiveElement kFramed[] = {QStyle::PE_Frame,
                                                    QStyle::PE_FrameGroupBox,
                                                    QStyle::PE_FrameLineEdit,
                                                    QStyle::PE_PanelLineEdit,
                                                    QStyle::PE_PanelButtonCommand,
                                                    QStyle::PE_PanelButtonTool,
                                                    QStyle::PE_IndicatorCheckBox,
                                                    QStyle::PE_IndicatorRadioButton};
    return std::find(std::begin(kFramed), std::end(kFramed), element) != std::end(kFramed);
}

bool IsFramed(QStyle::ComplexControl control)
{
    return control == QStyle::CC_Slider || control == QStyle::CC_ComboBox || control == QStyle::CC_SpinBox;
}

/// Draws along the top and the sides of a tab that the style has drawn.
void DrawTabFrame(const QStyleOption& option, QPainter* painter)
{
    constexpr int kLower = 2; // than the selected one
    const QRect rect = option.rect.adjusted(0, option.state.testFlag(QStyle::State_Selected) ? 0 : kLower, -1, 0);
    painter->save();
    painter->setPen(FrameOn(option.palette.color(QPalette::Window)));
    const QPoint corners[] = {rect.bottomLeft(), rect.topLeft(), rect.topRight(), rect.bottomRight()};
    painter->drawPolyline(corners, static_cast<int>(std::size(corners)));
    painter->restore();
}

} // namespace

/// Replaces an option's palette for the duration of a drawing.
class DarkStyle::FramedPalette {
public:
    FramedPalette(const DarkStyle* style, const QStyleOption* option, bool isFramed)
        : fOption(isFramed && option != nullptr && IsDark(option->palette) ? const_cast<QStyleOption*>(option)
                                                                           : nullptr)
    {
        if (fOption == nullptr)
            return;
        fOwn = fOption->palette;
        fOption->palette = style->Framed(fOwn);
    }
    ~FramedPalette()
    {
        if (fOption != nullptr)
            fOption->palette = fOwn;
    }
    FramedPalette(const FramedPalette&) = delete;
    FramedPalette& operator=(const FramedPalette&) = delete;

private:
    QStyleOption* const fOption;
    QPalette fOwn;
};

DarkStyle::DarkStyle()
    : QProxyStyle(OwnStyle())
{
}

void DarkStyle::Install()
{
    const QStyle* style = QApplication::style();
    if (style->name().compare(OwnStyle(), Qt::CaseInsensitive) == 0 && dynamic_cast<const DarkStyle*>(style) == nullptr)
        QApplication::setStyle(new DarkStyle);
}

const QPalette& DarkStyle::Framed(const QPalette& palette) const
{
    const auto found = fFramed.find(palette.cacheKey());
    if (found != fFramed.end())
        return found->second;
    if (fFramed.size() >= kMostPalettes)
        fFramed.clear();
    QPalette framed = palette;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor frame = FrameOn(palette.color(group, QPalette::Window));
        const int panel = std::min(frame.red() * kStyleDarkens / 100 + 1, 255);
        framed.setColor(group, QPalette::Window, QColor(panel, panel, panel));
    }
    return fFramed[palette.cacheKey()] = framed;
}

void DarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    const FramedPalette framed(this, option, IsFramed(element));
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void DarkStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    const FramedPalette framed(this, option, element == CE_ShapedFrame);
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTabShape && IsDark(option->palette))
        DrawTabFrame(*option, painter);
}

void DarkStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const
{
    const FramedPalette framed(this, option, IsFramed(control));
    if (control != CC_Slider || !option->subControls.testFlag(SC_SliderTickmarks)) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // Together with the bar, the style draws the marks in the darker of the two colours it uses.
    auto* slider = const_cast<QStyleOptionComplex*>(option);
    const SubControls all = slider->subControls;
    slider->subControls = all & ~SubControls(SC_SliderTickmarks);
    QProxyStyle::drawComplexControl(control, slider, painter, widget);
    slider->subControls = SC_SliderTickmarks;
    QProxyStyle::drawComplexControl(control, slider, painter, widget);
    slider->subControls = all;
}

double DarkStyle::Contrast(const QColor& one, const QColor& other)
{
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace kits
