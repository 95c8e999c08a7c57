// SPDX-License-Identifier: MIT
#include "src/prefs/store/StoreWriter.h"

#include "kits/storage/File.h"
#include "tests/src/prefs/store/StoreFixture.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

class StoreWriterTest : public StoreFixture {};

/// Holds every thread that is about to write until the gate is opened, and counts them.
class Gate : public kits::FailingDevice {
public:
    int Before(kits::FileAction& action) override
    {
        if (action.call != kits::FileCall::kWrite)
            return 0;
        std::unique_lock lock(fLock);
        ++fWrites;
        EXPECT_EQ(++fInside, 1) << "two writes at once";
        fChanged.notify_all();
        fChanged.wait(lock, [this] { return fIsOpen; });
        fThread = std::this_thread::get_id();
        return 0;
    }
    void After(const kits::FileAction& action, int64) override
    {
        if (action.call == kits::FileCall::kWrite) {
            const std::lock_guard lock(fLock);
            --fInside;
        }
    }

    void AwaitWrite()
    {
        std::unique_lock lock(fLock);
        fChanged.wait(lock, [this] { return fWrites > 0; });
    }
    void Open()
    {
        const std::lock_guard lock(fLock);
        fIsOpen = true;
        fChanged.notify_all();
    }
    int Writes()
    {
        const std::lock_guard lock(fLock);
        return fWrites;
    }
    std::thread::id WritingThread()
    {
        const std::lock_guard lock(fLock);
        return fThread;
    }

private:
    std::mutex fLock;
    std::condition_variable fChanged;
    int fWrites = 0;
    int fInside = 0;
    bool fIsOpen = false;
    std::thread::id fThread;
};

/// Fails everything as long as the test says so.
class Switch : public kits::FailingDevice {
public:
    int Before(kits::FileAction&) override
    {
        ++fCalls;
        return fFails ? EIO : 0;
    }
    std::atomic<bool> fFails = false;
    std::atomic<int> fCalls = 0;
};

} // namespace

TEST_F(StoreWriterTest, WritesACopyOnAnotherThread)
{
    Gate gate;
    const WithDisk with(gate);
    Preferences store(kName, false);
    StoreWriter writer;
    Fill(store, 1);
    EXPECT_EQ(writer.Write(store), B_OK);
    gate.AwaitWrite();
    // The write is held, and the store belongs to this thread all the time.
    Fill(store, 9);
    gate.Open();
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_NE(gate.WritingThread(), std::this_thread::get_id());
    EXPECT_EQ(NumberAtStart(), 1);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
}

TEST_F(StoreWriterTest, TheNewestOfThoseThatWaitIsWritten)
{
    Gate gate;
    const WithDisk with(gate);
    Preferences store(kName, false);
    StoreWriter writer;
    Fill(store, 1);
    ASSERT_EQ(writer.Write(store), B_OK);
    gate.AwaitWrite();
    for (int32 number = 2; number <= 20; ++number) {
        Fill(store, number);
        ASSERT_EQ(writer.Write(store), B_OK);
    }
    gate.Open();
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_EQ(gate.Writes(), 2) << "the first and the newest";
    EXPECT_EQ(NumberAtStart(), 20);
}

TEST_F(StoreWriterTest, TwoStoresAreWrittenOneAfterTheOther)
{
    Gate gate;
    const WithDisk with(gate);
    Preferences user(kName, false);
    Preferences common(kName, true);
    Fill(user, 1);
    Fill(common, 2);
    StoreWriter writer;
    ASSERT_EQ(writer.Write(common), B_OK);
    ASSERT_EQ(writer.Write(user), B_OK);
    gate.AwaitWrite();
    gate.Open();
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 1);
    EXPECT_EQ(NumberOf(Preferences(kName, true)), 2);
}

TEST_F(StoreWriterTest, TheSameIsNotWrittenTwice)
{
    Switch disk;
    const WithDisk with(disk);
    Preferences store(kName, false);
    Fill(store, 1);
    StoreWriter writer;
    ASSERT_EQ(writer.Write(store), B_OK);
    ASSERT_EQ(writer.Drain(), B_OK);
    const int calls = disk.fCalls;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(writer.Write(store), B_OK);
        EXPECT_EQ(writer.Drain(), B_OK);
    }
    EXPECT_EQ(disk.fCalls, calls);
    Fill(store, 2);
    EXPECT_EQ(writer.Write(store), B_OK);
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_GT(disk.fCalls, calls);
}

