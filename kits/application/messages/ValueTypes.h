// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/TypeConstants.h"

#include <array>

namespace kits {

/// Calls `visit` with a std::array of zeros: as many numbers, and of the same type, as a value of this type consists
/// of.
/// @return its result; `otherwise` for types whose values are not numbers, such as texts and messages
template <class Result, class Visit> Result VisitNumbers(type_code type, Result otherwise, const Visit& visit)
{
    switch (type) {
    case B_BOOL_TYPE:
        return visit(std::array<bool, 1>());
    case B_INT8_TYPE:
        return visit(std::array<int8, 1>());
    case B_INT16_TYPE:
        return visit(std::array<int16, 1>());
    case B_INT32_TYPE:
        return visit(std::array<int32, 1>());
    case B_INT64_TYPE:
        return visit(std::array<int64, 1>());
    case B_UINT8_TYPE:
        return visit(std::array<uint8, 1>());
    case B_UINT16_TYPE:
        return visit(std::array<uint16, 1>());
    case B_UINT32_TYPE:
        return visit(std::array<uint32, 1>());
    case B_UINT64_TYPE:
        return visit(std::array<uint64, 1>());
    case B_FLOAT_TYPE:
        return visit(std::array<float, 1>());
    case B_DOUBLE_TYPE:
        return visit(std::array<double, 1>());
    case B_POINT_TYPE:
        return visit(std::array<float, 2>());
    case B_RECT_TYPE:
        return visit(std::array<float, 4>());
    case B_RGB_COLOR_TYPE:
        return visit(std::array<uint8, 4>());
    case B_MESSENGER_TYPE: // see Address
        return visit(std::array<uint64, 2>());
    default:
        return otherwise;
    }
}

} // namespace kits
