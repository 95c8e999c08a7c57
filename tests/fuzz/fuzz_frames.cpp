// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/Frame.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <string>

namespace {

void CheckMessage(std::string_view content)
{
    std::string_view flat;
    const std::optional<kits::MessageFrame> frame = kits::ReadMessageFrame(content, &flat);
    if (!frame.has_value())
        return;
    Expect(!frame->targets.empty() && frame->targets.size() <= kits::bounds::kMostTargets);
    Expect(flat.size() <= content.size() && flat.data() + flat.size() == content.data() + content.size());
    Expect(frame->targets.size() == 1 || flat.size() <= kits::bounds::kMostShared);
    // Writing it again gives the same frame.
    const std::string again = kits::MessageFrameHead(*frame, flat.size()) + std::string(flat);
    kits::FrameReader reader;
    reader.Add(again);
    kits::FrameKind kind{};
    std::string_view second;
    Expect(reader.Next(&kind, &second) == kits::FrameReader::Result::kFrame);
    Expect(kind == kits::FrameKind::kMessage);
    std::string_view flatAgain;
    const std::optional<kits::MessageFrame> frameAgain = kits::ReadMessageFrame(second, &flatAgain);
    Expect(frameAgain.has_value() && frameAgain->targets == frame->targets && flatAgain == flat &&
           frameAgain->newestWins == frame->newestWins && frameAgain->sourceWaits == frame->sourceWaits);

    BMessage message;
    kits::ReadMessage(flat, &message);
}

} // namespace

// The first byte says in pieces of which size the rest comes from the stream, and whether the other side is a stranger.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view stream = TextOf(data + 1, size - 1);
    const size_t step = static_cast<size_t>(data[0] & 0x7F) + 1;
    kits::FrameReader reader;
    if (data[0] & 0x80)
        reader.SetLimit(64);
    size_t taken = 0;
    for (size_t at = 0; at < stream.size(); at += step) {
        reader.Add(stream.substr(at, step));
        kits::FrameKind kind{};
        std::string_view content;
        kits::FrameReader::Result result;
        while ((result = reader.Next(&kind, &content)) == kits::FrameReader::Result::kFrame) {
            taken += content.size() + 5;
            Expect(taken <= at + step);
            switch (kind) {
            case kits::FrameKind::kHello:
                kits::ReadHello(content);
                break;
            case kits::FrameKind::kMessage:
                CheckMessage(content);
                break;
            default:
                kits::ReadNumber(content);
            }
        }
        if (result == kits::FrameReader::Result::kBroken)
            return 0;
    }
    return 0;
}
