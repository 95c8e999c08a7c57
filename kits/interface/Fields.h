// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/support/Color.h"

/// The fields of this kit's archives and messages. The comment on each class names the fields of its messages.

namespace kits {

// Archives.

/// The place of a view in its parent, or of a window on the screen. A rectangle without pixels has width or height -1.
inline const Field<BRect> kFrameField("_frame", -1, 32766, BRect(0, 0, 0, 0));
/// A window's workspaces.
inline const Field<int32> kWorkspacesField("_wspace", -kMostNumber - 1.0, kMostNumber);
/// A view's high, low and view colour, as alpha, red, green and blue from the highest byte.
inline const Field<int32> kPenColorsField("_color", -kMostNumber - 1.0, kMostNumber, 0, Outside::kLeftOut, 3);

// Input by pointer and keyboard, and drags.

inline const Field<BPoint> kWhereField("where", -kFarthestPlace, kFarthestPlace);
/// From the left top corner of the dragged object to the pointer.
inline const Field<BPoint> kOffsetField("offset", -kFarthestPlace, kFarthestPlace);
inline const Field<int32> kButtonsField("buttons", 0, kMostNumber);
inline const Field<int32> kModifiersField("modifiers", 0, kMostNumber);
inline const Field<int32> kClicksField("clicks", 1, kMostNumber, 1);
/// The text that a key types, and the toolkit's number of the key.
inline const Field<std::string> kBytesField("bytes", 1, 1 << 20);
inline const Field<int32> kKeyField("key", -kMostNumber - 1.0, kMostNumber);
/// system_time() of the event.
inline const Field<int64> kWhenField("when", 0, 1e18);
inline const Field<std::string_view, B_MIME_TYPE> kPlainTextField("text/plain", 1, kMostNumber);
inline const Field<rgb_color, B_RGB_COLOR_TYPE> kColorField("RGBColor");

// Messages of controls, lists and menus.

inline const Field<void*> kSourceField("source");
/// The index of an item in its menu, -1 for an item in no menu; and the index of the selected row.
inline const Field<int32> kIndexField("index", -1, kMostNumber, -1);
/// The button that ended an alert, from 0.
inline const Field<int32> kWhichField("which", 0, 2);
/// In B_MINIMIZE: false restores the window.
inline const Field<bool> kMinimizeField("minimize", true);
/// In B_WINDOW_ACTIVATED.
inline const Field<bool> kActiveField("active");
/// In B_QUIT_REQUESTED: the user pressed the key for it.
inline const Field<bool> kShortcutField("shortcut");

} // namespace kits
