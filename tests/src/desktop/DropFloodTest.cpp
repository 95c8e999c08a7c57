// SPDX-License-Identifier: MIT
#include "kits/interface/View.h"
#include "src/desktop/ReplicantWindow.h"
#include "src/support/Qel.h"
#include "tests/src/desktop/DesktopAppTest.h"
#include "tests/support/TeamFixture.h"

#include <malloc.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <ostream>

namespace {

/// Resources of a process that it might leak.
struct Use {
    int64 memory = 0; // bytes
    int64 files = 0;
    int64 threads = 0;

    static Use Measure()
    {
        malloc_trim(0);
        const struct mallinfo2 info = mallinfo2();
        Use use;
        use.memory = static_cast<int64>(info.uordblks + info.hblkhd);
        use.files = CountIn("/proc/self/fd");
        use.threads = CountIn("/proc/self/task");
        return use;
    }

    bool IsMoreThan(const Use& other) const
    {
        return files > other.files || threads > other.threads || memory - other.memory > kMemory;
    }

    friend std::ostream& operator<<(std::ostream& stream, const Use& use)
    {
        return stream << use.memory << " bytes, " << use.files << " files, " << use.threads << " threads";
    }

private:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr int64 kMemory = std::numeric_limits<int64>::max();
#else
    static constexpr int64 kMemory = 1024 * 1024;
#endif

    static int64 CountIn(const char* folder)
    {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    }
};

/// Ten thousand charts, and drops that are none, as fast as the host takes them, with a program that feeds the charts.
class DropFloodTest : public DesktopAppTest {
protected:
    static constexpr int kDrops = 10000;
    static constexpr int kAtOnce = 50;
    static constexpr size_t kLeft = 3;

    DropFloodTest()
        : fServer(signature, "10000", SAMPLING_SERVER)
    {
        EXPECT_TRUE(test::WaitFor([] { return BMessenger(signature).IsValid(); }));
    }

    /// Removes the oldest charts until this many are left, as their menus do.
    static void RemoveDownTo(DesktopApp& app, size_t count)
    {
        for (size_t i = 0; i + count < app.CountReplicants(); i++) {
            ReplicantWindow* window = app.ReplicantAt(i);
            window->PostMessage(MSG_REMOVE_REPLICANT, window->ChildAt(0));
        }
    }

    test::Partner fServer;
};

} // namespace

TEST_F(DropFloodTest, LeavesNothingBehindOfChartsThatComeAndGo)
{
    const BMessage dropped = Request(Archive(40, 30));
    int count = 0;
    Use early, late;
    Run(nullptr, {dropped}, [&](DesktopApp& app) {
        RemoveDownTo(app, kLeft);
        if (app.CountReplicants() > kLeft)
            return false; // they go first
        if (count == kDrops / 5 && early.files == 0)
            early = Use::Measure();
        if (count == kDrops) {
            // Connections of destroyed charts end by themselves.
            late = Use::Measure();
            return !late.IsMoreThan(early);
        }
        for (int i = 0; i < kAtOnce; i++, count++)
            EXPECT_EQ(app.PostMessage(&dropped), B_OK);
        return false;
    });
    EXPECT_EQ(count, kDrops);
    EXPECT_FALSE(late.IsMoreThan(early)) << early << " before, " << late << " after";
}

TEST_F(DropFloodTest, LeavesNothingBehindOfWhatIsNotTaken)
{
    BMessage foreign = Request(Archive(40, 30));
    foreign.RemoveName("Archive");
    foreign.AddMessage("Archive", &foreign);
    const BMessage chart = Request(Archive(20, 20));
    int count = 0;
    Use early, late;
    testing::internal::CaptureStderr();
    Run(nullptr, std::vector<BMessage>(DesktopApp::kMost, chart), [&](DesktopApp& app) {
        EXPECT_EQ(app.CountReplicants(), DesktopApp::kMost);
        if (count == kDrops / 5)
            early = Use::Measure();
        late = Use::Measure();
        if (count == kDrops)
            return !late.IsMoreThan(early);
        for (int i = 0; i < kAtOnce; i++, count++)
            EXPECT_EQ(app.PostMessage(i % 2 == 0 ? &chart : &foreign), B_OK);
        return false;
    });
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(count, kDrops);
    EXPECT_FALSE(late.IsMoreThan(early)) << early << " before, " << late << " after";
}
