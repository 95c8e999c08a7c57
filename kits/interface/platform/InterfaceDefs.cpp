// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceDefs.h"

#include "kits/application/MainThread.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace {

rgb_color FromQt(const QColor& color)
{
    return make_color(static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
                      static_cast<uint8>(color.blue()));
}

QPalette::ColorRole RoleOf(color_which which)
{
    switch (which) {
    case B_PANEL_TEXT_COLOR:
        return QPalette::WindowText;
    case B_DOCUMENT_BACKGROUND_COLOR:
        return QPalette::Base;
    case B_DOCUMENT_TEXT_COLOR:
        return QPalette::Text;
    case B_CONTROL_BACKGROUND_COLOR:
        return QPalette::Button;
    case B_CONTROL_TEXT_COLOR:
        return QPalette::ButtonText;
    case B_KEYBOARD_NAVIGATION_COLOR:
        return QPalette::Highlight;
    case B_TOOL_TIP_BACKGROUND_COLOR:
        return QPalette::ToolTipBase;
    case B_TOOL_TIP_TEXT_COLOR:
        return QPalette::ToolTipText;
    default:
        return QPalette::Window;
    }
}

} // namespace

rgb_color ui_color(color_which which)
{
    return FromQt(QGuiApplication::palette().color(QPalette::Active, RoleOf(which)));
}

status_t beep()
{
    kits::RunOnMainThread([] {
        if (qApp != nullptr)
            QApplication::beep();
    });
    return B_OK;
}
