// SPDX-License-Identifier: MIT
#include "kits/interface/Screen.h"

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/platform/DesktopColor.h"

BScreen::BScreen()
    : BScreen(nullptr)
{
}

BScreen::BScreen(const BWindow* window)
{
    const kits::ScreenList::Screen screen =
        kits::ScreenList::Nearest(window != nullptr ? kits::ToPixels(window->Frame()) : kits::PixelRect{});
    fFrame = kits::FromPixels(screen.frame);
}

rgb_color BScreen::DesktopColor() const
{
    return kits::DesktopColor::Get();
}

void BScreen::AskDesktopColor(const BMessage& message, const BMessenger& target)
{
    kits::DesktopColor::Ask([answer = message, target](rgb_color color) mutable {
        kits::kColorField.Add(&answer, color);
        target.SendMessage(&answer);
    });
}

void BScreen::SetDesktopColor(rgb_color color, bool permanent)
{
    kits::DesktopColor::Set(color, permanent);
}

void BScreen::RestoreDesktop()
{
    kits::DesktopColor::Restore();
}

std::vector<BRect> kits::ScreenFrames(bool withoutPanels)
{
    std::vector<BRect> frames;
    for (const ScreenList::Screen& screen : ScreenList::All())
        frames.push_back(FromPixels(withoutPanels ? screen.available : screen.frame));
    return frames;
}
