#pragma once

#include "kits/support/Point.h"
#include "kits/support/SupportDefs.h"

#include <algorithm>
#include <string>

class BHandler;
class BMenu;
class BView;

/// Small things that several pages do with their controls.

/// Between two controls that stand as close as a page lets them; pixels.
inline constexpr float kSmallestGap = 2;

/// Between a label and what it belongs to; pixels.
inline constexpr float kBesideLabel = 8;

/// Posts a message without fields to a page, as if one of its controls had sent it. A page that does not show gets
/// nothing: its controls are filled when it is shown.
void PostToPage(BHandler* page, uint32 code);

/// What a control asks for: x is the width, y the height.
BPoint PreferredSizeOf(BView* control);

/// The width that a menu or text field needs so that neither its label nor the rest is cut, when the label gets one
/// `part`th of it.
template <typename Field> float FieldWidth(Field* field, float part)
{
    const float label = field->StringWidth(field->Label()) + kBesideLabel;
    const float rest = PreferredSizeOf(field).x - field->Divider();
    return std::max(label * part, rest / (1 - 1 / part));
}

/// "Antialiasing 25 %": the position of a slider as a label, its hundredth part cut off.
std::string PercentLabel(const char* name, float position);
