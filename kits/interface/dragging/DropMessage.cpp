#include "kits/interface/dragging/DropMessage.h"

#include "kits/support/TypeConstants.h"

#include <QColor>

#include <array>
#include <cstring>

namespace kits::DropMessage {

namespace {

constexpr const char* kColorField = "RGBColor";
constexpr const char* kTextField = "text/plain";

bool FindColor(const BMessage& message, rgb_color* color)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData(kColorField, B_RGB_COLOR_TYPE, &data, &size) != B_OK || size != sizeof(rgb_color))
        return false;
    std::memcpy(color, data, sizeof(rgb_color));
    return true;
}

QColor ColorIn(const QMimeData& data)
{
    const auto color = qvariant_cast<QColor>(data.colorData());
    if (color.isValid())
        return color;
    // As programs send it: red, green, blue and alpha as numbers of 16 bits.
    const QByteArray bytes = data.data(QStringLiteral("application/x-color"));
    std::array<uint16, 4> numbers{};
    if (bytes.size() != sizeof(numbers))
        return {};
    std::memcpy(numbers.data(), bytes.constData(), sizeof(numbers));
    return {numbers[0] >> 8, numbers[1] >> 8, numbers[2] >> 8};
}

std::unique_ptr<BMessage> ColorMessage(const QColor& color)
{
    auto message = std::make_unique<BMessage>(B_PASTE);
    const rgb_color value = make_color(static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
                                       static_cast<uint8>(color.blue()));
    message->AddData(kColorField, B_RGB_COLOR_TYPE, &value, sizeof(value), true, 1);
    return message;
}

} // namespace

std::unique_ptr<QMimeData> Encode(const BMessage& message)
{
    auto data = std::make_unique<QMimeData>();
    const ssize_t size = message.FlattenedSize();
    if (size > 0) {
        QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
        if (message.Flatten(bytes.data(), size) == B_OK)
            data->setData(QString::fromLatin1(kFormat), bytes);
    }
    rgb_color color;
    if (FindColor(message, &color)) {
        const QColor qtColor(color.red, color.green, color.blue);
        data->setColorData(qtColor);
        data->setText(qtColor.name(QColor::HexRgb));
    }
    const void* text = nullptr;
    ssize_t length = 0;
    if (message.FindData(kTextField, B_MIME_TYPE, &text, &length) == B_OK && length > 0)
        data->setText(QString::fromUtf8(static_cast<const char*>(text), static_cast<qsizetype>(length)));
    return data;
}

std::optional<rgb_color> ColorOf(const BMessage& message)
{
    rgb_color color;
    return message.what == B_PASTE && FindColor(message, &color) ? std::optional(color) : std::nullopt;
}

bool CanDecode(const QMimeData& data)
{
    return data.hasFormat(QString::fromLatin1(kFormat)) || data.hasColor() ||
           data.hasFormat(QString::fromLatin1(kTextField));
}

std::unique_ptr<BMessage> Decode(const QMimeData& data)
{
    const QString format = QString::fromLatin1(kFormat);
    if (data.hasFormat(format)) {
        const QByteArray bytes = data.data(format);
        auto message = std::make_unique<BMessage>();
        if (message->Unflatten(bytes.constData(), static_cast<ssize_t>(bytes.size())) == B_OK)
            return message;
    }
    if (data.hasColor()) {
        const QColor color = ColorIn(data);
        if (color.isValid())
            return ColorMessage(color);
    }
    if (data.hasFormat(QString::fromLatin1(kTextField))) {
        const QByteArray text = data.text().toUtf8();
        if (!text.isEmpty() && text.size() <= kMaxText) {
            auto message = std::make_unique<BMessage>(B_MIME_DATA);
            message->AddData(kTextField, B_MIME_TYPE, text.constData(), static_cast<ssize_t>(text.size()), false, 1);
            return message;
        }
    }
    return nullptr;
}

} // namespace kits::DropMessage
