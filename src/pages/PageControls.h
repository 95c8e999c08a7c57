// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "src/prefs/PrefsLayout.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <iterator>
#include <string>

class BSlider;
class BTextControl;

/// Small helpers for the controls of several pages.

/// The frame of a control before the page lays it out.
inline constexpr BRect kSomewhere(0, 0, 5, 5);

/// The smallest gap between two controls of a page; pixels.
inline constexpr float kSmallestGap = 2;

/// The gap between a label and its control; pixels.
inline constexpr float kBesideLabel = 8;

/// Adds a slider to a page.
/// @param code       of its message, which has no fields
/// @param hashMarks  their number; 0 for none
BSlider* AddSlider(BView* page, const char* label, uint32 code, int32 minimum, int32 maximum, const char* minLabel,
                   const char* maxLabel, int32 hashMarks);

/// Adds a menu to a page.
/// @param choices  one item each: `label`, marked by TrLater(), and `code` of its message, which has no fields
/// @param marked   the index of the item that is marked
template <class Choices> BMenuField* AddMenuField(BView* page, const char* label, const Choices& choices, int32 marked)
{
    auto* menu = new BPopUpMenu("");
    for (const auto& choice : choices)
        menu->AddItem(new BMenuItem(Tr(choice.label), new BMessage(choice.code)));
    menu->ItemAt(marked)->SetMarked(true);
    auto* field = new BMenuField(kSomewhere, "", label, menu);
    page->AddChild(field);
    return field;
}

/// Returns the choice with this code; null if there is none.
template <class Choice, size_t count> const Choice* FindChoice(const Choice (&choices)[count], uint32 code)
{
    const Choice* found = std::ranges::find(choices, code, &Choice::code);
    return found != std::end(choices) ? found : nullptr;
}

/// Posts a message without fields to a page, as if one of its controls had sent it. A hidden page gets nothing: its
/// controls are filled when it is shown.
void PostToPage(BHandler* page, uint32 code);

/// Returns the width at which neither the label nor the rest of a menu or text field is cut off, if the label gets one
/// `part`th of it.
float FieldWidth(BMenuField* field, float part);
float FieldWidth(BTextControl* field, float part);

/// Returns "Antialiasing 25 %": the position of a slider as a label, truncated to whole percent.
std::string PercentLabel(const char* name, float position);
