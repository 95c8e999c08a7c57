// SPDX-License-Identifier: MIT
#include "kits/interface/core/ScreenList.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cstdlib>

namespace kits::ScreenList {

namespace {

std::vector<Screen> sScreens;

PixelRect FromQt(const QRect& rect)
{
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

void WatchOne(QScreen* screen)
{
    QObject::connect(screen, &QScreen::geometryChanged, qGuiApp, Read);
    QObject::connect(screen, &QScreen::availableGeometryChanged, qGuiApp, Read);
}

int64 Area(const PixelRect& rect)
{
    return rect.IsEmpty() ? 0 : static_cast<int64>(rect.Width()) * rect.Height();
}

} // namespace

void Read()
{
    std::vector<Screen> screens;
    const QScreen* main = QGuiApplication::primaryScreen();
    for (const QScreen* screen : QGuiApplication::screens()) {
        const Screen known{FromQt(screen->geometry()), FromQt(screen->availableGeometry())};
        screens.insert(screen == main ? screens.begin() : screens.end(), known);
    }
    // Without any screen, the last ones are kept: windows have to be somewhere.
    if (screens.empty() || screens == sScreens)
        return;
    const bool isFirst = sScreens.empty();
    sScreens = std::move(screens);
    if (isFirst)
        return;
    BMessage message(B_SCREEN_CHANGED);
    message.SetNewestWins(true);
    be_app_messenger.SendMessage(&message);
}

const std::vector<Screen>& All()
{
    return sScreens;
}

Screen Nearest(const PixelRect& rect)
{
    Screen nearest;
    int64 most = -1;
    for (const Screen& screen : sScreens) {
        const int64 shown = Area(Intersection(screen.frame, rect));
        if (shown > most) {
            most = shown;
            nearest = screen;
        }
    }
    return nearest;
}

BRect PutOnScreen(const BRect& rect, const std::vector<Screen>& screens)
{
    const PixelRect pixels = ToPixels(rect);
    const bool isSeen = std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        return !Intersection(screen.frame, pixels).IsEmpty();
    });
    if (isSeen || screens.empty())
        return rect;
    const PixelRect& room = screens.front().available;
    const int32 left = room.left + std::max(0, (room.Width() - pixels.Width()) / 2);
    const int32 top = room.top + std::max(0, (room.Height() - pixels.Height()) / 2);
    BRect moved = rect;
    moved.OffsetTo(static_cast<float>(left), static_cast<float>(top));
    return moved;
}

PixelRect PutInReach(const PixelRect& content, int32 titleHeight, const std::vector<Screen>& screens)
{
    // The part that the user can take hold of: as high as the title, and this much of its width.
    constexpr int32 kLeastHeight = 8;
    constexpr int32 kLeastWidth = 64;
    const int32 width = std::min(kLeastWidth, content.Width());
    const PixelRect hold{content.left, content.top - titleHeight, content.right,
                         content.top - titleHeight + std::max(titleHeight, kLeastHeight)};
    const Screen* nearest = nullptr;
    int64 least = 0;
    PixelRect moved = content;
    for (const Screen& screen : screens) {
        const PixelRect& room = screen.available;
        const PixelRect seen = Intersection(hold, room);
        if (seen.Height() >= hold.Height() && seen.Width() >= width)
            return content;
        const int32 left = std::max(std::min(content.left, room.right - content.Width()), room.left);
        const int32 top = std::max(std::min(content.top, room.bottom - content.Height()), room.top + titleHeight);
        const int64 distance =
            std::abs(static_cast<int64>(left) - content.left) + std::abs(static_cast<int64>(top) - content.top);
        if (nearest == nullptr || distance < least) {
            nearest = &screen;
            least = distance;
            moved = {left, top, left + content.Width(), top + content.Height()};
        }
    }
    return moved;
}

PixelRect PutWithin(const PixelRect& content, int32 titleHeight, const PixelRect& room)
{
    const auto start = [](int32 wanted, int32 extent, int32 first, int32 last) {
        return extent > last - first ? first + (last - first - extent) / 2
                                     : std::max(std::min(wanted, last - extent), first);
    };
    const int32 left = start(content.left, content.Width(), room.left, room.right);
    const int32 top = start(content.top, content.Height(), room.top + titleHeight, room.bottom);
    return {left, top, left + content.Width(), top + content.Height()};
}

void Watch()
{
    Read();
    for (QScreen* screen : QGuiApplication::screens())
        WatchOne(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, qGuiApp, [](QScreen* screen) {
        WatchOne(screen);
        Read();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, qGuiApp, Read);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, qGuiApp, Read);
}

void Forget()
{
    sScreens.clear();
}

} // namespace kits::ScreenList
