// SPDX-License-Identifier: MIT
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/support/TypeConstants.h"
#include "src/sampling/Sysinfo.h"
#include "tests/src/connection/ConnectionTest.h"

#include <cinttypes>
#include <cstdio>

// The frames on the connection to another process.

namespace {

class FramesTest : public test::ConnectionTest {
protected:
    FramesTest()
        : fCounter(popen(test::ProgramBeside("frame_counter").c_str(), "r"))
    {
        EXPECT_EQ(sscanf(ReadLine().c_str(), "%" SCNx64, &fAddress), 1);
    }
    ~FramesTest() override
    {
        kits::TeamPort::Get().Close();
        pclose(fCounter);
    }

    /// Returns a messenger to a handler of the other process; none of these exists.
    BMessenger Handler(int32 number) const { return kits::MessageAccess::MessengerTo({fAddress, number}); }

    std::string ReadLine() const
    {
        char line[100] = "";
        return fgets(line, sizeof(line), fCounter) != nullptr ? line : "none";
    }

    FILE* const fCounter;
    uint64_t fAddress = 0;
};

} // namespace

TEST_F(FramesTest, OneARoundForAllReceiversOfAProcess)
{
    for (const int32 count : {1, 10, 500, 1024}) {
        const std::string start = std::to_string(count) + " ";
        {
            // With so short a history, no round ever comes too early.
            Sysinfo sampler(2);
            sampler.SetSamplingDelay(3600LL * 1000000);
            ASSERT_TRUE(test::AwaitState(find_thread("Sysinfo sampler"), B_THREAD_ASLEEP));
            for (int32 i = 1; i <= count; i++)
                sampler.AddMessenger(Handler(i));
            // The first sample is not sent: it has no changes.
            sampler.Sample();
            for (int round = 0; round < 3; round++) {
                sampler.Sample();
                EXPECT_EQ(ReadLine(), start + "3f62129a\n");
            }
        }
        EXPECT_EQ(ReadLine(), start + "3f6212a0\n");
    }
}

TEST_F(FramesTest, HaveTheRecordsForOthersAndAPointerForThisProcess)
{
    std::vector<BMessage> received;
    auto* looper = new test::RecordingLooper([&received](BMessage* message) { received.push_back(*message); });
    looper->Run();
    {
        Sysinfo sampler(2);
        sampler.SetSamplingDelay(3600LL * 1000000);
        ASSERT_TRUE(test::AwaitState(find_thread("Sysinfo sampler"), B_THREAD_ASLEEP));
        sampler.AddMessenger(Handler(7));
        sampler.AddMessenger(BMessenger(looper));
        sampler.AddMessenger(Handler(8));
        sampler.Sample();
        sampler.Sample();
        EXPECT_EQ(ReadLine(), "2 3f62129a\n");
        ASSERT_TRUE(test::RunUntil([&] { return !received.empty(); }));
        EXPECT_EQ(received[0].what, MSG_SYSINFO_SAMPLE);
        EXPECT_EQ(received[0].CountNames(B_ANY_TYPE), 1);
        void* pointer = nullptr;
        EXPECT_EQ(received[0].FindPointer("Sysinfo*", &pointer), B_OK);
        EXPECT_EQ(pointer, &sampler);
    }
    EXPECT_EQ(ReadLine(), "2 3f6212a0\n");
    // This process learns without a message that its sampler is gone.
    test::RunUntil([looper] { return looper->CountMessages() == 0; });
    EXPECT_EQ(received.size(), 1u);
    looper->Quit();
}
