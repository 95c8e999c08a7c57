// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Presents views that draw themselves to assistive technology: the name (BView::SetAccessibleName), the value
/// (BView::AccessibleValue) and the parts (BView::AccessibleParts), each with its own. A view with one of the toolkit's
/// widgets leaves that to the widget.
///
/// Call it once, when the toolkit is set up; nothing is made before somebody asks. Main thread.
void EnableViewAccess();

} // namespace kits
