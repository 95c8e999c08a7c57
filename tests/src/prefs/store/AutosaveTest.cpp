// SPDX-License-Identifier: MIT
#include "src/prefs/store/Autosave.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/kernel/Errors.h"
#include "src/support/Changes.h"
#include "tests/src/prefs/store/StoreFixture.h"
#include "tests/support/Loop.h"

#include <memory>

namespace {

class AutosaveTest : public StoreFixture {
protected:
    /// Looks once, and returns how many times that archived.
    int Look()
    {
        const int before = fArchived;
        fAutosave.Look();
        return fArchived - before;
    }
    /// Makes a state in which everything is on the disk and nothing has changed since.
    void Settle()
    {
        fAutosave.Save();
        EXPECT_EQ(fAutosave.Drain(), B_OK);
        EXPECT_TRUE(fAutosave.HasWrittenAll());
    }

    const kits::InterfaceLocker fLocker;
    Preferences fStore{kName, false};
    Preferences fOther{"application/x-vnd.test-Other", true};
    int32 fNumber = 1; ///< the program's arrangement
    status_t fStatus = B_OK;
    int fArchived = 0;
    int fTold = 0;
    Autosave fAutosave{{&fOther, &fStore},
                       [this] {
                           fArchived++;
                           Fill(fStore, fNumber);
                           return fStatus;
                       },
                       [this](const StoreWriter&) { fTold++; }};
};

} // namespace

TEST_F(AutosaveTest, TheFirstLookArchives)
{
    EXPECT_EQ(Look(), 1);
}

TEST_F(AutosaveTest, ALookArchivesAfterAChangeOnly)
{
    Settle();
    EXPECT_EQ(Look(), 0);
    fNumber = 2;
    Changes::Note();
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(fAutosave.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 2);
    EXPECT_EQ(Look(), 0);
}

TEST_F(AutosaveTest, AChangeThatNobodyNotesIsOnTheDiskAfterAMinute)
{
    Settle();
    fNumber = 3;
    for (int32 look = 1; look < Autosave::kLooksToArchive; look++)
        EXPECT_EQ(Look(), 0) << "look " << look;
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(fAutosave.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 3);
    EXPECT_EQ(Look(), 0);
}

TEST_F(AutosaveTest, WritesEveryStore)
{
    fOther.AddInt32("Number", 7);
    Settle();
    EXPECT_EQ(NumberAtStart(), 1);
    int32 number = 0;
    EXPECT_EQ(Preferences("application/x-vnd.test-Other", true).FindInt32("Number", &number), B_OK);
    EXPECT_EQ(number, 7);
}

TEST_F(AutosaveTest, ArchivesAgainAtEachLookUntilThatSucceeds)
{
    fStatus = B_NO_MEMORY;
    Settle();
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(Look(), 1);
    fStatus = B_OK;
    EXPECT_EQ(Look(), 1);
    EXPECT_EQ(fAutosave.Drain(), B_OK);
    EXPECT_EQ(Look(), 0);
}

TEST_F(AutosaveTest, TellsAtEachLook)
{
    Settle();
    Look();
    Look();
    EXPECT_EQ(fTold, 2);
}

TEST_F(AutosaveTest, LooksEveryFourSecondsUntilItIsStopped)
{
    test::MockClock clock;
    fAutosave.Start();
    kits::EventLoop::RunDue();
    EXPECT_EQ(fTold, 0);
    for (int count = 1; count <= 3; count++) {
        clock.now += 4'000'000;
        kits::EventLoop::RunDue();
        EXPECT_EQ(fTold, count);
    }
    fAutosave.Stop();
    clock.now += 4'000'000;
    kits::EventLoop::RunDue();
    EXPECT_EQ(fTold, 3);
}

TEST_F(AutosaveTest, SavesSoonOnceForWhatChangesUntilThen)
{
    test::MockClock clock;
    fAutosave.SaveSoon();
    clock.now += 200'000;
    fAutosave.SaveSoon();
    kits::EventLoop::RunDue();
    EXPECT_EQ(fArchived, 0);
    clock.now += 100'000;
    kits::EventLoop::RunDue();
    clock.now += 400'000;
    kits::EventLoop::RunDue();
    EXPECT_EQ(fArchived, 1);
    EXPECT_EQ(fAutosave.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 1);
}
