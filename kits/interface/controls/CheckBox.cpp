#include "kits/interface/CheckBox.h"

#include "kits/interface/controls/Content.h"

#include <QCheckBox>
#include <QSignalBlocker>

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode,
                     uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags)
{
}

BCheckBox::~BCheckBox() = default;

void BCheckBox::AttachedToWindow()
{
    BControl::AttachedToWindow();
    GrowToPreferred();
}

void BCheckBox::SetValue(int32 value)
{
    BControl::SetValue(value == B_CONTROL_OFF ? B_CONTROL_OFF : B_CONTROL_ON);
}

QWidget* BCheckBox::MakeWidget()
{
    auto* box = new QCheckBox;
    QObject::connect(box, &QCheckBox::clicked, fContent.get(), [this](bool checked) {
        StoreValue(checked ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
    });
    return box;
}

void BCheckBox::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* box = fContent->As<QCheckBox>();
    const QSignalBlocker silent(box);
    box->setText(kits::ToLabel(Label()));
    box->setChecked(Value() != B_CONTROL_OFF);
}
