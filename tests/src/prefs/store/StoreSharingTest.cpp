// SPDX-License-Identifier: MIT
#include "kits/storage/File.h"
#include "tests/src/prefs/store/StoreFixture.h"
#include "tests/support/BoundProcess.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::milliseconds kPause(100);

/// Another process that holds the file of a store, or works on it.
class StoreSharingTest : public StoreFixture {
protected:
    /// Puts store 1 in place and takes the lock of its file.
    void LockFile()
    {
        const std::string bytes = BytesOf(1);
        fFolder.Put(kFile, bytes);
        fHolder.SetTo(fFolder.Path(kFile).c_str());
        ASSERT_EQ(fHolder.Lock(), B_OK);
    }

    BNode fHolder;
};

/// Takes the lock of a file and gives it up again.
status_t TryLock(const TempFolder& folder, const char* name)
{
    BNode node;
    node.SetTo(folder.Path(name).c_str());
    return node.Lock();
}

/// Counts attempts to lock, and measures the pauses between them; releases the lock that is in the way before one of
/// them.
class LockWatch : public kits::FailingDevice {
public:
    using Clock = std::chrono::steady_clock;

    explicit LockWatch(BNode* holder = nullptr, int releaseAt = 0)
        : fHolder(holder)
        , fReleaseAt(releaseAt)
    {
    }

    int Before(kits::FileAction& action) override
    {
        if (action.call != kits::FileCall::kLock)
            return 0;
        const Clock::time_point now = Clock::now();
        if (fAttempts > 0)
            fShortestPause = std::min(fShortestPause, now - fLast);
        fLast = now;
        if (++fAttempts == fReleaseAt)
            fHolder->Unset();
        return 0;
    }
    int Attempts() const { return fAttempts; }
    Clock::duration ShortestPause() const { return fShortestPause; }

private:
    BNode* fHolder;
    int fReleaseAt;
    int fAttempts = 0;
    Clock::time_point fLast{};
    Clock::duration fShortestPause = Clock::duration::max();
};

/// Stops the process before the call with this number until it is told to continue.
class PausingDisk : public kits::FailingDevice {
public:
    PausingDisk(int pauseAt, int reached, int goOn)
        : fPauseAt(pauseAt)
        , fReached(reached)
        , fGoOn(goOn)
    {
    }

    int Before(kits::FileAction&) override
    {
        char byte = 'p';
        if (fCalls++ == fPauseAt && (write(fReached, &byte, 1) != 1 || read(fGoOn, &byte, 1) != 1))
            _exit(1);
        return 0;
    }

private:
    int fPauseAt;
    int fReached;
    int fGoOn;
    int fCalls = 0;
};

/// A process that writes store 2 over store 1 and stops before one of its calls.
class PausedWriter {
public:
    template <class Body> PausedWriter(int pauseAt, Body body)
    {
        EXPECT_EQ(pipe(fReached), 0);
        EXPECT_EQ(pipe(fGoOn), 0);
        fProcess = test::ForkBound();
        if (fProcess == 0) {
            PausingDisk disk(pauseAt, fReached[1], fGoOn[0]);
            _exit(body(disk) ? 0 : 1);
        }
        close(fReached[1]);
        close(fGoOn[0]);
        char byte;
        fIsPaused = read(fReached[0], &byte, 1) == 1;
    }
    ~PausedWriter()
    {
        Finish();
        close(fReached[0]);
        close(fGoOn[1]);
    }

    bool IsPaused() const { return fIsPaused; }

    /// Lets it continue and waits for its end.
    /// @return whether it succeeded
    bool Finish()
    {
        if (fProcess > 0) {
            if (fIsPaused)
                EXPECT_EQ(write(fGoOn[1], "g", 1), 1);
            EXPECT_EQ(waitpid(fProcess, &fStatus, 0), fProcess);
            fProcess = 0;
        }
        return WIFEXITED(fStatus) && WEXITSTATUS(fStatus) == 0;
    }

private:
    int fReached[2];
    int fGoOn[2];
    pid_t fProcess = 0;
    bool fIsPaused = false;
    int fStatus = 0;
};

/// Lets the other process finish once this one has met its lock and tries again.
class FinishWhenMet : public kits::FailingDevice {
public:
    explicit FinishWhenMet(PausedWriter& other)
        : fOther(other)
    {
    }
    int Before(kits::FileAction& action) override
    {
        if (fHasMet && action.call == kits::FileCall::kOpen)
            fOther.Finish();
        return 0;
    }
    void After(const kits::FileAction& action, int64 result) override
    {
        fHasMet = fHasMet || (action.call == kits::FileCall::kLock && result < 0);
    }

private:
    PausedWriter& fOther;
    bool fHasMet = false;
};

} // namespace

