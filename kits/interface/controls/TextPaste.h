// SPDX-License-Identifier: MIT
#pragma once

class QEvent;
class QObject;

namespace kits {

/// Pastes into text fields, including those of numbers and of file dialogs: by keys, by the middle button, and from the
/// field's menu. The toolkit would wait for the program that owns the text, even to enable "Paste" in the menu. Here
/// the field stays usable; the text is inserted at the cursor when it arrives, and after a second there is a beep
/// instead. The toolkit still pastes this program's own text.
///
/// Main thread.
namespace TextPaste {

/// Call it for every event of an object other than a system window.
/// @return true if the event asked a field to paste or to open its menu, and was handled here
bool Handle(QObject& receiver, QEvent& event);

} // namespace TextPaste

} // namespace kits
