// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// The kind of data in a field, an attribute or a resource: four characters, the first in the highest byte.

enum : type_code {
    B_ANY_TYPE = 'ANYT', ///< matches every type in a query
    B_BOOL_TYPE = 'BOOL',
    B_DOUBLE_TYPE = 'DBLE',
    B_FLOAT_TYPE = 'FLOT',
    B_INT8_TYPE = 'BYTE',
    B_INT16_TYPE = 'SHRT',
    B_INT32_TYPE = 'LONG',
    B_INT64_TYPE = 'LLNG',
    B_UINT8_TYPE = 'UBYT',
    B_UINT16_TYPE = 'USHT',
    B_UINT32_TYPE = 'ULNG',
    B_UINT64_TYPE = 'ULLG',
    B_STRING_TYPE = 'CSTR',
    B_MIME_STRING_TYPE = 'MIMS',
    B_MIME_TYPE = 'MIME',
    B_MESSAGE_TYPE = 'MSGG',
    B_MESSENGER_TYPE = 'MSNG',
    B_OBJECT_TYPE = 'OPTR',
    B_POINT_TYPE = 'BPNT',
    B_POINTER_TYPE = 'PNTR',
    B_RAW_TYPE = 'RAWT',
    B_RECT_TYPE = 'RECT',
    B_RGB_COLOR_TYPE = 'RGBC'
};
