// SPDX-License-Identifier: MIT
#include "kits/application/teams/Frame.h"

#include <gtest/gtest.h>

#include <cstring>

using kits::FrameKind;
using kits::FrameReader;
using Result = kits::FrameReader::Result;

namespace {

/// Returns the content of the only frame in these bytes.
std::string ContentOf(const std::string& frame, FrameKind expected)
{
    FrameReader reader;
    reader.Add(frame);
    FrameKind kind{};
    std::string_view content;
    EXPECT_EQ(reader.Next(&kind, &content), Result::kFrame);
    EXPECT_EQ(kind, expected);
    const std::string copy(content);
    EXPECT_EQ(reader.Next(&kind, &content), Result::kNone);
    return copy;
}

kits::MessageFrame Sample()
{
    kits::MessageFrame frame;
    frame.newestWins = true;
    frame.sourceWaits = true;
    frame.replyTo = {0x1122334455667788, 9};
    frame.targets = {5, INT64_MAX, 7};
    return frame;
}

} // namespace

TEST(Frame, SaysWhatItWasMadeOf)
{
    EXPECT_EQ(kits::ReadHello(ContentOf(kits::HelloFrame(77), FrameKind::kHello)), 77u);
    EXPECT_EQ(kits::ReadNumber(ContentOf(kits::NumberFrame(FrameKind::kPing, 78), FrameKind::kPing)), 78u);
    const std::string content = ContentOf(kits::MessageFrameHead(Sample(), 4) + "flat", FrameKind::kMessage);
    std::string_view flat;
    const auto read = kits::ReadMessageFrame(content, &flat);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(flat, "flat");
    EXPECT_TRUE(read->newestWins);
    EXPECT_TRUE(read->sourceWaits);
    EXPECT_EQ(read->replyTo, Sample().replyTo);
    EXPECT_EQ(read->targets, Sample().targets);
}

TEST(Frame, IsRefusedUnlessItIsExactlyRight)
{
    const std::string hello = ContentOf(kits::HelloFrame(77), FrameKind::kHello);
    for (size_t size = 0; size < hello.size(); ++size)
        EXPECT_FALSE(kits::ReadHello(hello.substr(0, size)).has_value());
    EXPECT_FALSE(kits::ReadHello(hello + "x").has_value());
    std::string other = hello;
    other[4] = 2;
    EXPECT_FALSE(kits::ReadHello(other).has_value());
    other = hello;
    other[0] = 'K';
    EXPECT_FALSE(kits::ReadHello(other).has_value());
    EXPECT_FALSE(kits::ReadNumber("1234567").has_value());
    EXPECT_FALSE(kits::ReadNumber("123456789").has_value());

    const std::string content = ContentOf(kits::MessageFrameHead(Sample(), 0), FrameKind::kMessage);
    std::string_view flat;
    for (size_t size = 0; size < content.size(); ++size)
        EXPECT_FALSE(kits::ReadMessageFrame(content.substr(0, size), &flat).has_value()) << size;
    other = content;
    other[0] = 4;
    EXPECT_FALSE(kits::ReadMessageFrame(other, &flat).has_value());
    const auto withCount = [&content](uint32 count) {
        std::string changed = content;
        memcpy(changed.data() + 17, &count, 4);
        std::string_view rest;
        return kits::ReadMessageFrame(changed + std::string(16 * 1024, '\1'), &rest).has_value();
    };
    EXPECT_TRUE(withCount(1));
    EXPECT_TRUE(withCount(kits::bounds::kMostTargets));
    for (const uint32 count : {0u, static_cast<uint32>(kits::bounds::kMostTargets) + 1, 0x20000000u, 0xFFFFFFFFu})
        EXPECT_FALSE(withCount(count)) << count;
}

