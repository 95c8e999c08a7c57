// SPDX-License-Identifier: MIT
#include "kits/interface/MenuField.h"

#include "kits/interface/Menu.h"
#include "kits/interface/controls/LabeledWidget.h"
#include "kits/interface/controls/MenuPart.h"
#include "kits/interface/controls/NarrowText.h"
#include "kits/interface/core/Content.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace {

/// Looks like a choice of the theme, and opens a menu of ours.
class PopUpButton : public QComboBox {
public:
    explicit PopUpButton(std::function<void()> open)
        : fOpen(std::move(open))
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    void showPopup() override { fOpen(); }

    QSize sizeHint() const override { return kits::NarrowText::Natural(this, Longest(), QComboBox::sizeHint()); }
    int NarrowestWidth() const
    {
        return Around() + kits::NarrowText::WidthOf(this, Longest(), kits::NarrowText::kNarrowest);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QComboBox::resizeEvent(event);
        kits::NarrowText::Fit(this, Longest(), width() - Around());
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            fOpen();
    }

    void mouseReleaseEvent(QMouseEvent*) override {}
    /// Turning the wheel would choose without the menu.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Select:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
        case Qt::Key_Up:
        case Qt::Key_F4:
            fOpen();
            break;
        default:
            event->ignore();
        }
    }

private:
    /// Returns the width that the theme draws beside the text.
    int Around() const
    {
        constexpr int kSomeWidth = 1000;
        QStyleOptionComboBox option;
        initStyleOption(&option);
        option.rect = QRect(0, 0, kSomeWidth, height());
        const QRect text = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
        return kSomeWidth - text.width() + 2;
    }
    /// Returns the choice that takes most room.
    QString Longest() const
    {
        QString longest;
        for (int i = 0; i < count(); i++)
            if (kits::NarrowText::WidthOf(this, itemText(i), QFont::Unstretched) >
                kits::NarrowText::WidthOf(this, longest, QFont::Unstretched))
                longest = itemText(i);
        return longest;
    }

    std::function<void()> fOpen;
};

} // namespace

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMenu* menu, uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, nullptr, resizingMode, flags)
    , fMenu(menu)
{
    fMenu->fField = this;
}

BMenuField::~BMenuField()
{
    // The widget opens the menu.
    fContent.reset();
    fMenu->fField = nullptr;
}

void BMenuField::AttachedToWindow()
{
    BControl::AttachedToWindow();
    TakePreferredHeight();
}

void BMenuField::SetDivider(float position)
{
    fDivider = position;
    WidgetNeedsUpdate();
}

float BMenuField::NarrowestMenuWidth()
{
    EnsureWidget()->ensurePolished();
    const auto* button = static_cast<PopUpButton*>(fContent->As<kits::LabeledWidget>()->Field());
    button->ensurePolished();
    return static_cast<float>(button->NarrowestWidth());
}

float BMenuField::NarrowestLabelWidth()
{
    EnsureWidget()->ensurePolished();
    return static_cast<float>(fContent->As<kits::LabeledWidget>()->NarrowestLabelWidth());
}

QWidget* BMenuField::MakeWidget()
{
    return new kits::LabeledWidget(new PopUpButton([this] { OpenMenu(); }));
}

void BMenuField::OpenMenu()
{
    if (fMenu->fPart != nullptr || fMenu->CountItems() == 0)
        return;
    QWidget* field = fContent->As<kits::LabeledWidget>()->Field();
    fMenu->fPart = std::make_unique<kits::MenuPart>(fMenu.get());
    kits::MenuPart& part = *fMenu->fPart;
    part.Menu()->setMinimumWidth(field->width());
    part.Open(field->mapToGlobal(QPoint(0, field->height())), [menu = fMenu.get()] { menu->fPart.reset(); });
    part.GoToMarked();
}

void BMenuField::UpdateWidget()
{
    auto* widget = fContent->As<kits::LabeledWidget>();
    auto* button = static_cast<PopUpButton*>(widget->Field());
    widget->setEnabled(IsEnabled() && fMenu->IsEnabled());
    QStringList choices;
    int shown = 0;
    if (fMenu->IsLabelFromMarked()) {
        const BMenuItem* marked = fMenu->FindMarked();
        shown = fMenu->IndexOf(marked);
        for (int32 i = 0; i < fMenu->CountItems(); i++)
            choices.append(kits::ToText(fMenu->ItemAt(i)->Label()));
    } else {
        choices.append(kits::ToText(fMenu->Name()));
    }
    button->clear();
    button->addItems(choices);
    button->setCurrentIndex(shown);
    widget->SetLabel(kits::ToText(Label()));
    widget->SetDivider(fDivider);
}
