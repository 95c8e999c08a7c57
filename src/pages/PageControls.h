// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"
#include "kits/support/SupportDefs.h"

#include <string>

class BHandler;
class BMenuField;
class BTextControl;
class BView;

/// Small helpers for the controls of several pages.

/// The smallest gap between two controls of a page; pixels.
inline constexpr float kSmallestGap = 2;

/// The gap between a label and its control; pixels.
inline constexpr float kBesideLabel = 8;

/// Posts a message without fields to a page, as if one of its controls had sent it. A hidden page gets nothing: its
/// controls are filled when it is shown.
void PostToPage(BHandler* page, uint32 code);

/// Returns a control's preferred size: x is the width, y the height.
BPoint PreferredSizeOf(BView* control);

/// Returns the width at which neither the label nor the rest of a menu or text field is cut off, if the label gets one
/// `part`th of it.
float FieldWidth(BMenuField* field, float part);
float FieldWidth(BTextControl* field, float part);

/// Returns "Antialiasing 25 %": the position of a slider as a label, truncated to whole percent.
std::string PercentLabel(const char* name, float position);
