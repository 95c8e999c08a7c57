// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/support/Color.h"

/// The fields of this kit's archives and messages; what each class says about its messages names them.

namespace kits {

// Archives.

/// Of a view in its parent, of a window on the screen. A rectangle of no pixels is -1 wide or high.
inline const Field<BRect> kFrameField("_frame", -1, 32766, BRect(0, 0, 0, 0));
/// Of a window.
inline const Field<int32> kWorkspacesField("_wspace", -kMostNumber - 1.0, kMostNumber);
/// Of a view: high, low and view colour, as alpha, red, green and blue from the highest byte.
inline const Field<int32> kPenColorsField("_color", -kMostNumber - 1.0, kMostNumber, 0, Outside::kLeftOut, 3);

// What the pointer and the keyboard do, and what is dragged.

inline const Field<BPoint> kWhereField("where", -kFarthestPlace, kFarthestPlace);
/// From the left top corner of what is dragged to the pointer.
inline const Field<BPoint> kOffsetField("offset", -kFarthestPlace, kFarthestPlace);
inline const Field<int32> kButtonsField("buttons", 0, kMostNumber);
inline const Field<int32> kModifiersField("modifiers", 0, kMostNumber);
inline const Field<int32> kClicksField("clicks", 1, kMostNumber, 1);
/// What a key types, and the toolkit's number of the key.
inline const Field<std::string> kBytesField("bytes", 1, 1 << 20);
inline const Field<int32> kKeyField("key", -kMostNumber - 1.0, kMostNumber);
/// system_time() of the event.
inline const Field<int64> kWhenField("when", 0, 1e18);
inline const Field<std::string_view, B_MIME_TYPE> kPlainTextField("text/plain", 1, kMostNumber);
inline const Field<rgb_color, B_RGB_COLOR_TYPE> kColorField("RGBColor");

// What controls, lists and menus tell.

inline const Field<void*> kSourceField("source");
/// Of an item in its menu, -1 for one in none, and of each selected row.
inline const Field<int32> kIndexField("index", -1, kMostNumber, -1, Outside::kLeftOut, kMostNumber);
/// Of an alert's answer: the button, from 0.
inline const Field<int32> kWhichField("which", 0, 2);
/// Of B_MINIMIZE: false brings the window back.
inline const Field<bool> kMinimizeField("minimize", true);
/// Of B_WINDOW_ACTIVATED.
inline const Field<bool> kActiveField("active");
/// Of B_QUIT_REQUESTED: the user pressed the key for it.
inline const Field<bool> kShortcutField("shortcut");

} // namespace kits
