// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/support/Color.h"

#include <QMimeData>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kits {

struct SelectionForm;

/// Converts between dragged messages and the data of other programs.
namespace DropMessage {

/// A flattened message.
inline constexpr const char* kFormat = "application/x-kits-message";

/// Returns the message itself, its colour ("RGBColor") as a colour and as "#rrggbb", and its text ("text/plain") as
/// text.
std::unique_ptr<QMimeData> Encode(const BMessage& message);
/// Returns the colour in a message: a B_PASTE with "RGBColor".
std::optional<rgb_color> ColorOf(const BMessage& message);
/// Returns the forms that Decode understands, the preferred one first.
std::vector<SelectionForm> Forms();
/// True if one of these formats of the toolkit's is such a form.
bool CanDecode(const QStringList& formats);
/// Converts data in one of the forms to a message: the message that Encode wrote; for a colour B_PASTE with "RGBColor";
/// for a text B_MIME_DATA with "text/plain" of B_MIME_TYPE. Returns null for anything else, including broken data.
std::unique_ptr<BMessage> Decode(const std::string& form, const std::string& bytes);
/// The bytes of data that this process holds, in one of these forms; empty if the data lack it.
std::string BytesOf(const QMimeData& data, const std::string& form);
/// The same from data that this process holds, in the first form that can be decoded. Null if there is none.
std::unique_ptr<BMessage> Decode(const QMimeData& data);

} // namespace DropMessage

} // namespace kits
