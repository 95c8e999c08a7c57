// SPDX-License-Identifier: MIT
#include "kits/interface/Slider.h"

#include "kits/interface/controls/SliderWidget.h"
#include "kits/interface/core/Content.h"

#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

BSlider::BSlider(BRect frame, const char* name, const char* label, BMessage* message, int32 minValue, int32 maxValue,
                 thumb_style thumb, uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags)
    , fMinValue(std::min(minValue, maxValue))
    , fMaxValue(std::max(minValue, maxValue))
    , fThumb(thumb)
{
    StoreValue(fMinValue);
}

void BSlider::AttachedToWindow()
{
    BControl::AttachedToWindow();
    TakePreferredHeight();
}

void BSlider::SetValue(int32 value)
{
    BControl::SetValue(std::clamp(value, fMinValue, fMaxValue));
}

void BSlider::SetPosition(float position)
{
    const double part = position > 0 ? std::min(static_cast<double>(position), 1.0) : 0;
    const double range = static_cast<double>(fMaxValue) - fMinValue;
    SetValue(static_cast<int32>(fMinValue + std::floor(part * range + 0.5)));
}

float BSlider::Position() const
{
    const auto range = static_cast<float>(static_cast<double>(fMaxValue) - fMinValue);
    if (range == 0)
        return 0;
    return static_cast<float>(static_cast<double>(Value()) - fMinValue) / range;
}

void BSlider::GetLimits(int32* minValue, int32* maxValue) const
{
    *minValue = fMinValue;
    *maxValue = fMaxValue;
}

void BSlider::SetLimitLabels(const char* minLabel, const char* maxLabel)
{
    fMinLabel = minLabel == nullptr ? "" : minLabel;
    fMaxLabel = maxLabel == nullptr ? "" : maxLabel;
    WidgetNeedsUpdate();
}

void BSlider::SetHashMarks(hash_mark_location where)
{
    fHashMarks = where;
    WidgetNeedsUpdate();
}

void BSlider::SetHashMarkCount(int32 count)
{
    fHashMarkCount = count;
    WidgetNeedsUpdate();
}

QWidget* BSlider::MakeWidget()
{
    auto* widget = new kits::SliderWidget;
    QObject::connect(widget->Bar(), &QSlider::valueChanged, fContent.get(), [this](int value) {
        StoreValue(value);
        Invoke();
    });
    return widget;
}

void BSlider::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* widget = fContent->As<kits::SliderWidget>();
    kits::SliderBar* bar = widget->Bar();
    const QSignalBlocker silent(bar);
    bar->setRange(fMinValue, fMaxValue);
    bar->setPageStep(static_cast<int>(std::max<int64>(1, (static_cast<int64>(fMaxValue) - fMinValue) / 10)));
    bar->setValue(Value());
    bar->SetMarks(fHashMarks, fHashMarkCount);
    widget->SetTexts(kits::ToText(Label()), kits::ToText(fMinLabel.c_str()), kits::ToText(fMaxLabel.c_str()));
}
