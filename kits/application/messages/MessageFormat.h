// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/kernel/Bounds.h"

#include <string>
#include <string_view>

namespace kits {

/// The format of a flattened message. It is CBOR, so that any CBOR tool can show the content of a file or of a socket.
///
///     55799([SIZE, {"what": CODE, "fields": {NAME: FIELD, …}}, CHECKSUM])
///     FIELD = [CODE, VALUE, …]
///
/// The tag 55799 marks the data as CBOR for tools that guess. SIZE is the number of bytes after it, so that a reader
/// knows where the message ends before reading it. CHECKSUM is the CRC-32 (that of zip and Ethernet) of the map's
/// bytes, as four bytes; it may be missing, and then the array has two items.
///
/// A CODE is a text of four characters if all are printable, otherwise a number. A VALUE is
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
/// Fields keep their order. No item has an indefinite length, no other items are allowed, no name occurs twice in a
/// map, and every field has values. The writer leaves out fields of addresses (PNTR, OPTR); the reader takes them for
/// integers and skips them.

/// The number of bytes that a reader needs to learn the length of a message.
inline constexpr size_t kMessageHeadSize = 9;

/// Limits on the content of a flattened message.
struct MessageLimits {
    size_t size;
    int32 fields;
    int32 values;
};
/// The limits of BMessage.
inline constexpr MessageLimits kMessageLimits{BMessage::kMaxFlattenedSize, BMessage::kMaxFields, BMessage::kMaxValues};
/// The limits of a message that goes from one process to another.
inline constexpr MessageLimits kFrameLimits{bounds::kMostFrame, bounds::kMostFieldsFromOutside,
                                            bounds::kMostValuesFromOutside};

/// Flattens a message.
/// @param withChecksum  false for bytes that never leave the machine's memory
/// @return `B_BAD_VALUE` beyond the limits
status_t WriteMessage(const BMessage& message, std::string* flat, bool withChecksum = true,
                      const MessageLimits& limits = kMessageLimits);

/// Returns the number of bytes of the whole message that begins with `head`; `B_BAD_VALUE` if none does.
/// @param head  the first kMessageHeadSize bytes or, if the message is shorter, all of it
ssize_t SizeOfMessage(std::string_view head);

/// Unflattens a message; an error leaves `message` unchanged.
status_t ReadMessage(std::string_view flat, BMessage* message, const MessageLimits& limits = kMessageLimits);

} // namespace kits
