// SPDX-License-Identifier: MIT
#include "kits/interface/platform/DesktopColor.h"

#include "kits/application/MainThread.h"
#include "kits/interface/platform/Display.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <utility>

namespace kits::DesktopColor {

namespace {

/// If the desktop takes longer than this (in milliseconds), the answer is the last known colour.
constexpr int kLongestAnswer = 100;

/// Not destroyed automatically: a process that calls exit() somewhere leaves its thread as it is.
DesktopWatch* sWatch = nullptr;
DesktopWatch::Maker sTestMaker;

/// Nothing lies below a desktop that could shine through.
rgb_color Opaque(rgb_color color)
{
    color.alpha = 255;
    return color;
}

/// Windows on the desktop may be filled with its colour.
void RepaintWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        window->update();
}

std::string MainScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->name().toStdString() : "";
}

DesktopWatch& Watch()
{
    if (sWatch == nullptr) {
        DesktopWatch::Maker make = sTestMaker;
        if (make == nullptr && (Display::IsX11() || Display::IsWayland()))
            make = [isX11 = Display::IsX11(), screen = MainScreen()] { return MakeDesktopBackend(isX11, screen); };
        sWatch = new DesktopWatch(std::move(make), kUnknown, [] { RunOnMainThread(RepaintWindows); });
    }
    return *sWatch;
}

} // namespace

rgb_color Get()
{
    return Watch().Get();
}

void Ask(std::function<void(rgb_color)> answer)
{
    const auto question = std::make_shared<std::function<void(rgb_color)>>(std::move(answer));
    const auto settle = [question](rgb_color color) {
        if (const auto waiting = std::exchange(*question, nullptr))
            waiting(color);
    };
    Watch().Ask([settle](rgb_color color) { RunOnMainThread([settle, color] { settle(color); }); });
    QTimer::singleShot(kLongestAnswer, qApp, [settle] { settle(sWatch != nullptr ? sWatch->Get() : kUnknown); });
}

void Set(rgb_color color, bool permanent)
{
    Watch().Set(Opaque(color), permanent);
}

void Change(rgb_color color)
{
    Watch().Change(Opaque(color));
}

void Restore()
{
    if (sWatch != nullptr || DesktopKept::Exists())
        Watch().Restore();
}

void SetMaker(DesktopWatch::Maker make)
{
    sTestMaker = std::move(make);
}

void Stop()
{
    delete std::exchange(sWatch, nullptr);
}

} // namespace kits::DesktopColor
