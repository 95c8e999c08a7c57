// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/kernel/Bounds.h"

#include <string>
#include <string_view>

namespace kits {

/// How a message is flattened: as CBOR, so that any tool for that shows what is in a file or on a socket.
///
///     55799([SIZE, {"what": CODE, "fields": {NAME: FIELD, …}}, CHECKSUM])
///     FIELD = [CODE, VALUE, …]
///
/// The tag 55799 says that CBOR follows, to tools that guess. SIZE is the number of bytes behind it, so that a reader
/// knows where the message ends before it has read it. CHECKSUM is the CRC-32 (that of zip and Ethernet) of the map's
/// bytes, as four bytes; it may be missing, in an array of two then.
///
/// A CODE is a text of four characters where all are printable, else a number. A VALUE is
///
///     BOOL                     false or true
///     BYTE SHRT LONG LLNG      an integer in the range of the type; likewise UBYT USHT ULNG ULLG
///     FLOT DBLE                a number of 4, of 8 bytes, with all its bits
///     BPNT RECT                an array of 2, of 4 numbers of 4 bytes
///     RGBC                     an array of 4 integers of 0 to 255
///     CSTR                     a text; a byte string if it is not UTF-8
///     MSNG                     an array of two integers
///     MSGG                     a map like the one above
///     all others               a byte string; if they need not have the same size, the text "variable" stands before
///                              the first
///
/// Fields keep their order. Nothing has an unknown length, nothing else may occur, no name occurs twice in a map, no
/// field is without values. Fields of addresses (PNTR, OPTR) are not written; where they occur they are integers, and
/// skipped.

/// What is read first to learn how long a message is.
inline constexpr size_t kMessageHeadSize = 9;

/// How much a flattened message may hold.
struct MessageLimits {
    size_t size;
    int32 fields;
    int32 values;
};
/// Those of BMessage.
inline constexpr MessageLimits kMessageLimits{BMessage::kMaxFlattenedSize, BMessage::kMaxFields, BMessage::kMaxValues};
/// Those of a message that goes from one process to another.
inline constexpr MessageLimits kFrameLimits{bounds::kMostFrame, bounds::kMostFieldsFromOutside,
                                            bounds::kMostValuesFromOutside};

/// Flattens a message.
/// @param withChecksum  false for bytes that never leave the machine's memory
/// @return `B_BAD_VALUE` beyond the limits
status_t WriteMessage(const BMessage& message, std::string* flat, bool withChecksum = true,
                      const MessageLimits& limits = kMessageLimits);

/// The number of bytes of the whole message that begins so; `B_BAD_VALUE` if none does.
/// @param head  the first bytes, kMessageHeadSize of them or, if the message is shorter, all
ssize_t SizeOfMessage(std::string_view head);

/// Unflattens a message; with an error it is as it was.
status_t ReadMessage(std::string_view flat, BMessage* message, const MessageLimits& limits = kMessageLimits);

} // namespace kits
