// SPDX-License-Identifier: MIT
#include "tests/hostile/Mutator.h"

#include "kits/application/AppDefs.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/support/FieldAt.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr uint32 kKitCodes[] = {B_ABOUT_REQUESTED,
                                B_READY_TO_RUN,
                                B_SILENT_RELAUNCH,
                                B_PULSE,
                                B_REPLY,
                                B_NO_REPLY,
                                B_MESSAGE_NOT_UNDERSTOOD,
                                B_SOME_APP_LAUNCHED,
                                B_SOME_APP_QUIT,
                                B_SIMPLE_DATA,
                                B_MIME_DATA,
                                B_PASTE,
                                B_ARCHIVED_OBJECT,
                                B_DROPPED_ON_DESKTOP,
                                B_REPLICANT_TAKEN,
                                B_KEY_DOWN,
                                B_MOUSE_DOWN,
                                B_MOUSE_MOVED,
                                B_MOUSE_UP,
                                B_MINIMIZE,
                                B_WINDOW_ACTIVATED,
                                B_WINDOW_MOVED,
                                B_WINDOW_RESIZED,
                                B_SCREEN_CHANGED};
constexpr type_code kTypes[] = {B_BOOL_TYPE,  B_INT8_TYPE,      B_INT16_TYPE,     B_INT32_TYPE,   B_INT64_TYPE,
                                B_FLOAT_TYPE, B_DOUBLE_TYPE,    B_POINT_TYPE,     B_RECT_TYPE,    B_STRING_TYPE,
                                B_RAW_TYPE,   B_MESSENGER_TYPE, B_RGB_COLOR_TYPE, B_POINTER_TYPE, 'hack'};
/// A program ends when it is asked to. It opens windows and shows charts up to its own limits, which takes more time
/// than everything else. So only some of the messages use these codes.
constexpr int kMessagesPerQuit = 500000;
constexpr uint32 kSlowCodes[] = {MSG_OPEN_GLOBAL_PREFS, MSG_CHART_PREFS,     MSG_CHART_ADD,       MSG_SAVE_PICTURE,
                                 MSG_SAVE_VALUES,       MSG_COPY_TO_DESKTOP, MSG_GO_TO_DESKTOP,   MSG_PICK_DESKTOP,
                                 MSG_TEST_ON_DESKTOP,   B_ABOUT_REQUESTED,   MSG_SHOW_ON_DESKTOP, MSG_ADD_SOURCES};
constexpr int kMessagesPerSlowOne = 50;
/// The program of charts on the desktop ends with the last chart.
constexpr uint32 kRemovingCodes[] = {MSG_REMOVE_REPLICANT, B_REPLICANT_TAKEN, MSG_CHART_DELETE};
constexpr int kMessagesPerRemoval = 2000;
constexpr int kMostFields = 40;
constexpr kits::token_t kLikelyTokens = 400; ///< a program has given out about this many soon after its start

size_t SizeOf(type_code type)
{
    switch (type) {
    case B_BOOL_TYPE:
    case B_INT8_TYPE:
        return 1;
    case B_INT16_TYPE:
        return 2;
    case B_INT32_TYPE:
    case B_FLOAT_TYPE:
    case B_RGB_COLOR_TYPE:
        return 4;
    case B_RECT_TYPE:
    case B_MESSENGER_TYPE:
        return 16;
    default:
        return 8;
    }
}

template <size_t kCount> bool IsOneOf(const uint32 (&codes)[kCount], uint32 code)
{
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

template <class T> void Put(std::string* bytes, size_t place, T value)
{
    if (place + sizeof(value) <= bytes->size())
        std::memcpy(bytes->data() + place, &value, sizeof(value));
}

} // namespace

Mutator::Mutator(std::string_view recorded, kits::Address self, uint32 seed)
    : fRandom(seed)
    , fSelf(self)
{
    kits::FrameReader reader;
    reader.Add(recorded);
    kits::FrameKind kind;
    std::string_view content;
    while (reader.Next(&kind, &content) == kits::FrameReader::Result::kFrame) {
        std::string_view flat;
        const auto frame = kind == kits::FrameKind::kMessage ? kits::ReadMessageFrame(content, &flat) : std::nullopt;
        BMessage message;
        if (!frame || kits::ReadMessage(flat, &message) != B_OK)
            continue;
        const char* name = nullptr;
        for (int32 i = 0; test::FieldAt(message, B_ANY_TYPE, i, &name, nullptr); ++i)
            fNames.emplace_back(name);
        fRecorded.push_back({*frame, std::move(message)});
    }
    std::sort(fNames.begin(), fNames.end());
    fNames.erase(std::unique(fNames.begin(), fNames.end()), fNames.end());
    fNames.emplace_back("");
}

