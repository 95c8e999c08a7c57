// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/support/TypeConstants.h"
#include "tests/fuzz/FlatMessage.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/FieldAt.h"

#include <QMimeData>

#include <iterator>
#include <string>

// Drags and clipboards of other programs, in all formats. fuzz_chart tests what a chart does with the message.

namespace {

constexpr const char* kFormats[] = {kits::DropMessage::kFormat, // as fields, with a correct checksum
                                    kits::DropMessage::kFormat,
                                    "application/x-color",
                                    "text/plain",
                                    "text/plain;charset=utf-8",
                                    "text/uri-list",
                                    "text/html",
                                    "image/png"};

/// Pieces: a byte for the format, two for the length (bytes missing at the end are left out), and the data.
void Fill(QMimeData* data, std::string_view pieces)
{
    constexpr size_t kHead = 3;
    while (pieces.size() >= kHead) {
        const size_t format = static_cast<uint8_t>(pieces[0]) % std::size(kFormats);
        const size_t length = static_cast<uint8_t>(pieces[1]) | static_cast<size_t>(static_cast<uint8_t>(pieces[2]))
                                                                    << 8;
        std::string bytes(pieces.substr(kHead, length));
        pieces.remove_prefix(std::min(kHead + length, pieces.size()));
        if (format == 0)
            bytes = FlatMessage(bytes);
        data->setData(QString::fromLatin1(kFormats[format]), QByteArray::fromStdString(bytes));
    }
}

std::string Flat(const BMessage& message)
{
    std::string flat(static_cast<size_t>(message.FlattenedSize()), '\0');
    Expect(message.Flatten(flat.data(), static_cast<ssize_t>(flat.size())) == B_OK);
    return flat;
}

void CheckMessage(const BMessage& message)
{
    const char* name = nullptr;
    type_code type = 0;
    Expect(!test::FieldAt(message, B_POINTER_TYPE, 0, &name, &type)); // addresses mean nothing to other processes
    if (kits::DropMessage::ColorOf(message)) {
        int32 count = 0;
        Expect(message.what == B_PASTE && message.GetInfo("RGBColor", &type, &count) == B_OK &&
               type == B_RGB_COLOR_TYPE);
    }
    // Dragging it on gives the same message.
    const std::unique_ptr<QMimeData> encoded = kits::DropMessage::Encode(message);
    const std::unique_ptr<BMessage> again = kits::DropMessage::Decode(*encoded);
    Expect(again != nullptr && Flat(*again) == Flat(message));
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QMimeData mime;
    Fill(&mime, TextOf(data, size));
    const std::unique_ptr<BMessage> message = kits::DropMessage::Decode(mime);
    if (message == nullptr)
        return 0;
    CheckMessage(*message);
    return 0;
}
