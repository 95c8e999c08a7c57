// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XConversion.h"

#include "kits/kernel/Bounds.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using kits::XConversion;
using State = XConversion::State;

constexpr uint32 kSelection = 1;
constexpr uint32 kTarget = 2;
constexpr uint32 kProperty = 3;
constexpr uint32 kIncremental = 4;
constexpr uint32 kType = 5;
constexpr size_t kLimit = 10;

/// Our window at the server.
class Window : public XConversion::Port {
public:
    XConversion::Piece Take(uint32 property, size_t most) override
    {
        taken++;
        const auto held = properties.extract(property);
        if (held.empty())
            return {};
        const auto& [type, bytes] = held.mapped();
        const bool isWhole = bytes.size() <= most;
        return {type, isWhole, isWhole ? bytes : ""};
    }

    std::map<uint32, std::pair<uint32, std::string>> properties;
    int taken = 0;
};

class XConversionTest : public testing::Test {
protected:
    void Write(const std::string& bytes, uint32 type = kType)
    {
        fWindow.properties[kProperty] = {type, bytes};
        fConversion.Changed(kProperty);
    }
    void Answer(uint32 property = kProperty) { fConversion.Answered(kSelection, kTarget, property); }

    Window fWindow;
    XConversion fConversion{{kSelection, kTarget, kProperty}, kIncremental, kLimit, fWindow};
};

} // namespace

TEST_F(XConversionTest, TakesAnAnswerAsAWhole)
{
    EXPECT_EQ(fConversion.Current(), State::kAsked);
    Write("ten bytes!");
    EXPECT_EQ(fConversion.Current(), State::kAsked);
    Answer();
    EXPECT_EQ(fConversion.Current(), State::kDone);
    EXPECT_EQ(fConversion.Bytes(), "ten bytes!");
    EXPECT_EQ(fConversion.Type(), kType);
    EXPECT_TRUE(fWindow.properties.empty());
    // A second answer.
    Write("other");
    Answer();
    EXPECT_EQ(fConversion.Bytes(), "ten bytes!");
}

TEST_F(XConversionTest, TakesAnAnswerPieceByPiece)
{
    Write("size", kIncremental);
    Answer();
    EXPECT_EQ(fConversion.Current(), State::kPieces);
    Write("four");
    Write("more");
    EXPECT_FALSE(fConversion.IsOver());
    // Reported once more than it was written.
    fConversion.Changed(kProperty);
    EXPECT_FALSE(fConversion.IsOver());
    Write("");
    EXPECT_EQ(fConversion.Current(), State::kDone);
    EXPECT_EQ(fConversion.Bytes(), "fourmore");
    EXPECT_EQ(fConversion.Type(), kType);
}

TEST_F(XConversionTest, IsRefused)
{
    Answer(0);
    EXPECT_EQ(fConversion.Current(), State::kRefused);
    EXPECT_EQ(fWindow.taken, 0);
}

TEST_F(XConversionTest, IsRefusedByAnAnswerElsewhereOrWithoutData)
{
    Answer(kProperty + 1);
    EXPECT_EQ(fConversion.Current(), State::kRefused);
    XConversion other({kSelection, kTarget, kProperty}, kIncremental, kLimit, fWindow);
    other.Answered(kSelection, kTarget, kProperty);
    EXPECT_EQ(other.Current(), State::kRefused);
}

TEST_F(XConversionTest, IgnoresAnswersToOtherQuestions)
{
    fConversion.Answered(kSelection + 1, kTarget, kProperty);
    fConversion.Answered(kSelection, kTarget + 1, kProperty);
    fConversion.Changed(kProperty + 1);
    EXPECT_EQ(fConversion.Current(), State::kAsked);
    EXPECT_EQ(fWindow.taken, 0);
}

TEST_F(XConversionTest, RefusesWhatIsTooLong)
{
    Write("eleven byte");
    Answer();
    EXPECT_EQ(fConversion.Current(), State::kRefused);
    EXPECT_EQ(fConversion.Bytes(), "");

    XConversion other({kSelection, kTarget, kProperty}, kIncremental, kLimit, fWindow);
    fWindow.properties[kProperty] = {kIncremental, "size"};
    other.Answered(kSelection, kTarget, kProperty);
    for (int i = 0; i < 2; i++) {
        EXPECT_EQ(other.Current(), State::kPieces);
        fWindow.properties[kProperty] = {kType, "sixfor"};
        other.Changed(kProperty);
    }
    EXPECT_EQ(other.Current(), State::kRefused);
    EXPECT_EQ(other.Bytes(), "");
}

TEST_F(XConversionTest, RefusesPiecesThatNeverEndOrChangeTheirType)
{
    Write("size", kIncremental);
    Answer();
    for (int i = 0; i <= kits::bounds::kMostPieces; i++) {
        EXPECT_EQ(fConversion.Current(), State::kPieces);
        fConversion.Changed(kProperty);
    }
    EXPECT_EQ(fConversion.Current(), State::kRefused);

    XConversion other({kSelection, kTarget, kProperty}, kIncremental, kLimit, fWindow);
    fWindow.properties[kProperty] = {kIncremental, "size"};
    other.Answered(kSelection, kTarget, kProperty);
    fWindow.properties[kProperty] = {kType, "a"};
    other.Changed(kProperty);
    fWindow.properties[kProperty] = {kType + 1, "b"};
    other.Changed(kProperty);
    EXPECT_EQ(other.Current(), State::kRefused);
}
