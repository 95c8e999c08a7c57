// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopWatch.h"

#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/kernel/Clock.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/Await.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <future>

using test::Await;

namespace kits {
namespace {

constexpr rgb_color kUnknown = make_color(1, 1, 1);
constexpr rgb_color kGray = make_color(128, 128, 128);
constexpr rgb_color kRed = make_color(200, 0, 0);
constexpr rgb_color kBlue = make_color(0, 0, 200);
constexpr const char* kFile = "kits-desktop.kept";

/// A desktop that is a variable. Outlives its backends.
struct FakeDesktop {
    std::mutex lock;
    rgb_color color = kGray;
    bool canBeKept = true;
    bool outlivesSession = false;
    bool isOurs = false;
    bool tellsNothing = false;
    bool refusesToRestore = false;
    std::optional<bool> wasPaintedAtChange;
    std::function<void()> beforeRead;
    int paints = 0;
    int restores = 0;
    std::function<void()> beforePaint;
    FileDescriptor news{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};

    rgb_color Color()
    {
        const std::lock_guard guard(lock);
        return color;
    }
    int Paints()
    {
        const std::lock_guard guard(lock);
        return paints;
    }
    /// Sets it as another program does.
    void SetFromOutside(rgb_color value)
    {
        SetSilently(value);
        eventfd_write(news.Get(), 1);
    }
    /// Sets it as a program does that notifies nobody.
    void SetSilently(rgb_color value)
    {
        const std::lock_guard guard(lock);
        color = value;
        isOurs = false;
    }
};

class FakeBackend : public DesktopBackend {
public:
    explicit FakeBackend(FakeDesktop& desktop)
        : fDesktop(desktop)
    {
    }

    const char* Name() const override { return "fake"; }
    std::optional<rgb_color> Read() override
    {
        if (fDesktop.beforeRead)
            fDesktop.beforeRead();
        return fDesktop.Color();
    }
    std::optional<BMessage> Keep() override
    {
        const std::lock_guard guard(fDesktop.lock);
        if (!fDesktop.canBeKept)
            return std::nullopt;
        BMessage kept;
        kept.AddInt32("Red", fDesktop.color.red);
        return kept;
    }
    bool Paint(rgb_color color, const BMessage&) override
    {
        if (fDesktop.beforePaint)
            fDesktop.beforePaint();
        const std::lock_guard guard(fDesktop.lock);
        fDesktop.color = color;
        fDesktop.isOurs = true;
        fDesktop.paints++;
        return true;
    }
    bool Restore(const BMessage& kept) override
    {
        const std::lock_guard guard(fDesktop.lock);
        if (fDesktop.refusesToRestore)
            return false;
        fDesktop.restores++;
        int32 red = 0;
        kept.FindInt32("Red", &red);
        const auto value = static_cast<uint8>(red);
        if (fDesktop.isOurs)
            fDesktop.color = make_color(value, value, value);
        fDesktop.isOurs = false;
        return true;
    }
    bool Change(rgb_color color, const BMessage* kept) override
    {
        const std::lock_guard guard(fDesktop.lock);
        fDesktop.color = color;
        fDesktop.isOurs = false;
        fDesktop.wasPaintedAtChange = kept != nullptr;
        return true;
    }
    bool IsPainted() const override
    {
        const std::lock_guard guard(fDesktop.lock);
        return fDesktop.isOurs;
    }
    bool OutlivesSession() const override { return fDesktop.outlivesSession; }
    std::vector<int> Descriptors() const override { return {fDesktop.news.Get()}; }
    bool TakeNews() override
    {
        eventfd_t value;
        return eventfd_read(fDesktop.news.Get(), &value) == 0;
    }
    bool NeedsLooking() const override { return fDesktop.tellsNothing; }

private:
    FakeDesktop& fDesktop;
};

class DesktopWatchTest : public testing::Test {
protected:
    void SetUp() override { setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1); }

