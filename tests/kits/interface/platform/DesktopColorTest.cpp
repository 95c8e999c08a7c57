// SPDX-License-Identifier: MIT
#include "kits/interface/platform/DesktopColor.h"

#include "kits/application/Handler.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Screen.h"
#include "kits/kernel/Clock.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <mutex>

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);

/// A desktop that can be read only while nobody holds its lock.
class SlowDesktop : public DesktopBackend {
public:
    SlowDesktop(std::mutex& lock, std::atomic<bool>& isLooking)
        : fLock(lock)
        , fIsLooking(isLooking)
    {
    }
    const char* Name() const override { return "slow"; }
    std::optional<rgb_color> Read() override
    {
        fIsLooking = true;
        const std::lock_guard wait(fLock);
        return kRed;
    }
    std::optional<BMessage> Keep() override { return std::nullopt; }
    bool Paint(rgb_color, const BMessage&) override { return false; }
    bool Restore(const BMessage&) override { return true; }
    bool Change(rgb_color, const BMessage*) override { return false; }
    bool IsPainted() const override { return false; }
    bool OutlivesSession() const override { return false; }
    std::vector<int> Descriptors() const override { return {}; }
    bool TakeNews() override { return false; }

private:
    std::mutex& fLock;
    std::atomic<bool>& fIsLooking;
};

class DesktopColorTest : public testing::Test {
protected:
    DesktopColorTest()
    {
        DesktopColor::Stop();
        DesktopColor::SetMaker([this] { return std::make_unique<SlowDesktop>(lock, isLooking); });
    }
    ~DesktopColorTest() override
    {
        DesktopColor::Stop();
        DesktopColor::SetMaker(nullptr);
    }

    /// The answered colours, in order.
    void Ask()
    {
        DesktopColor::Ask([this](rgb_color color) { answers.push_back(color); });
    }

    std::mutex lock;
    std::atomic<bool> isLooking = false;
    std::vector<rgb_color> answers;
};

TEST_F(DesktopColorTest, AnswersWithWhatTheDesktopShows)
{
    Ask();
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(test::WaitFor([this] { return !answers.empty(); }));
    EXPECT_EQ(answers, std::vector{kRed});
}

/// A settings program may take seconds.
TEST_F(DesktopColorTest, AnswersOnceAndInTimeWhenTheDesktopTakesLonger)
{
    std::unique_lock busy(lock);
    const bigtime_t asked = system_time();
    Ask();
    EXPECT_LT(system_time() - asked, 50000);
    EXPECT_TRUE(test::WaitFor([this] { return isLooking.load(); }));
    EXPECT_TRUE(test::WaitFor([this] { return !answers.empty(); }));
    EXPECT_GE(system_time() - asked, 90000);
    EXPECT_EQ(answers, std::vector{DesktopColor::kUnknown});
    busy.unlock();
    EXPECT_TRUE(test::WaitFor([] { return DesktopColor::Get() == kRed; }));
    test::Turn();
    EXPECT_EQ(answers.size(), 1u);
}

/// Receives the answers.
class Asker : public BView {
public:
    Asker()
        : BView(BRect(0, 0, 10, 10), "asker", 0, 0)
    {
    }
    void MessageReceived(BMessage* message) override { heard.push_back(*message); }

    std::vector<BMessage> heard;
};

TEST_F(DesktopColorTest, TheScreenAnswersWithAMessage)
{
    auto* window = new BWindow(BRect(50, 50, 149, 149), "asker", B_TITLED_WINDOW, 0);
    auto* asker = new Asker;
    window->AddChild(asker);
    test::Show(window);
    BMessage question('mine');
    question.AddInt32("Number", 7);
    BScreen().AskDesktopColor(question, BMessenger(asker));
    ASSERT_TRUE(test::WaitFor([&] { return !asker->heard.empty(); }));
    const BMessage& answer = asker->heard.front();
    EXPECT_EQ(answer.what, uint32('mine'));
    EXPECT_TRUE(answer.HasData("Number", B_INT32_TYPE));
    const void* color = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(answer.FindData("RGBColor", B_RGB_COLOR_TYPE, &color, &size), B_OK);
    ASSERT_EQ(size, ssize_t(sizeof(kRed)));
    EXPECT_EQ(std::memcmp(color, &kRed, sizeof(kRed)), 0);
    window->Quit();
}

} // namespace
} // namespace kits
