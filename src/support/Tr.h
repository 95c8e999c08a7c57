// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Language.h"

/// Returns a sentence of the program in the user's language. The argument is a literal: the translations in
/// translations/ are checked against all of them.
inline const char* Tr(const char* text)
{
    return kits::Translate(text);
}

/// Marks a literal that is translated elsewhere, by Tr() of a variable.
constexpr const char* TrLater(const char* text)
{
    return text;
}
