// SPDX-License-Identifier: MIT
#include "kits/interface/PopUpMenu.h"

#include "kits/application/MainThread.h"
#include "kits/interface/controls/MenuPart.h"

#include <QEventLoop>
#include <QGuiApplication>

#include <cmath>

namespace {

/// Returns whether the item is in the menu or a submenu of it; the item may be gone.
bool Holds(const BMenu& menu, const BMenuItem* item)
{
    if (menu.IndexOf(item) >= 0)
        return true;
    for (int32 i = 0; i < menu.CountItems(); i++) {
        const BMenu* submenu = menu.SubmenuAt(i);
        if (submenu != nullptr && Holds(*submenu, item))
            return true;
    }
    return false;
}

} // namespace

BPopUpMenu::BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked, menu_layout layout)
    : BMenu(name, layout)
{
    SetRadioMode(radioMode);
    SetLabelFromMarked(labelFromMarked);
}

BMenuItem* BPopUpMenu::Go(BPoint where, bool deliversMessage, bool openAnyway, bool async)
{
    if (!kits::IsMainThread() || fPart != nullptr || CountItems() == 0)
        return nullptr;
    if (!std::isfinite(where.x) || !std::isfinite(where.y))
        return nullptr;

    fPart = std::make_unique<kits::MenuPart>(this);
    QPointer<kits::MenuPart> part = fPart.get();
    if (!openAnyway && QGuiApplication::mouseButtons() != Qt::NoButton)
        part->CloseOnRelease();
    const QPoint place(static_cast<int>(std::floor(where.x)), static_cast<int>(std::floor(where.y)));

    if (async) {
        if (!deliversMessage)
            part->SetChosen([](BMenuItem*) {});
        part->Open(place, [this] { fPart.reset(); });
        return nullptr;
    }

    BMenuItem* chosen = nullptr;
    part->SetChosen([&chosen](BMenuItem* item) { chosen = item; });
    QEventLoop loop;
    QObject::connect(part, &QObject::destroyed, &loop, &QEventLoop::quit);
    {
        const kits::NestedLoop nested([part] {
            if (part)
                part->Menu()->close();
        });
        if (!nested.WasCanceled()) {
            part->Open(place, [&loop] { loop.quit(); });
            loop.exec();
        }
        if (nested.WasCanceled())
            chosen = nullptr;
    }
    // Code that ran in the loop may have deleted the menu, and this object with it.
    if (!part)
        return nullptr;
    fPart.reset();
    if (chosen == nullptr || !Holds(*this, chosen))
        return nullptr;
    if (deliversMessage)
        chosen->Invoke();
    return chosen;
}
