#include "kits/interface/desktop/DesktopColor.h"

#include "kits/application/MainThread.h"
#include "kits/interface/desktop/DesktopWatch.h"

#include <QApplication>
#include <QWidget>

namespace kits::DesktopColor {

namespace {

/// Not destroyed by itself: a process that calls exit() somewhere leaves its thread as it is.
DesktopWatch* sWatch = nullptr;

/// Whether the toolkit draws on a desktop at all.
bool HasDesktop(const QString& platform)
{
    return platform == QStringLiteral("xcb") || platform.startsWith(QStringLiteral("wayland"));
}

/// Windows that stand on the desktop may be filled with its colour.
void RepaintWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        window->update();
}

DesktopWatch& Watch()
{
    if (sWatch == nullptr) {
        const QString platform = QGuiApplication::platformName();
        DesktopWatch::Maker make;
        if (HasDesktop(platform))
            make = [name = platform.toStdString()] { return MakeDesktopBackend(name); };
        sWatch = new DesktopWatch(std::move(make), kUnknown, [] { RunOnMainThread(RepaintWindows); });
    }
    return *sWatch;
}

} // namespace

rgb_color Get()
{
    return Watch().Get();
}

void Set(rgb_color color, bool permanent)
{
    // A desktop has nothing below it that could shine through.
    color.alpha = 255;
    Watch().Set(color, permanent);
}

void Restore()
{
    if (sWatch != nullptr || DesktopKept::Exists())
        Watch().Restore();
}

void Forget()
{
    delete std::exchange(sWatch, nullptr);
}

} // namespace kits::DesktopColor