uint32 Mutator::Code()
{
    if (OneIn(kMessagesPerQuit))
        return B_QUIT_REQUESTED;
    switch (Below(8)) {
    case 0:
        return kKitCodes[Below(static_cast<int>(std::size(kKitCodes)))];
    case 1:
        return MSG_SHOW_ON_DESKTOP + static_cast<uint32>(Below(MSG_NOTHING_ON_DESKTOP - MSG_SHOW_ON_DESKTOP + 1));
    case 2:
        return static_cast<uint32>(fRandom());
    default:
        return MSG_SYSINFO_SAMPLE + static_cast<uint32>(Below(MSG_DESKTOP_COLOR - MSG_SYSINFO_SAMPLE + 1));
    }
}

std::string Mutator::Value(size_t size)
{
    std::string value(size, static_cast<char>(Below(256)));
    switch (Below(9)) {
    case 0:
        std::generate(value.begin(), value.end(), [this] { return static_cast<char>(Below(256)); });
        break;
    case 1:
        value.assign(size, '\0');
        break;
    case 2:
        value.assign(size, '\xFF');
        break;
    case 3:
        value.assign(size, '\xFF');
        value.back() = '\x7F';
        break;
    case 4:
        value.assign(size, '\0');
        value.back() = '\x80';
        break;
    case 5: {
        const float floats[] = {NAN, INFINITY, -INFINITY, -1, 1e30F, -1e30F, 1e-38F, 0.5F, 4000};
        for (size_t i = 0; i < size; i += sizeof(float))
            Put(&value, i, floats[Below(static_cast<int>(std::size(floats)))]);
        break;
    }
    case 6:
        value.assign(size, '\0');
        Put(&value, 0, static_cast<uint8>(Below(12)));
        break;
    case 7:
        value.assign(size, '\0');
        Put(&value, 0, fSelf.team);
        Put(&value, sizeof(fSelf.team), static_cast<kits::token_t>(Below(10)));
        break;
    default:
        break;
    }
    return value;
}

void Mutator::AddField(BMessage* message, const char* name, type_code type)
{
    const bool isText = type == B_STRING_TYPE || type == B_RAW_TYPE;
    // Now and then a long one, or many.
    const size_t size = isText ? 1 + static_cast<size_t>(Below(OneIn(50) ? 20000 : 600)) : SizeOf(type);
    for (int count = OneIn(10) ? Below(20) : 1; count > 0; --count)
        message->AddData(name, type, Value(size).data(), static_cast<ssize_t>(size), false);
}

void Mutator::ChangeFields(BMessage* message, int depth)
{
    for (int changes = 1 + Below(4); changes > 0; --changes) {
        const int32 count = message->CountNames(B_ANY_TYPE);
        const char* found = nullptr;
        type_code type = B_ANY_TYPE;
        const bool isNew = count == 0 || OneIn(6);
        if (!isNew)
            test::FieldAt(*message, B_ANY_TYPE, Below(count), &found, &type);
        const std::string name = isNew ? fNames[static_cast<size_t>(Below(static_cast<int>(fNames.size())))] : found;
        if (isNew) {
            if (count < kMostFields)
                AddField(message, name.c_str(), kTypes[Below(static_cast<int>(std::size(kTypes)))]);
            continue;
        }
        BMessage inner;
        if (type == B_MESSAGE_TYPE && depth < 8 && !OneIn(6) && message->FindMessage(name.c_str(), &inner) == B_OK) {
            message->RemoveName(name.c_str());
            ChangeFields(&inner, depth + 1);
            message->AddMessage(name.c_str(), &inner);
            continue;
        }
        switch (Below(4)) {
        case 0:
            message->RemoveName(name.c_str());
            break;
        case 1: {
            const Recorded& other = fRecorded[static_cast<size_t>(Below(static_cast<int>(fRecorded.size())))];
            message->RemoveName(name.c_str());
            message->AddMessage(name.c_str(), &other.message);
            break;
        }
        case 2:
            message->RemoveName(name.c_str());
            AddField(message, name.c_str(), kTypes[Below(static_cast<int>(std::size(kTypes)))]);
            break;
        default:
            if (OneIn(2))
                message->RemoveName(name.c_str());
            AddField(message, name.c_str(), type == B_MESSAGE_TYPE ? type_code{B_RAW_TYPE} : type);
        }
    }
}

