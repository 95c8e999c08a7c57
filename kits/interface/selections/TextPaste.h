#pragma once

class QEvent;
class QObject;

namespace kits {

/// Pasting into text fields, those of numbers and of file dialogs among them: by keys, by the middle button, and from
/// the menu of the field. The toolkit's own way waits for the program that owns the text, as its menu does to find out
/// whether there is one; here the field goes on, and gets the text where its cursor stands when the text comes. After a
/// second there is a beep instead. Text of this program is pasted by the toolkit.
///
/// Main thread.
namespace TextPaste {

/// For every event of an object that is no window of the system's.
/// @return true if it asked a field to paste, or for its menu, and was used
bool Handle(QObject& receiver, QEvent& event);

} // namespace TextPaste

} // namespace kits
