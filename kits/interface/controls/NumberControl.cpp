// SPDX-License-Identifier: MIT
#include "kits/interface/NumberControl.h"

#include "kits/application/Message.h"
#include "kits/interface/controls/WheelWithFocus.h"
#include "kits/interface/core/Content.h"

#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

BNumberControl::BNumberControl(BRect frame, const char* name, BMessage* message, int32 minValue, int32 maxValue,
                               uint32 resizingMode, uint32 flags)
    : BControl(frame, "", "", message, resizingMode, flags)
    , fMinValue(std::min(minValue, maxValue))
    , fMaxValue(std::max(minValue, maxValue))
{
    SetAccessibleName(name);
    StoreValue(fMinValue);
}

void BNumberControl::AttachedToWindow()
{
    BControl::AttachedToWindow();
    TakePreferredHeight();
    GrowToPreferred();
}

void BNumberControl::SetValue(int32 value)
{
    BControl::SetValue(std::clamp(value, fMinValue, fMaxValue));
}

QWidget* BNumberControl::MakeWidget()
{
    auto* field = new kits::WheelWithFocus<QSpinBox>;
    QObject::connect(field, &QSpinBox::valueChanged, fContent.get(), [this](int value) {
        StoreValue(value);
        Invoke();
    });
    return field;
}

void BNumberControl::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* field = fContent->As<QSpinBox>();
    const QSignalBlocker silent(field);
    field->setRange(fMinValue, fMaxValue);
    // The text stays while the user types the same number differently, for example with a leading zero.
    if (field->value() != Value())
        field->setValue(Value());
}
