#pragma once

#include "kits/support/Point.h"
#include "kits/support/SupportDefs.h"

#include <string>

class BHandler;
class BMenu;
class BView;

/// Small things that several pages do with their controls.

/// Between two controls that stand as close as a page lets them; pixels.
inline constexpr float kSmallestGap = 2;

/// Posts a message without fields to a page, as if one of its controls had sent it. A page that does not show gets
/// nothing: its controls are filled when it is shown.
void PostToPage(BHandler* page, uint32 code);

/// What a control asks for: x is the width, y the height.
BPoint PreferredSizeOf(BView* control);

/// The number with this many decimals and a point, whatever the language: "0.21".
std::string FixedPoint(double number, int decimals);

/// "Antialiasing 25 %": the position of a slider as a label, its hundredth part cut off.
std::string PercentLabel(const char* name, float position);
