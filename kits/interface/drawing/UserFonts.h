// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"

namespace kits {

/// What be_plain_font and its like point to. Fonts that are made start as the plain one.
class UserFonts {
public:
    /// Asks the toolkit for the user's fonts. Main thread.
    static void Read();
    /// Back to what they are without a kit: no family, size 12. Main thread.
    static void Forget();

    static BFont sPlain;
    static BFont sBold;
    static BFont sFixed;
};

} // namespace kits
