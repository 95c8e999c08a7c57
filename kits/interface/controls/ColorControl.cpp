// SPDX-License-Identifier: MIT
#include "kits/interface/ColorControl.h"

#include "kits/interface/controls/ColorWidget.h"
#include "kits/interface/core/Content.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32 kCells = 256;
constexpr float kLargestCell = 100;

int32 Packed(rgb_color color)
{
    return static_cast<int32>(static_cast<uint32>(color.red) << 24 | static_cast<uint32>(color.green) << 16 |
                              static_cast<uint32>(color.blue) << 8);
}

float HeldCellSize(float size)
{
    return size >= 1 ? std::min(size, kLargestCell) : 1;
}

} // namespace

BColorControl::BColorControl(BPoint leftTop, color_control_layout layout, float cellSize, const char* name,
                             BMessage* message, bool)
    : BControl(BRect(leftTop, leftTop), name, "", message, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE)
    , fCellSize(HeldCellSize(cellSize))
    , fLayout(layout)
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BColorControl::SetValue(int32 value)
{
    BControl::SetValue(static_cast<int32>(static_cast<uint32>(value) & 0xFFFFFF00));
}

void BColorControl::SetValue(rgb_color color)
{
    SetValue(Packed(color));
}

rgb_color BColorControl::ValueAsColor() const
{
    const auto value = static_cast<uint32>(Value());
    return make_color(static_cast<uint8>(value >> 24), static_cast<uint8>(value >> 16 & 0xFF),
                      static_cast<uint8>(value >> 8 & 0xFF));
}

QWidget* BColorControl::MakeWidget()
{
    return new kits::ColorWidget([this](rgb_color color) {
        StoreValue(Packed(color));
        Invoke();
    });
}

void BColorControl::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* widget = fContent->As<kits::ColorWidget>();
    const int32 columns = std::clamp<int32>(fLayout, 1, kCells);
    widget->SetRampSize(QSize(static_cast<int>(std::lround(static_cast<float>(columns) * fCellSize)),
                              static_cast<int>(std::lround(static_cast<float>(kCells / columns) * fCellSize))));
    widget->Take(ValueAsColor());
}