TEST_F(StoreSharingTest, ALockedFileIsTriedSixTimesAndLeftAlone)
{
    LockFile();
    Preferences store(kName, false);
    EXPECT_TRUE(store.IsEmpty()) << "nothing was read";
    Fill(store, 2);
    BFile file(fFolder.Path(kFile).c_str(), B_READ_WRITE);
    const std::string before = fFolder.Get(kFile);

    LockWatch sync;
    {
        const WithDisk with(sync);
        EXPECT_EQ(store.Sync(), B_BUSY);
    }
    EXPECT_EQ(sync.Attempts(), 6);
    EXPECT_GE(sync.ShortestPause(), kPause);
    LockWatch save;
    {
        const WithDisk with(save);
        EXPECT_EQ(store.SaveTo(&file), B_BUSY);
    }
    EXPECT_EQ(save.Attempts(), 6);
    EXPECT_GE(save.ShortestPause(), kPause);
    LockWatch load;
    {
        const WithDisk with(load);
        EXPECT_EQ(store.LoadFrom(&file), B_BUSY);
    }
    EXPECT_EQ(load.Attempts(), 6);
    EXPECT_GE(load.ShortestPause(), kPause);
    LockWatch revert;
    {
        const WithDisk with(revert);
        EXPECT_EQ(store.Revert(), B_BUSY);
    }
    EXPECT_EQ(revert.Attempts(), 6);
    EXPECT_GE(revert.ShortestPause(), kPause);

    EXPECT_EQ(NumberOf(store), 2);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
    EXPECT_EQ(fFolder.Get(kFile), before);
}

TEST_F(StoreSharingTest, ALockThatIsGivenUpInTimeIsTaken)
{
    LockFile();
    LockWatch load(&fHolder, 3);
    {
        const WithDisk with(load);
        EXPECT_EQ(NumberAtStart(), 1);
    }
    EXPECT_EQ(load.Attempts(), 3);

    Preferences store(kName, false);
    Fill(store, 2);
    fHolder.SetTo(fFolder.Path(kFile).c_str());
    ASSERT_EQ(fHolder.Lock(), B_OK);
    LockWatch sync(&fHolder, 6);
    const WithDisk with(sync);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(NumberAtStart(), 2);
}

TEST_F(StoreSharingTest, WhatWasLockedAtTheStartIsKeptWhenItIsReplaced)
{
    LockFile();
    Preferences store(kName, false);
    fHolder.Unset();
    ASSERT_TRUE(store.IsEmpty());
    Fill(store, 2);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.Sync(), B_OK);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(fFolder.Names(), (std::set<std::string>{kFile, kKept}));
}

TEST_F(StoreSharingTest, BothFilesAreLockedWhileOneIsWritten)
{
    /// Tries both locks before each write.
    class Prober : public kits::FailingDevice {
    public:
        explicit Prober(const TempFolder& folder)
            : fFolder(folder)
        {
        }
        int Before(kits::FileAction& action) override
        {
            if (action.call == kits::FileCall::kWrite) {
                kits::SetFailingDevice(nullptr);
                EXPECT_EQ(TryLock(fFolder, kFile), B_BUSY);
                EXPECT_EQ(TryLock(fFolder, kBackup), B_BUSY);
                kits::SetFailingDevice(this);
                ++fProbes;
            }
            return 0;
        }
        int Probes() const { return fProbes; }

    private:
        const TempFolder& fFolder;
        int fProbes = 0;
    };
    Preferences store(kName, false);
    ASSERT_EQ(store.Sync(), B_OK);
    Prober disk(fFolder);
    const WithDisk with(disk);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_GE(disk.Probes(), 1);
}

TEST_F(StoreSharingTest, ALoaderBesideAWriterAtWorkHasOneOfTheStores)
{
    const std::string old = BytesOf(1);
    for (const bool readOnly : {false, true}) {
        for (int call = 0;; ++call) {
            fFolder.Clear();
            fFolder.Put(kFile, old);
            PausedWriter writer(call, [](kits::FailingDevice& disk) {
                Preferences store(kName, false);
                Fill(store, 2);
                const WithDisk with(disk);
                return store.Sync() == B_OK;
            });
            {
                FinishWhenMet disk(writer);
                const WithDisk with(disk);
                const int32 number = NumberOf(Preferences(kName, false, readOnly));
                ASSERT_TRUE(number == 1 || number == 2) << "writer at call " << call << ": " << number;
            }
            ASSERT_TRUE(writer.Finish()) << "the writer at call " << call << " was disturbed";
            ASSERT_EQ(NumberAtStart(), 2) << "writer at call " << call;
            ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile});
            if (!writer.IsPaused())
                break;
        }
    }
}

