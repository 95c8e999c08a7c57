// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "tests/fuzz/FlatMessage.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/FieldAt.h"

#include <string>
#include <vector>

namespace {

/// Reads every field as every type.
void ReadAll(const BMessage& message)
{
    const char* name;
    type_code type;
    int32 count;
    for (int32 i = 0; test::FieldAt(message, B_ANY_TYPE, i, &name, &type, &count); ++i) {
        for (const int32 index : {-1, 0, count - 1, count}) {
            bool flag;
            int64 number;
            BRect rect;
            std::string text;
            const void* data;
            ssize_t size = 0;
            BMessage inner;
            void* pointer;
            message.FindBool(name, &flag, index);
            message.FindInt64(name, &number, index);
            message.FindRect(name, &rect, index);
            message.FindString(name, &text, index);
            Expect(message.FindPointer(name, &pointer, index) != B_OK);
            if (message.FindData(name, B_ANY_TYPE, &data, &size, index) == B_OK)
                Expect(std::string(static_cast<const char*>(data), static_cast<size_t>(size)).size() ==
                       static_cast<size_t>(size));
            if (message.FindMessage(name, &inner, index) == B_OK)
                ReadAll(inner);
        }
    }
}

void Read(const std::string& flat)
{
    BMessage message('keep');
    message.AddInt32("kept", 1);
    const BMessage before(message);
    if (message.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())) != B_OK) {
        Expect(message.HasSameData(before));
        return;
    }
    ReadAll(message);
    // A message that was read can be written, and reads the same again.
    std::vector<char> again(static_cast<size_t>(message.FlattenedSize()));
    Expect(message.Flatten(again.data(), static_cast<ssize_t>(again.size())) == B_OK);
    BMessage second;
    Expect(second.Unflatten(again.data(), static_cast<ssize_t>(again.size())) == B_OK);
    Expect(second.HasSameData(message));
}

} // namespace

// Reads the bytes as they are, and as the map of a message whose size and checksum are correct.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(TextOf(data, size));
    Read(bytes);
    Read(FlatMessage(bytes));
    return 0;
}
