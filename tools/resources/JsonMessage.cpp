// SPDX-License-Identifier: MIT
#include "tools/resources/JsonMessage.h"

#include "kits/application/Message.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace {

template <class T> std::optional<T> Integer(const QJsonValue& value)
{
    // If the number is no integer, toInteger() returns its default, so the two calls differ.
    const qint64 number = value.toInteger(0);
    if (!value.isDouble() || number != value.toInteger(1) || number < std::numeric_limits<T>::min() ||
        number > std::numeric_limits<T>::max())
        return std::nullopt;
    return static_cast<T>(number);
}

std::optional<float> Float(const QJsonValue& value)
{
    const double number = value.toDouble();
    if (!value.isDouble() || std::abs(number) > std::numeric_limits<float>::max())
        return std::nullopt;
    return static_cast<float>(number);
}

template <size_t kCount> std::optional<std::array<float, kCount>> Floats(const QJsonValue& value)
{
    const QJsonArray array = value.toArray();
    std::array<float, kCount> numbers;
    if (array.size() != static_cast<qsizetype>(kCount))
        return std::nullopt;
    for (size_t index = 0; index < kCount; ++index) {
        const std::optional<float> number = Float(array[static_cast<qsizetype>(index)]);
        if (!number)
            return std::nullopt;
        numbers[index] = *number;
    }
    return numbers;
}

std::optional<rgb_color> Color(const QJsonValue& value)
{
    const std::string text = value.toString().toStdString();
    if ((text.size() != 7 && text.size() != 9) || text[0] != '#' ||
        text.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos)
        return std::nullopt;
    const auto channel = [&](size_t position) {
        return static_cast<uint8>(std::stoi(text.substr(position, 2), nullptr, 16));
    };
    return make_color(channel(1), channel(3), channel(5), text.size() == 9 ? channel(7) : 255);
}

/// Walks through a document; reports the first error and its place.
class Reader {
public:
    explicit Reader(std::string* error)
        : fError(error)
    {
    }

    bool Read(const QJsonObject& object, BMessage* message, const std::string& place);

private:
    bool ReadCode(const QJsonValue& value, BMessage* message, const std::string& place);
    bool ReadField(const std::string& member, const QJsonValue& value, BMessage* message, const std::string& place);
    bool Add(BMessage* message, const std::string& name, const std::string& type, const QJsonValue& value,
             const std::string& place);
    bool Fail(const std::string& place, const std::string& what)
    {
        *fError = place.empty() ? what : place + ": " + what;
        return false;
    }

    std::string* fError;
};

bool Reader::Read(const QJsonObject& object, BMessage* message, const std::string& place)
{
    message->MakeEmpty();
    message->what = 0;
    for (auto member = object.begin(); member != object.end(); ++member) {
        const std::string name = member.key().toStdString();
        const std::string inner = place.empty() ? name : place + " / " + name;
        const QJsonValue value = member.value();
        if (name.starts_with("//"))
            continue;
        if (name == "what" ? !ReadCode(value, message, inner) : !ReadField(name, value, message, inner))
            return false;
    }
    return true;
}

bool Reader::ReadCode(const QJsonValue& value, BMessage* message, const std::string& place)
{
    const std::string code = value.toString().toStdString();
    if (code.size() != 4)
        return Fail(place, "not four characters");
    for (const char character : code)
        message->what = message->what << 8 | static_cast<uint8>(character);
    return true;
}

bool Reader::ReadField(const std::string& member, const QJsonValue& value, BMessage* message, const std::string& place)
{
    const size_t colon = member.rfind(": ");
    if (colon == std::string::npos || colon == 0)
        return Fail(place, "no type");
    const std::string name = member.substr(0, colon);
    std::string type = member.substr(colon + 2);
    if (message->GetInfo(name.c_str(), nullptr) == B_OK)
        return Fail(place, "the field is there already");
    if (!type.ends_with("[]"))
        return Add(message, name, type, value, place);
    if (!value.isArray())
        return Fail(place, "not an array");
    type.resize(type.size() - 2);
    const QJsonArray array = value.toArray();
    for (qsizetype index = 0; index < array.size(); ++index)
        if (!Add(message, name, type, array[index], place + "[" + std::to_string(index) + "]"))
            return false;
    return true;
}

bool Reader::Add(BMessage* message, const std::string& fieldName, const std::string& type, const QJsonValue& value,
                 const std::string& place)
{
    const char* const name = fieldName.c_str();
    const auto refuse = [&] { return Fail(place, "not a value of type " + type); };
    // A name that is too long is the only thing that a message refuses here.
    const auto added = [&](status_t status) { return status == B_OK || Fail(place, kits::StatusText(status)); };

    if (type == "bool")
        return value.isBool() ? added(message->AddBool(name, value.toBool())) : refuse();
    if (type == "int8") {
        const auto number = Integer<int8>(value);
        return number ? added(message->AddInt8(name, *number)) : refuse();
    }
    if (type == "int16") {
        const auto number = Integer<int16>(value);
        return number ? added(message->AddInt16(name, *number)) : refuse();
    }
    if (type == "int32") {
        const auto number = Integer<int32>(value);
        return number ? added(message->AddInt32(name, *number)) : refuse();
    }
    if (type == "int64") {
        const auto number = Integer<int64>(value);
        return number ? added(message->AddInt64(name, *number)) : refuse();
    }
    if (type == "float") {
        const auto number = Float(value);
        return number ? added(message->AddFloat(name, *number)) : refuse();
    }
    if (type == "double")
        return value.isDouble() ? added(message->AddDouble(name, value.toDouble())) : refuse();
    if (type == "string")
        return value.isString() ? added(message->AddString(name, value.toString().toStdString())) : refuse();
    if (type == "point") {
        const auto numbers = Floats<2>(value);
        return numbers ? added(message->AddPoint(name, BPoint((*numbers)[0], (*numbers)[1]))) : refuse();
    }
    if (type == "rect") {
        const auto numbers = Floats<4>(value);
        return numbers
                   ? added(message->AddRect(name, BRect((*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3])))
                   : refuse();
    }
    if (type == "color") {
        const auto color = Color(value);
        if (!color)
            return refuse();
        const uint8 bytes[] = {color->red, color->green, color->blue, color->alpha};
        return added(message->AddData(name, B_RAW_TYPE, bytes, sizeof bytes));
    }
    if (type == "message") {
        BMessage inner;
        return value.isObject() ? Read(value.toObject(), &inner, place) && added(message->AddMessage(name, &inner))
                                : refuse();
    }
    return Fail(place, "no such type: " + type);
}

} // namespace

bool MessageFromJson(std::string_view json, BMessage* message, std::string* error)
{
    QJsonParseError problem;
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray(json.data(), static_cast<qsizetype>(json.size())), &problem);
    if (problem.error != QJsonParseError::NoError) {
        const std::string_view before = json.substr(0, static_cast<size_t>(std::max(problem.offset, 0)));
        *error = "line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ": " +
                 problem.errorString().toStdString();
        return false;
    }
    if (!document.isObject()) {
        *error = "not an object";
        return false;
    }
    return Reader(error).Read(document.object(), message, "");
}