TEST_F(StoreWriterTest, WhatWentBackWhileItWasWrittenIsWrittenAgain)
{
    Preferences store(kName, false);
    Fill(store, 1);
    StoreWriter writer;
    ASSERT_EQ(writer.Write(store), B_OK);
    ASSERT_EQ(writer.Drain(), B_OK);
    Gate gate;
    const WithDisk with(gate);
    Fill(store, 2);
    ASSERT_EQ(writer.Write(store), B_OK);
    gate.AwaitWrite();
    Fill(store, 1);
    ASSERT_EQ(writer.Write(store), B_OK);
    gate.Open();
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 1);
}

TEST_F(StoreWriterTest, AWriteThatFailedIsTriedAgainWithTheNextCall)
{
    Switch disk;
    const WithDisk with(disk);
    Preferences store(kName, false);
    Fill(store, 1);
    StoreWriter writer;
    ASSERT_EQ(writer.Write(store), B_OK);
    ASSERT_EQ(writer.Drain(), B_OK);
    disk.fFails = true;
    Fill(store, 2);
    EXPECT_EQ(writer.Write(store), B_OK);
    EXPECT_EQ(writer.Drain(), B_IO_ERROR);
    disk.fFails = false;
    EXPECT_EQ(NumberAtStart(), 1);
    EXPECT_EQ(writer.Write(store), B_OK) << "unchanged, but not on the disk";
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 2);
}

TEST_F(StoreWriterTest, TellsWhetherAllIsWritten)
{
    Gate gate;
    Preferences store(kName, false);
    Fill(store, 1);
    StoreWriter writer;
    EXPECT_TRUE(writer.HasWrittenAll());
    {
        const WithDisk with(gate);
        ASSERT_EQ(writer.Write(store), B_OK);
        EXPECT_FALSE(writer.HasWrittenAll());
        gate.AwaitWrite();
        EXPECT_FALSE(writer.HasWrittenAll());
        gate.Open();
        EXPECT_EQ(writer.Drain(), B_OK);
        EXPECT_TRUE(writer.HasWrittenAll());
    }
    Switch disk;
    const WithDisk with(disk);
    disk.fFails = true;
    Fill(store, 2);
    ASSERT_EQ(writer.Write(store), B_OK);
    EXPECT_EQ(writer.Drain(), B_IO_ERROR);
    EXPECT_FALSE(writer.HasWrittenAll());
    disk.fFails = false;
    ASSERT_EQ(writer.Write(store), B_OK);
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_TRUE(writer.HasWrittenAll());
}

TEST_F(StoreWriterTest, DestroyingItWaitsForWhatWasHandedOver)
{
    Preferences store(kName, false);
    {
        StoreWriter writer;
        for (int32 number = 1; number <= 5; ++number) {
            Fill(store, number);
            ASSERT_EQ(writer.Write(store), B_OK);
        }
    }
    EXPECT_EQ(NumberAtStart(), 5);
}

TEST_F(StoreWriterTest, AStoreWithoutAFileIsRefused)
{
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    const Preferences store(kName, false);
    StoreWriter writer;
    EXPECT_EQ(writer.Write(store), B_NO_INIT);
    EXPECT_EQ(writer.Drain(), B_OK);
}

TEST_F(StoreWriterTest, ManyRoundsEndWithTheLast)
{
    Preferences store(kName, false);
    StoreWriter writer;
    for (int32 round = 0; round < 200; ++round) {
        Fill(store, round % 26);
        ASSERT_EQ(writer.Write(store), B_OK);
        if (round % 50 == 0) {
            ASSERT_EQ(writer.Drain(), B_OK);
            ASSERT_EQ(NumberAtStart(), round % 26);
        }
    }
    EXPECT_EQ(writer.Drain(), B_OK);
    EXPECT_EQ(NumberAtStart(), 199 % 26);
}
