#pragma once

#include "kits/application/Message.h"
#include "kits/support/Color.h"

#include <QMimeData>

#include <memory>
#include <optional>

namespace kits {

/// What a dragged message is to other programs, and what theirs are to us.
namespace DropMessage {

/// A flattened message.
inline constexpr const char* kFormat = "application/x-kits-message";
/// Longer texts are not taken.
inline constexpr qsizetype kMaxText = 1024 * 1024;

/// The message itself, its colour ("RGBColor") as a colour and as "#rrggbb", and its text ("text/plain") as text.
std::unique_ptr<QMimeData> Encode(const BMessage& message);
/// The colour that a message carries: a B_PASTE with "RGBColor".
std::optional<rgb_color> ColorOf(const BMessage& message);
/// Whether Decode may make something of it; cheap.
bool CanDecode(const QMimeData& data);
/// A message that was dragged with Encode; a colour as B_PASTE with "RGBColor"; a text as B_MIME_DATA with "text/plain"
/// of B_MIME_TYPE. Null for anything else, broken data included.
std::unique_ptr<BMessage> Decode(const QMimeData& data);

} // namespace DropMessage

} // namespace kits
