// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/support/TypeConstants.h"

namespace test {

/// Describes the `index`-th of a message's fields that have this type (`B_ANY_TYPE`: of all): its name, valid until the
/// message is changed, its type and the number of its values. Each may be null.
/// @return false if there are not that many
inline bool FieldAt(const BMessage& message, type_code type, int32 index, const char** name, type_code* typeFound,
                    int32* count = nullptr)
{
    for (const kits::MessageAccess::Field& field : kits::MessageAccess::FieldsOf(message)) {
        if ((type != B_ANY_TYPE && field.Type() != type) || index-- != 0)
            continue;
        if (name != nullptr)
            *name = field.Name().c_str();
        return message.GetInfo(field.Name().c_str(), typeFound, count) == B_OK;
    }
    return false;
}

} // namespace test
