// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"

#include <string_view>

namespace test {

/// Returns the field declared with this name, or null.
inline const kits::AnyField* DeclaredField(std::string_view name)
{
    const kits::AnyField* field = kits::AnyField::All();
    while (field != nullptr && field->Name() != name)
        field = field->Next();
    return field;
}

} // namespace test
