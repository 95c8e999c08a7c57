// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceDefs.h"

#include "kits/application/MainThread.h"

#include <QApplication>
#include <QPalette>

#include <utility>

namespace {

constexpr std::pair<color_which, QPalette::ColorRole> kRoles[] = {
    {B_PANEL_BACKGROUND_COLOR, QPalette::Window},       {B_PANEL_TEXT_COLOR, QPalette::WindowText},
    {B_DOCUMENT_BACKGROUND_COLOR, QPalette::Base},      {B_DOCUMENT_TEXT_COLOR, QPalette::Text},
    {B_CONTROL_BACKGROUND_COLOR, QPalette::Button},     {B_CONTROL_TEXT_COLOR, QPalette::ButtonText},
    {B_KEYBOARD_NAVIGATION_COLOR, QPalette::Highlight}, {B_TOOL_TIP_BACKGROUND_COLOR, QPalette::ToolTipBase},
    {B_TOOL_TIP_TEXT_COLOR, QPalette::ToolTipText},
};

QPalette::ColorRole RoleOf(color_which which)
{
    for (const auto& [color, role] : kRoles)
        if (color == which)
            return role;
    return QPalette::Window;
}

} // namespace

rgb_color ui_color(color_which which)
{
    const QColor color = QGuiApplication::palette().color(QPalette::Active, RoleOf(which));
    return make_color(static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
                      static_cast<uint8>(color.blue()));
}

status_t beep()
{
    kits::RunOnMainThread([] {
        if (qApp != nullptr)
            QApplication::beep();
    });
    return B_OK;
}
