// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QLineEdit;
class QPoint;

namespace kits {

/// The menu of a text field, with the toolkit's items and wording. The toolkit's own menu fetches the text on the
/// clipboard before it opens, only to know whether there is one; this one enables "Paste" if somebody owns the
/// clipboard. Main thread.
namespace FieldMenu {

/// Opens the menu of an editable field, and returns. The menu is destroyed when it is closed, or with the field.
/// @param paste  called for "Paste", while the field exists
void Open(QLineEdit& field, const QPoint& where, const std::function<void()>& paste);

} // namespace FieldMenu

} // namespace kits
