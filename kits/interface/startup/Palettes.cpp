// SPDX-License-Identifier: MIT
#include "kits/interface/startup/Palettes.h"

namespace kits::Palettes {

namespace {

constexpr QColor kPanel(216, 216, 216);
constexpr QColor kControl(232, 232, 232);
constexpr QColor kHighlight(53, 132, 228);

void PutPanels(QPalette& set)
{
    set.setColor(QPalette::Window, kPanel);
    set.setColor(QPalette::Button, kControl);
    set.setColor(QPalette::Midlight, QColor(228, 228, 228));
    set.setColor(QPalette::Mid, QColor(176, 176, 176));
    set.setColor(QPalette::Dark, QColor(148, 148, 148));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        set.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
}

} // namespace

QPalette LightPanels()
{
    QPalette set;
    PutPanels(set);
    return set;
}

QPalette Light()
{
    QPalette set(kControl, kPanel);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        set.setColor(role, Qt::black);
    set.setColor(QPalette::Base, Qt::white);
    set.setColor(QPalette::AlternateBase, QColor(246, 246, 246));
    set.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    set.setColor(QPalette::PlaceholderText, QColor(128, 128, 128));
    set.setColor(QPalette::Light, Qt::white);
    set.setColor(QPalette::Shadow, QColor(105, 105, 105));
    set.setColor(QPalette::Highlight, kHighlight);
    set.setColor(QPalette::HighlightedText, Qt::white);
    set.setColor(QPalette::Link, QColor(26, 95, 180));
    set.setColor(QPalette::BrightText, Qt::white);
    PutPanels(set);
    return set;
}

QPalette Dark()
{
    const QColor text(230, 230, 230);
    const QColor dim(138, 138, 138);
    QPalette set(QColor(76, 76, 76), QColor(54, 54, 54));
    const auto put = [&set](QPalette::ColorRole role, const QColor& color) { set.setColor(role, color); };
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        put(role, text);
        set.setColor(QPalette::Disabled, role, dim);
    }
    put(QPalette::Base, QColor(28, 28, 28));
    put(QPalette::AlternateBase, QColor(38, 38, 38));
    put(QPalette::ToolTipBase, QColor(70, 70, 70));
    put(QPalette::PlaceholderText, dim);
    put(QPalette::Light, QColor(104, 104, 104));
    put(QPalette::Midlight, QColor(88, 88, 88));
    put(QPalette::Mid, QColor(36, 36, 36));
    put(QPalette::Dark, QColor(28, 28, 28));
    put(QPalette::Shadow, QColor(12, 12, 12));
    put(QPalette::Highlight, kHighlight);
    put(QPalette::HighlightedText, Qt::white);
    put(QPalette::Link, QColor(98, 160, 234));
    put(QPalette::BrightText, Qt::white);
    return set;
}

} // namespace kits::Palettes