TEST_F(StoreSharingTest, AWriterBesideAWriterAtWorkComesAfterIt)
{
    const std::string old = BytesOf(1);
    for (int call = 0;; ++call) {
        fFolder.Clear();
        fFolder.Put(kFile, old);
        Preferences store(kName, false);
        Fill(store, 3);
        PausedWriter writer(call, [](kits::FailingDevice& disk) {
            Preferences other(kName, false);
            Fill(other, 2);
            const WithDisk with(disk);
            return other.Sync() == B_OK;
        });
        {
            FinishWhenMet disk(writer);
            const WithDisk with(disk);
            ASSERT_EQ(store.Sync(), B_OK) << "writer at call " << call;
        }
        ASSERT_TRUE(writer.Finish()) << "writer at call " << call;
        const int32 number = NumberAtStart();
        ASSERT_TRUE(number == 2 || number == 3) << "writer at call " << call << ": " << number;
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile});
        if (!writer.IsPaused())
            break;
    }
}

TEST_F(StoreSharingTest, AWriterLooksAgainWhatHasTheNameOnceItHasTheLock)
{
    // It stops before each of its calls while another one replaces the file and keeps the new one locked.
    const std::string old = BytesOf(1);
    for (int call = 0;; ++call) {
        fFolder.Clear();
        fFolder.Put(kFile, old);
        PausedWriter writer(call, [](kits::FailingDevice& disk) {
            Preferences other(kName, false);
            Fill(other, 2);
            const WithDisk with(disk);
            return other.Sync() == B_BUSY;
        });
        ASSERT_TRUE(writer.IsPaused());
        if (TryLock(fFolder, kFile) != B_OK) {
            EXPECT_GT(call, 1);
            break;
        }
        Preferences store(kName, false);
        Fill(store, 3);
        ASSERT_EQ(store.Sync(), B_OK);
        BNode holder;
        ASSERT_EQ(holder.SetTo(fFolder.Path(kFile).c_str()), B_OK);
        ASSERT_EQ(holder.Lock(), B_OK);
        EXPECT_TRUE(writer.Finish()) << "the writer at call " << call << " did not respect the lock";
        holder.Unset();
        EXPECT_EQ(NumberAtStart(), 3);
    }
}

TEST_F(StoreSharingTest, AFileIsNeverWrittenInPlace)
{
    // Two processes write the very first store at the same time.
    for (int call = 0;; ++call) {
        fFolder.Clear();
        PausedWriter writer(call, [](kits::FailingDevice& disk) {
            Preferences other(kName, false);
            Fill(other, 2);
            const WithDisk with(disk);
            const status_t status = other.Sync();
            return status == B_OK || status == B_BUSY;
        });
        Preferences store(kName, false);
        Fill(store, 3);
        FinishWhenMet disk(writer);
        {
            const WithDisk with(disk);
            ASSERT_EQ(store.Sync(), B_OK);
        }
        BNode node;
        ASSERT_EQ(node.SetTo(fFolder.Path(kFile).c_str()), B_OK);
        const std::string bytes = fFolder.Get(kFile);
        ASSERT_TRUE(writer.Finish()) << "writer at call " << call;
        const BEntry entry(fFolder.Path(kFile).c_str());
        EXPECT_TRUE(!node.IsAt(&entry) || fFolder.Get(kFile) == bytes) << "writer at call " << call;
        EXPECT_GE(NumberAtStart(), 2);
        if (!writer.IsPaused())
            break;
    }
}

TEST_F(StoreSharingTest, ManyWritersAndLoadersAtOnce)
{
    constexpr int kRounds = 30;
    Preferences first(kName, false);
    Fill(first, 1);
    ASSERT_EQ(first.Sync(), B_OK);
    pid_t processes[4];
    for (int process = 0; process < 4; ++process) {
        processes[process] = test::ForkBound();
        if (processes[process] != 0)
            continue;
        Preferences store(kName, false);
        for (int round = 0; round < kRounds; ++round) {
            if (process < 2) {
                Fill(store, process + 2);
                const status_t status = store.Sync();
                if (status != B_OK && status != B_BUSY)
                    _exit(1);
            } else {
                const status_t status = store.Revert();
                if (NumberOf(store) < 1 || (status != B_OK && status != B_BUSY))
                    _exit(2);
            }
        }
        _exit(0);
    }
    for (const pid_t process : processes) {
        int status = 0;
        ASSERT_EQ(waitpid(process, &status, 0), process);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
    EXPECT_GE(NumberAtStart(), 1);
    EXPECT_FALSE(fFolder.Has(kBackup));
}
