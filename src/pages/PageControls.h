// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"
#include "kits/support/SupportDefs.h"

#include <string>

class BHandler;
class BMenuField;
class BTextControl;
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
float FieldWidth(BMenuField* field, float part);
float FieldWidth(BTextControl* field, float part);

/// "Antialiasing 25 %": the position of a slider as a label, its hundredth part cut off.
std::string PercentLabel(const char* name, float position);