void Mutator::ChangeFrame(kits::MessageFrame* frame)
{
    if (OneIn(3))
        frame->targets.front() = 1 + Below(OneIn(4) ? 100000 : kLikelyTokens);
    if (OneIn(20))
        for (int count = 1 + Below(OneIn(10) ? 1100 : 5); count > 0; --count)
            frame->targets.push_back(Below(kLikelyTokens));
    if (OneIn(8))
        frame->newestWins = !frame->newestWins;
    frame->sourceWaits = OneIn(4);
    frame->replyTo = OneIn(2) ? fSelf : kits::Address{};
    if (OneIn(20)) {
        const std::string value = Value(sizeof(frame->replyTo));
        std::memcpy(&frame->replyTo, value.data(), sizeof(frame->replyTo));
    }
}

void Mutator::ChangeBytes(std::string* bytes)
{
    for (int changes = 1 + Below(3); changes > 0 && !bytes->empty(); --changes) {
        const auto place = static_cast<size_t>(Below(static_cast<int>(bytes->size())));
        switch (Below(4)) {
        case 0:
            (*bytes)[place] = static_cast<char>(Below(256));
            break;
        case 1:
            (*bytes)[place] = static_cast<char>((*bytes)[place] ^ 1 << Below(8));
            break;
        case 2:
            bytes->erase(place, 1 + static_cast<size_t>(Below(8)));
            break;
        default:
            bytes->insert(place, Value(1 + static_cast<size_t>(Below(8))));
        }
    }
}

std::string Mutator::MessageFrame()
{
    const Recorded& recorded = fRecorded[static_cast<size_t>(Below(static_cast<int>(fRecorded.size())))];
    kits::MessageFrame frame = recorded.frame;
    BMessage message = recorded.message;
    if (OneIn(2) || message.what == B_QUIT_REQUESTED)
        message.what = Code();
    while ((IsOneOf(kSlowCodes, message.what) && !OneIn(kMessagesPerSlowOne)) ||
           (IsOneOf(kRemovingCodes, message.what) && !OneIn(kMessagesPerRemoval)))
        message.what = Code();
    if (!OneIn(5))
        ChangeFields(&message, 0);
    ChangeFrame(&frame);
    std::string flat;
    if (kits::WriteMessage(message, &flat, OneIn(2)) != B_OK)
        flat.clear();
    if (OneIn(40))
        ChangeBytes(&flat);
    return kits::MessageFrameHead(frame, flat.size()) + flat;
}

Mutator::Made Mutator::Next()
{
    std::string bytes;
    switch (Below(150)) {
    case 0:
        bytes = kits::HelloFrame(fSelf.team);
        break;
    case 1:
    case 2:
    case 3:
        bytes = kits::NumberFrame(static_cast<kits::FrameKind>(Below(OneIn(20) ? 256 : 6)), fRandom());
        break;
    default:
        bytes = MessageFrame();
    }
    if (OneIn(200))
        ChangeBytes(&bytes);

    kits::FrameReader reader;
    reader.Add(bytes);
    kits::FrameKind kind;
    std::string_view content;
    // After a frame with a wrong length, the rest is read as anything.
    if (reader.Next(&kind, &content) != kits::FrameReader::Result::kFrame || content.size() + 5 != bytes.size())
        return {bytes, false};
    std::string_view flat;
    BMessage message;
    const bool isGood = kind == kits::FrameKind::kPing
                            ? kits::ReadNumber(content).has_value()
                            : kind == kits::FrameKind::kMessage && kits::ReadMessageFrame(content, &flat) &&
                                  kits::ReadMessage(flat, &message) == B_OK;
    // A request to quit that results from a changed byte counts like a deliberate one.
    if (isGood && message.what == B_QUIT_REQUESTED && !OneIn(100))
        return Next();
    return {bytes, isGood};
}
