// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/DropMessage.h"

#include "kits/interface/Fields.h"
#include "kits/interface/platform/selections/Fetches.h"
#include "kits/kernel/Bounds.h"

#include <QColor>

#include <algorithm>
#include <array>
#include <cstring>

namespace kits::DropMessage {

namespace {

constexpr const char* kColorFormat = "application/x-color";

/// The common format: red, green, blue and alpha as numbers of 16 bits.
std::unique_ptr<BMessage> ColorMessage(const std::string& bytes)
{
    std::array<uint16, 4> numbers{};
    if (bytes.size() != sizeof(numbers))
        return nullptr;
    std::memcpy(numbers.data(), bytes.data(), sizeof(numbers));
    const rgb_color color = make_color(static_cast<uint8>(numbers[0] >> 8), static_cast<uint8>(numbers[1] >> 8),
                                       static_cast<uint8>(numbers[2] >> 8));
    auto message = std::make_unique<BMessage>(B_PASTE);
    kColorField.Add(message.get(), color);
    return message;
}

std::unique_ptr<BMessage> TextMessage(const std::string& text)
{
    if (text.empty() || text.size() > bounds::kMostForeignText)
        return nullptr;
    auto message = std::make_unique<BMessage>(B_MIME_DATA);
    message->AddData(kPlainTextField.Name(), kPlainTextField.Type(), text.data(), static_cast<ssize_t>(text.size()),
                     false, 1);
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
    if (kColorField.Find(message, &color)) {
        const QColor qtColor(color.red, color.green, color.blue);
        data->setColorData(qtColor);
        data->setText(qtColor.name(QColor::HexRgb));
    }
    std::string_view text;
    if (kPlainTextField.Find(message, &text))
        data->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    return data;
}

std::optional<rgb_color> ColorOf(const BMessage& message)
{
    rgb_color color;
    return message.what == B_PASTE && kColorField.Find(message, &color) ? std::optional(color) : std::nullopt;
}

std::vector<SelectionForm> Forms()
{
    std::vector<SelectionForm> forms{{kFormat, bounds::kMostFlattened}, {kColorFormat, bounds::kMostForeignColor}};
    for (SelectionForm& form : Fetches::TextForms())
        forms.push_back(std::move(form));
    return forms;
}

bool CanDecode(const QStringList& formats)
{
    const std::vector<SelectionForm> forms = Forms();
    return std::any_of(forms.begin(), forms.end(), [&formats](const SelectionForm& form) {
        return formats.contains(QString::fromStdString(form.name));
    });
}

std::unique_ptr<BMessage> Decode(const std::string& form, const std::string& bytes)
{
    if (form == kFormat) {
        auto message = std::make_unique<BMessage>();
        const bool isWhole = message->Unflatten(bytes.data(), static_cast<ssize_t>(bytes.size())) == B_OK;
        return isWhole ? std::move(message) : nullptr;
    }
    return form == kColorFormat ? ColorMessage(bytes) : TextMessage(Fetches::TextOf(bytes));
}

std::string BytesOf(const QMimeData& data, const std::string& form)
{
    if (form == kColorFormat) {
        // The toolkit gives its own colours only in this way.
        const auto color = qvariant_cast<QColor>(data.colorData());
        if (color.isValid()) {
            const QRgba64 parts = color.rgba64();
            const std::array<uint16, 4> numbers{parts.red(), parts.green(), parts.blue(), parts.alpha()};
            return {reinterpret_cast<const char*>(numbers.data()), sizeof(numbers)};
        }
    }
    return data.data(QString::fromStdString(form)).toStdString();
}

std::unique_ptr<BMessage> Decode(const QMimeData& data)
{
    for (const SelectionForm& form : Forms()) {
        if (!data.hasFormat(QString::fromStdString(form.name)))
            continue;
        std::unique_ptr<BMessage> message = Decode(form.name, BytesOf(data, form.name));
        if (message != nullptr)
            return message;
    }
    return nullptr;
}

} // namespace kits::DropMessage
