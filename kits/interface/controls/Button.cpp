// SPDX-License-Identifier: MIT
#include "kits/interface/Button.h"

#include "kits/interface/Window.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QPushButton>

void BButton::AttachedToWindow()
{
    BControl::AttachedToWindow();
    GrowToPreferred();
    if (fDefault)
        MakeDefault(true);
}

void BButton::MakeDefault(bool isDefault)
{
    const bool was = fDefault;
    fDefault = isDefault;
    WidgetNeedsUpdate();
    BWindow* window = Window();
    if (window == nullptr)
        return;
    BView* before = window->DefaultButton();
    if (isDefault) {
        auto* other = before == this ? nullptr : dynamic_cast<BButton*>(before);
        if (other != nullptr) {
            other->fDefault = false;
            other->WidgetNeedsUpdate();
        }
        kits::SetDefaultButton(window, this, [this] {
            if (fContent != nullptr)
                fContent->As<QPushButton>()->click();
        });
    } else if (was && before == this) {
        kits::SetDefaultButton(window, nullptr, nullptr);
    }
}

QWidget* BButton::MakeWidget()
{
    auto* button = new QPushButton;
    button->setAutoDefault(true);
    QObject::connect(button, &QPushButton::clicked, fContent.get(), [this] { Invoke(); });
    return button;
}

void BButton::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* button = fContent->As<QPushButton>();
    button->setText(kits::ToLabel(Label()));
    button->setDefault(fDefault);
}