    std::unique_ptr<DesktopWatch> MakeWatch()
    {
        return std::make_unique<DesktopWatch>([this] { return std::make_unique<FakeBackend>(desktop); }, kUnknown);
    }
    /// Makes one that has read the desktop.
    std::unique_ptr<DesktopWatch> MakeReadyWatch()
    {
        auto watch = MakeWatch();
        EXPECT_TRUE(Await([&] { return watch->Get() == desktop.Color(); }));
        return watch;
    }
    bool AwaitColor(rgb_color color)
    {
        return Await([&] { return desktop.Color() == color; });
    }
    bool AwaitFile(bool there)
    {
        return Await([&] { return folder.Has(kFile) == there; });
    }
    static rgb_color AskAndAwait(DesktopWatch& watch)
    {
        std::promise<rgb_color> answer;
        watch.Ask([&](rgb_color color) { answer.set_value(color); });
        return answer.get_future().get();
    }
    /// Leaves the file of a program that was killed while the desktop was red.
    void LeaveAsKilled(const char* backend = "fake", bool outlivesSession = true)
    {
        BMessage state;
        state.AddInt32("Red", kGray.red);
        BMessage kept;
        kept.AddString("Desktop", backend);
        kept.AddBool("OutlivesSession", outlivesSession);
        kept.AddMessage("Kept", &state);
        DesktopKept file;
        ASSERT_EQ(file.Save(kept), B_OK);
        file.Leave();
        desktop.color = kRed;
        desktop.isOurs = true;
    }

