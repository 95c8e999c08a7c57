// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

class BMessage;

/// Makes a message from JSON that a person can read and write.
///
/// An object is a message, its members are the fields. The name of a member is the field's, a colon, a blank and the
/// type; with "[]" behind the type the value is an array of the field's values:
///
///     {
///         "what": "pref",
///         "// a remark": "any value",
///         "Selection: int32": 1,
///         "Frame: rect": [0, 0, 300, 150],
///         "Chart: message[]": [{ "Title: string": "Memory" }, { "Title: string": "Load" }]
///     }
///
/// Types: bool; int8, int16, int32, int64; float, double; string; point [x, y]; rect [left, top, right, bottom];
/// message; color, "#rrggbb" (opaque) or "#rrggbbaa", which is the four bytes red, green, blue, alpha of type
/// B_RAW_TYPE. "what" is the code of the message, four characters; 0 when missing. Members whose names begin with "//"
/// are remarks.
/// @param message  emptied first; undefined after an error
/// @param error    says what is wrong and where
/// @return whether it could be made
bool MessageFromJson(std::string_view json, BMessage* message, std::string* error);
