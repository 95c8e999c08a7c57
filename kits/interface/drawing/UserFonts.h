// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"

namespace kits {

/// The fonts to which be_plain_font and the like point. New fonts start as the plain one.
class UserFonts {
public:
    /// Asks the toolkit for the user's fonts. Main thread.
    static void Read();
    /// Resets them to their state without a kit: no family, size 12. Main thread.
    static void Forget();

    static BFont sPlain;
    static BFont sBold;
};

} // namespace kits
