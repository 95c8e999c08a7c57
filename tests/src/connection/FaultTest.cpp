// SPDX-License-Identifier: MIT
#include "tests/src/connection/ConnectionTest.h"
#include "tests/src/connection/partner/PartnerTricks.h"

#include <cstdlib>
#include <random>

// Either side ends, disconnects or hangs, at any moment.

using Phase = ConnectionState::Phase;
using test::Client;
using test::RunUntil;
using test::SampleTaker;
using test::Server;

namespace {

class FaultTest : public test::ConnectionTest {
protected:
    /// How often to repeat an action that takes a process each time; QEL_LONG selects the full number.
    static int CountProcesses() { return getenv("QEL_LONG") != nullptr ? 1000 : 20; }

    /// Lets the loop run for a while.
    static void RunFor(bigtime_t time)
    {
        const bigtime_t end = system_time() + time;
        RunUntil([end] { return system_time() >= end; });
    }

    static void StartFlapping(const BMessenger& partner, int32 count)
    {
        BMessage flap('flap');
        flap.AddInt32("count", count);
        partner.SendMessage(&flap);
    }

    static bool AwaitSteady(const char* signature)
    {
        return AwaitNumber(
            signature, "flaps", [](int32 left) { return left == 0; });
    }

    /// Returns how many descriptors the partner has open, including that of the connection on which it answers.
    static int32 FilesOf(const BMessenger& partner)
    {
        NumberOf(partner, "files");
        return NumberOf(partner, "files");
    }

    /// Waits until no more are open; a thread that is just ending may still have some.
    static bool AwaitFiles(int32 count)
    {
        return RunUntil([count] { return test::CountOpenFiles() <= count; });
    }
};

} // namespace

TEST_F(FaultTest, TheServerBreaksOffAThousandTimes)
{
    Server server(1000);
    server.Application();
    std::vector<std::unique_ptr<SampleTaker>> takers;
    for (int i = 0; i < 3; i++) {
        takers.push_back(NewTaker(1000));
        takers.back()->Connect();
    }
    ASSERT_TRUE(AwaitSamples(*takers[2]));
    const int32 files = test::CountOpenFiles();
    const int32 filesThere = FilesOf(server.Application());
    StartFlapping(server.Application(), 1000);
    ASSERT_TRUE(AwaitSteady(test::kServerSignature));
    for (const auto& taker : takers)
        EXPECT_TRUE(AwaitPhase(*taker, Phase::kConnected) && AwaitSamples(*taker));
    EXPECT_EQ(CountReceivers(server.Application()), 3);
    EXPECT_TRUE(AwaitFiles(files));
    EXPECT_TRUE(AwaitNumber(test::kServerSignature, "files", [=](int32 count) { return count <= filesThere; }));
    takers.clear();
    EXPECT_LT(find_thread("ChartView: Looking for Qel server..."), 0);
    EXPECT_TRUE(RunUntil([] { return find_thread("ChartView: Waiting for Qel server...") < 0; }));
}

TEST_F(FaultTest, TheClientBreaksOffAThousandTimes)
{
    Server server(1000);
    const BMessenger application = server.Application();
    Client client(3);
    const BMessenger host = client.Application();
    EXPECT_TRUE(AwaitNumber(test::kClientSignature, "connected", [](int32 count) { return count == 3; }));
    const int32 filesThere = FilesOf(application);
    StartFlapping(host, 1000);
    ASSERT_TRUE(AwaitSteady(test::kClientSignature));
    EXPECT_TRUE(AwaitNumber(test::kClientSignature, "connected", [](int32 count) { return count == 3; }));
    const int32 samples = NumberOf(client.Application(), "fewest");
    EXPECT_TRUE(AwaitNumber(test::kClientSignature, "fewest", [=](int32 count) { return count > samples; }));
    EXPECT_EQ(CountReceivers(application), 3);
    EXPECT_TRUE(AwaitNumber(test::kServerSignature, "files", [=](int32 count) { return count <= filesThere; }));
}

TEST_F(FaultTest, TheServerIsKilledAtAnyMoment)
{
    std::mt19937 random(5);
    auto taker = NewTaker(1000);
    taker->Connect();
    int32 files = 0;
    for (int round = 0; round < CountProcesses(); round++) {
        Server server(1000);
        if (round == 0) {
            EXPECT_TRUE(AwaitSamples(*taker));
            files = test::CountOpenFiles();
        }
        // While it starts, is asked, sends, or quits.
        RunFor(static_cast<bigtime_t>(random() % 30000));
        if (round % 3 == 1) {
            BMessenger(test::kServerSignature).SendMessage(B_QUIT_REQUESTED);
            RunFor(static_cast<bigtime_t>(random() % 2000));
        }
        server.Signal(SIGKILL);
        server.Await();
    }
    EXPECT_TRUE(AwaitPhase(*taker, Phase::kWaiting));
    Server server(1000);
    EXPECT_TRUE(AwaitSamples(*taker));
    EXPECT_TRUE(AwaitFiles(files));
}

TEST_F(FaultTest, TheClientIsKilledAtAnyMoment)
{
    std::mt19937 random(6);
    Server server(1000);
    const BMessenger application = server.Application();
    auto taker = NewTaker();
    taker->Connect();
    EXPECT_TRUE(AwaitSamples(*taker));
    const int32 filesThere = FilesOf(application);
    for (int round = 0; round < CountProcesses(); round++) {
        Client client(5);
        RunFor(static_cast<bigtime_t>(random() % 30000));
        if (round % 3 == 1) {
            BMessenger(test::kClientSignature).SendMessage(B_QUIT_REQUESTED);
            RunFor(static_cast<bigtime_t>(random() % 2000));
        }
        client.Signal(SIGKILL);
        client.Await();
        EXPECT_TRUE(AwaitSamples(*taker));
    }
    EXPECT_TRUE(AwaitNumber(
        test::kServerSignature, "receivers", [](int32 count) { return count == 1; }));
    EXPECT_TRUE(AwaitNumber(test::kServerSignature, "files", [=](int32 count) { return count <= filesThere; }));
}

TEST_F(FaultTest, AClientThatStandsStillCostsNoMemoryAndHoldsUpNobody)
{
    Server server(10000);
    const BMessenger application = server.Application();
    Client client(20);
    client.Application();
    auto taker = NewTaker();
    taker->Connect();
    EXPECT_TRUE(AwaitNumber(test::kClientSignature, "fewest", [](int32 count) { return count > 0; }));
    EXPECT_TRUE(AwaitSamples(*taker, 50));
    client.Signal(SIGSTOP);
    // Until the socket is full and every further sample replaces one that waits.
    EXPECT_TRUE(AwaitSamples(*taker, 100));
    const int32 before = NumberOf(application, "memory");
    const int32 samples = getenv("QEL_LONG") != nullptr ? 6000 : 300;
    taker->longestGap = 0;
    for (int32 count = 0; count < samples; count += 100)
        EXPECT_TRUE(AwaitSamples(*taker, 100));
    // Other receivers must not notice. There is no limit, because a busy machine holds them up by itself.
    RecordProperty("longest_gap_us", std::to_string(taker->longestGap));
    EXPECT_LT(NumberOf(application, "memory"), before + 512);
    EXPECT_EQ(CountReceivers(application), 21);
    client.Signal(SIGCONT);
    const int32 then = NumberOf(client.Application(), "fewest");
    EXPECT_TRUE(AwaitNumber(test::kClientSignature, "fewest", [=](int32 count) { return count > then; }));
    EXPECT_EQ(NumberOf(client.Application(), "connected"), 20);
}
