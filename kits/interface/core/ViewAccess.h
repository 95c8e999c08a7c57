// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// What assistive technology hears of views that draw themselves: the name (BView::SetAccessibleName), the value
/// (BView::AccessibleValue) and the parts (BView::AccessibleParts), each with its own. Views that hold one of the
/// toolkit's widgets leave it to that.
///
/// To be called once, when the toolkit is set up; nothing is made before somebody asks. Main thread.
void EnableViewAccess();

} // namespace kits