    TempFolder folder{TempFolder::Place::kMemory};
    FakeDesktop desktop;
};

TEST_F(DesktopWatchTest, ReadsTheColourAndFollowsIt)
{
    const auto watch = MakeReadyWatch();
    desktop.SetFromOutside(kBlue);
    EXPECT_TRUE(Await([&] { return watch->Get() == kBlue; }));
}

TEST_F(DesktopWatchTest, SaysWhenTheColourIsAnother)
{
    std::atomic<int> said = 0;
    // The fake desktop keeps and restores one component of a colour.
    const rgb_color other = make_color(90, 90, 90);
    DesktopWatch watch([this] { return std::make_unique<FakeBackend>(desktop); }, kGray, [&] { said++; });
    desktop.SetFromOutside(other);
    EXPECT_TRUE(Await([&] { return said == 1; }));
    EXPECT_EQ(watch.Get(), other);
    watch.Set(kRed, true);
    EXPECT_EQ(said, 2);
    watch.Set(kRed, true);
    EXPECT_EQ(said, 2);
    watch.Restore();
    EXPECT_EQ(said, 3);
}

TEST_F(DesktopWatchTest, WithoutADesktopKnowsWhatWasSetHere)
{
    for (const DesktopWatch::Maker& none :
         {DesktopWatch::Maker(), DesktopWatch::Maker([] { return std::unique_ptr<DesktopBackend>(); })}) {
        DesktopWatch watch(none, kUnknown);
        EXPECT_EQ(watch.Get(), kUnknown);
        watch.Restore();
        EXPECT_EQ(watch.Get(), kUnknown);
        watch.Set(kRed, true);
        watch.Set(kBlue, true);
        EXPECT_EQ(watch.Get(), kBlue);
        watch.Restore();
        EXPECT_EQ(watch.Get(), kUnknown);
    }
    EXPECT_FALSE(folder.Has(kFile));
}

TEST_F(DesktopWatchTest, PaintsTheDesktopAndPutsItBack)
{
    const auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    EXPECT_EQ(watch->Get(), kRed);
    EXPECT_TRUE(AwaitColor(kRed));
    watch->Set(kBlue, true);
    EXPECT_TRUE(AwaitColor(kBlue));
    watch->Restore();
    EXPECT_EQ(watch->Get(), kGray);
    EXPECT_TRUE(AwaitColor(kGray));
    EXPECT_TRUE(AwaitFile(false));
    EXPECT_EQ(watch->Get(), kGray);
}

TEST_F(DesktopWatchTest, KeepsOnTheDiskBeforeItPaints)
{
    bool wasThere = false;
    desktop.beforePaint = [&] { wasThere = folder.Has(kFile); };
    const auto watch = MakeReadyWatch();
    EXPECT_FALSE(folder.Has(kFile));
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    EXPECT_TRUE(wasThere);
    BMessage kept;
    const std::string bytes = folder.Get(kFile);
    ASSERT_EQ(kept.Unflatten(bytes.data(), static_cast<ssize_t>(bytes.size())), B_OK);
    EXPECT_TRUE(kept.HasData("Kept", B_MESSAGE_TYPE));
}

TEST_F(DesktopWatchTest, DoesNotPaintWhatCannotBePutBack)
{
    desktop.canBeKept = false;
    auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    EXPECT_EQ(watch->Get(), kRed);
    watch.reset();
    EXPECT_EQ(desktop.paints, 0);
    EXPECT_FALSE(folder.Has(kFile));
}

TEST_F(DesktopWatchTest, DoesNotPaintWhenTheDiskRefuses)
{
    auto watch = MakeReadyWatch();
    std::filesystem::create_directory(folder.Path(kFile));
    watch->Set(kRed, true);
    watch.reset();
    EXPECT_EQ(desktop.paints, 0);
}

TEST_F(DesktopWatchTest, ForTheSessionOnlyChangesNoSettings)
{
    desktop.outlivesSession = true;
    auto watch = MakeReadyWatch();
    watch->Set(kRed, false);
    EXPECT_EQ(watch->Get(), kRed);
    watch.reset();
    EXPECT_EQ(desktop.paints, 0);
}

TEST_F(DesktopWatchTest, PutsBackWhatAKilledProgramLeft)
{
    LeaveAsKilled();
    const auto watch = MakeWatch();
    EXPECT_TRUE(AwaitFile(false));
    EXPECT_TRUE(AwaitColor(kGray));
    EXPECT_TRUE(Await([&] { return watch->Get() == kGray; }));
}

TEST_F(DesktopWatchTest, LeavesWhatAnotherDesktopKept)
{
    LeaveAsKilled("other");
    const std::string kept = folder.Get(kFile);
    auto watch = MakeReadyWatch();
    watch->Set(kBlue, true);
    watch->Restore();
    watch.reset();
    EXPECT_EQ(folder.Get(kFile), kept);
    EXPECT_EQ(desktop.Color(), kRed);
    EXPECT_EQ(desktop.paints, 0);
}

TEST_F(DesktopWatchTest, ForgetsWhatEndedWithAnotherSession)
{
    LeaveAsKilled("other", false);
    const auto watch = MakeReadyWatch();
    EXPECT_TRUE(AwaitFile(false));
    EXPECT_EQ(desktop.Color(), kRed);
}

TEST_F(DesktopWatchTest, RemovesAHalfWrittenFile)
{
    for (const std::string bytes : {"", "\xd9\xd9\xf7\x82 no message"}) {
        folder.Put(kFile, bytes);
        auto watch = MakeReadyWatch();
        watch.reset();
        EXPECT_FALSE(folder.Has(kFile));
        EXPECT_EQ(desktop.restores, 0);
    }
}

TEST_F(DesktopWatchTest, RemovesAFileThatNamesNoDesktop)
{
    BMessage nobodys;
    nobodys.AddInt32("Red", 1);
    std::string flat(static_cast<size_t>(nobodys.FlattenedSize()), '\0');
    ASSERT_EQ(nobodys.Flatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    folder.Put(kFile, flat);
    const auto watch = MakeReadyWatch();
    EXPECT_TRUE(AwaitFile(false));
    watch->Set(kBlue, true);
    EXPECT_TRUE(AwaitColor(kBlue)) << "it would keep us from painting for ever";
}

TEST_F(DesktopWatchTest, LeavesTheDesktopToAnotherProgramThatPaints)
{
    const auto first = MakeReadyWatch();
    first->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    auto second = MakeReadyWatch();
    second->Set(kBlue, true);
    second->Restore();
    second.reset();
    EXPECT_EQ(desktop.Color(), kRed);
    EXPECT_EQ(desktop.Paints(), 1);
    EXPECT_TRUE(folder.Has(kFile));
    first->Restore();
    EXPECT_TRUE(AwaitColor(kGray));
}

TEST_F(DesktopWatchTest, LeavesWhatOthersSetOverIt)
{
    const auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    desktop.SetFromOutside(kBlue);
    EXPECT_TRUE(Await([&] { return watch->Get() == kBlue; }));
    EXPECT_TRUE(AwaitFile(false));
    watch->Restore();
    desktop.SetFromOutside(kGray);
    EXPECT_TRUE(Await([&] { return watch->Get() == kGray; }));
}

TEST_F(DesktopWatchTest, PaintsTheNewestOfMany)
{
    auto watch = MakeReadyWatch();
    for (int i = 0; i < 255; i++)
        watch->Set(make_color(static_cast<uint8>(i), 0, 0), true);
    watch->Set(kBlue, true);
    EXPECT_TRUE(AwaitColor(kBlue));
}

TEST_F(DesktopWatchTest, DoesWhatWasOrderedBeforeItEnds)
{
    auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    watch->Restore();
    watch.reset();
    EXPECT_EQ(desktop.Color(), kGray);
    EXPECT_FALSE(folder.Has(kFile));
}

TEST_F(DesktopWatchTest, TriesAgainAtTheNextStartWhatCouldNotBePutBack)
{
    auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    desktop.refusesToRestore = true;
    watch->Restore();
    watch.reset();
    EXPECT_TRUE(folder.Has(kFile));
    desktop.refusesToRestore = false;
    watch = MakeWatch();
    EXPECT_TRUE(AwaitColor(kGray));
}

TEST_F(DesktopWatchTest, PutsBackTheColourThatWasNotYetKnownWhenItWasPainted)
{
    const auto watch = MakeWatch();
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    watch->Restore();
    EXPECT_TRUE(AwaitColor(kGray));
    EXPECT_TRUE(Await([&] { return watch->Get() == kGray; }));
}

TEST_F(DesktopWatchTest, LooksNowAndThenAtADesktopThatTellsNothing)
{
    desktop.tellsNothing = true;
    const auto watch = MakeReadyWatch();
    {
        const std::lock_guard guard(desktop.lock);
        desktop.color = kBlue;
    }
    EXPECT_TRUE(Await([&] { return watch->Get() == kBlue; }));
}

/// Answers with the current colour, whatever was reported about it.
TEST_F(DesktopWatchTest, AnswersWithTheColourThatIsThereNow)
{
    const auto watch = MakeReadyWatch();
    for (const rgb_color color : {kRed, kBlue}) {
        desktop.SetSilently(color);
        EXPECT_EQ(AskAndAwait(*watch), color);
        EXPECT_EQ(watch->Get(), color);
    }
}

TEST_F(DesktopWatchTest, LooksAgainForWhoAsksWhileItLooks)
{
    std::mutex looking;
    desktop.beforeRead = [&] { const std::lock_guard wait(looking); };
    const auto watch = MakeReadyWatch();
    looking.lock();
    std::promise<rgb_color> first;
    watch->Ask([&](rgb_color color) { first.set_value(color); });
    desktop.SetSilently(kRed);
    std::promise<rgb_color> second;
    watch->Ask([&](rgb_color color) { second.set_value(color); });
    looking.unlock();
    first.get_future().wait();
    EXPECT_EQ(second.get_future().get(), kRed);
}

TEST_F(DesktopWatchTest, AnswersWithWhatItPaints)
{
    const auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    EXPECT_EQ(AskAndAwait(*watch), kRed);
    // Somebody has painted over it and notified nobody.
    desktop.SetSilently(kBlue);
    EXPECT_EQ(AskAndAwait(*watch), kBlue);
    EXPECT_TRUE(AwaitFile(false));
}

TEST_F(DesktopWatchTest, AnswersWithoutADesktop)
{
    DesktopWatch none(nullptr, kUnknown);
    EXPECT_EQ(AskAndAwait(none), kUnknown);
    none.Set(kRed, true);
    EXPECT_EQ(AskAndAwait(none), kRed);
    // Either may happen: the thread still runs, or it has ended.
    DesktopWatch nothingMade([] { return std::unique_ptr<DesktopBackend>(); }, kUnknown);
    EXPECT_EQ(AskAndAwait(nothingMade), kUnknown);
    EXPECT_EQ(AskAndAwait(nothingMade), kUnknown);
}

TEST_F(DesktopWatchTest, ChangesTheDesktopForGood)
{
    auto watch = MakeReadyWatch();
    watch->Change(kRed);
    EXPECT_EQ(watch->Get(), kRed);
    EXPECT_TRUE(AwaitColor(kRed));
    EXPECT_FALSE(desktop.wasPaintedAtChange.value_or(true));
    EXPECT_FALSE(folder.Has(kFile));
    watch->Restore();
    watch.reset();
    EXPECT_EQ(desktop.Color(), kRed);
    EXPECT_EQ(desktop.paints, 0);
}

TEST_F(DesktopWatchTest, PutsBackNothingFromBeforeAChange)
{
    auto watch = MakeReadyWatch();
    // The fake desktop keeps and restores one component of a colour, and may have been read again by then.
    const rgb_color other = make_color(90, 90, 90);
    watch->Set(kBlue, true);
    ASSERT_TRUE(AwaitColor(kBlue));
    watch->Change(other);
    EXPECT_TRUE(AwaitColor(other));
    EXPECT_TRUE(AwaitFile(false));
    EXPECT_TRUE(desktop.wasPaintedAtChange.value_or(false));
    // Anything painted from now on is restored to this.
    watch->Set(kBlue, true);
    ASSERT_TRUE(AwaitColor(kBlue));
    watch->Restore();
    EXPECT_EQ(watch->Get(), other);
    EXPECT_TRUE(AwaitColor(other));
}

TEST_F(DesktopWatchTest, AChangeComesAfterWhatAKilledProgramLeft)
{
    LeaveAsKilled();
    auto watch = MakeWatch();
    watch->Change(kBlue);
    watch.reset();
    EXPECT_EQ(desktop.Color(), kBlue);
    EXPECT_FALSE(folder.Has(kFile));
}

TEST_F(DesktopWatchTest, DoesNotWaitForAPictureAtItsEnd)
{
    folder.Put("picture", "1");
    folder.Put("reader", "#!/bin/sh\n: >'" + folder.Path("started") + "'\ntest -e '" + folder.Path("go") +
                             "' && echo 0 0 25700 65535 || exec sleep 1000\n");
    std::filesystem::permissions(folder.Path("reader"), std::filesystem::perms::owner_all);
    SetPictureReader(folder.Path("reader"));
    desktop.beforeRead = [this] { AverageOfFile(folder.Path("picture"), kGray); };
    auto watch = MakeWatch();
    EXPECT_TRUE(Await([this] { return folder.Has("started"); }));
    watch.reset();
    // The picture is read again, which it would not be after a time-out.
    folder.Put("go", "");
    EXPECT_EQ(AverageOfFile(folder.Path("picture"), kGray), make_color(0, 0, 100));
    SetPictureReader("");
}

TEST_F(DesktopWatchTest, WorksWithoutASettingsFolder)
{
    const std::string file = folder.Path("file");
    folder.Put("file", "");
    setenv("XDG_CONFIG_HOME", (file + "/config").c_str(), 1);
    const auto watch = MakeReadyWatch();
    watch->Set(kRed, true);
    ASSERT_TRUE(AwaitColor(kRed));
    watch->Restore();
    EXPECT_TRUE(AwaitColor(kGray));
}

} // namespace
} // namespace kits