TEST(Frame, GivesLongMessagesToOneHandlerOnly)
{
    kits::MessageFrame one = Sample(), two = Sample();
    one.targets = {1};
    two.targets = {1, 2};
    const std::string flat(kits::bounds::kMostShared, 'x');
    std::string_view message;
    const auto read = [&message](const kits::MessageFrame& frame, const std::string& bytes) {
        return kits::ReadMessageFrame(
                   ContentOf(kits::MessageFrameHead(frame, bytes.size()) + bytes, FrameKind::kMessage), &message)
            .has_value();
    };
    EXPECT_TRUE(read(two, flat));
    EXPECT_FALSE(read(two, flat + "x"));
    EXPECT_TRUE(read(one, flat + "x"));
}

TEST(Frame, HoldsAMebibyteWithAllThatBelongsToIt)
{
    kits::MessageFrame frame = Sample();
    for (const size_t count : {size_t(1), size_t(2), kits::bounds::kMostTargets}) {
        frame.targets.assign(count, 1);
        const size_t head = kits::MessageFrameHead(frame, 0).size() - 4;
        const size_t most = count == 1 ? kits::bounds::kMostFrame - head : kits::bounds::kMostShared;
        EXPECT_TRUE(kits::FitsFrame(count, most)) << count;
        EXPECT_FALSE(kits::FitsFrame(count, most + 1)) << count;
        FrameReader reader;
        reader.Add(kits::MessageFrameHead(frame, most) + std::string(most, 'x'));
        FrameKind kind{};
        std::string_view content;
        EXPECT_EQ(reader.Next(&kind, &content), Result::kFrame);
    }
    EXPECT_FALSE(kits::FitsFrame(0, 10));
    EXPECT_FALSE(kits::FitsFrame(kits::bounds::kMostTargets + 1, 10));
    FrameReader reader;
    frame.targets = {1};
    const size_t tooLong = kits::bounds::kMostFrame - (kits::MessageFrameHead(frame, 0).size() - 4) + 1;
    reader.Add(kits::MessageFrameHead(frame, tooLong));
    FrameKind kind{};
    std::string_view content;
    EXPECT_EQ(reader.Next(&kind, &content), Result::kBroken);
}

TEST(FrameReader, CutsAStreamIntoFramesHoweverItComes)
{
    std::string stream;
    for (uint64 i = 0; i < 20; ++i)
        stream += kits::NumberFrame(FrameKind::kPing, i) + kits::MessageFrameHead(Sample(), static_cast<size_t>(i)) +
                  std::string(static_cast<size_t>(i), 'm');
    for (const size_t piece : {size_t(1), size_t(2), size_t(3), size_t(7), size_t(64), stream.size()}) {
        FrameReader reader;
        uint64 count = 0;
        for (size_t place = 0; place < stream.size(); place += piece) {
            reader.Add(std::string_view(stream).substr(place, piece));
            FrameKind kind{};
            std::string_view content;
            while (reader.Next(&kind, &content) == Result::kFrame) {
                EXPECT_EQ(kind, count % 2 == 0 ? FrameKind::kPing : FrameKind::kMessage);
                EXPECT_TRUE(count % 2 == 1 || kits::ReadNumber(content) == count / 2);
                ++count;
            }
        }
        EXPECT_EQ(count, 40u);
    }
}

TEST(FrameReader, RefusesWhatIsTooLongBeforeItHasCome)
{
    FrameKind kind{};
    std::string_view content;
    for (const std::string& start : {std::string(4, '\0'), std::string(4, '\xFF'), std::string("\1\0\0\2", 4)}) {
        FrameReader reader;
        reader.Add(start);
        EXPECT_EQ(reader.Next(&kind, &content), Result::kBroken);
    }
    FrameReader stranger;
    stranger.SetLimit(64);
    stranger.Add(kits::HelloFrame(1));
    EXPECT_EQ(stranger.Next(&kind, &content), Result::kFrame);
    stranger.Add(kits::MessageFrameHead(Sample(), 100));
    EXPECT_EQ(stranger.Next(&kind, &content), Result::kBroken);
}
