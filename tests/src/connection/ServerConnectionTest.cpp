// SPDX-License-Identifier: MIT
#include "src/sampling/ServerConnection.h"

#include "kits/support/TypeConstants.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/connection/ConnectionTest.h"
#include "tests/support/TempFolder.h"

#include <cstdlib>
#include <cstring>
#include <map>

using Phase = ConnectionState::Phase;
using test::AwaitState;
using test::RunUntil;
using test::SampleTaker;
using test::Server;

namespace {

class ServerConnectionTest : public test::ConnectionTest {};

std::string Bytes(const BMessage& message, const char* field)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData(field, B_RAW_TYPE, &data, &size) != B_OK)
        return "none";
    return std::string(static_cast<const char*>(data), static_cast<size_t>(size));
}

} // namespace

TEST_F(ServerConnectionTest, GetsSamples)
{
    Server server;
    const BMessenger application = server.Application();
    auto taker = NewTaker();
    EXPECT_EQ(taker->connection.Phase(), Phase::kOff);
    taker->Connect();
    EXPECT_TRUE(AwaitSamples(*taker, 3));
    EXPECT_TRUE(AwaitPhase(*taker, Phase::kConnected));
    EXPECT_EQ(taker->connection.Server(), application);
    EXPECT_EQ(CountReceivers(application), 1);
    EXPECT_EQ(taker->countFailures, 0);
    // The second time it is the same receiver.
    taker->Connect();
    EXPECT_TRUE(AwaitPhase(*taker, Phase::kConnected));
    EXPECT_EQ(CountReceivers(application), 1);
}

TEST_F(ServerConnectionTest, TheRecordsAreTheSameToTheByteAtBothEnds)
{
    Server server;
    const BMessenger application = server.Application();
    auto taker = NewTaker();
    taker->Connect();
    ASSERT_TRUE(AwaitSamples(*taker, 3));
    const char* const fields[] = {kSysinfoBodyField.Name(), kSumActiveField.Name(), kNodeBodyField.Name(),
                                  kActiveDeltasField.Name()};
    // Both show the same sample if nothing came between.
    bool isSame = false;
    for (int i = 0; i < 1000 && !isSame; i++) {
        const BMessage there = InfoOf(application);
        if (SysinfoNode(&there).Time() != SysinfoNode(&taker->newest).Time())
            continue;
        isSame = true;
        for (const char* field : fields)
            EXPECT_EQ(Bytes(there, field), Bytes(taker->newest, field)) << field;
    }
    EXPECT_TRUE(isSame);
    EXPECT_EQ(taker->newest.CountNames(B_ANY_TYPE), 4);
    for (const char* field : fields) {
        type_code type = 0;
        int32 count = 0;
        EXPECT_EQ(taker->newest.GetInfo(field, &type, &count), B_OK) << field;
        EXPECT_EQ(type, type_code(B_RAW_TYPE)) << field;
        EXPECT_EQ(count, 1) << field;
    }
    EXPECT_EQ(Bytes(taker->newest, kSysinfoBodyField.Name()).size(), 574u);
    EXPECT_EQ(Bytes(taker->newest, kNodeBodyField.Name()).size(), 560u);
    const Sysinfo ghost(&taker->newest);
    ASSERT_EQ(ghost.InitCheck(), B_OK);
    EXPECT_EQ(Bytes(taker->newest, kSumActiveField.Name()).size(), 8u * static_cast<size_t>(ghost.Info().cpu_count));
    EXPECT_EQ(Bytes(taker->newest, kActiveDeltasField.Name()).size(), 8u * static_cast<size_t>(ghost.Info().cpu_count));
    EXPECT_EQ(ghost.SamplingDelay(), 10000);
    EXPECT_GT(SysinfoNode(&taker->newest).Elapsed(), 0);
}

TEST_F(ServerConnectionTest, MemoryBeyondTheRecordComesToo)
{
    TempFolder machine;
    std::filesystem::create_directory(machine.Path("proc"));
    machine.Put("proc/stat", "cpu0 1 0 0 0 0 0 0 0 0 0\nbtime 1700000000\n");
    machine.Put("proc/meminfo", "MemTotal: 12884901888 kB\nMemAvailable: 6442450944 kB\n");
    setenv("KITS_ROOT", machine.Path().c_str(), 1);
    Server server;
    unsetenv("KITS_ROOT");
    server.Application();
    auto taker = NewTaker();
    taker->Connect();
    ASSERT_TRUE(AwaitSamples(*taker, 2));
    const Sysinfo sampler(&taker->newest);
    const SysinfoNode sample(&taker->newest);
    ASSERT_EQ(sample.InitCheck(), B_OK);
    for (const vptarget_t target : {VP_FREE_MEMORY, VP_USED_MEMORY}) {
        ValueProvider source(target, 0);
        char text[ValueProvider::kValueStringLength];
        source.GetValueString(text, &sampler, &sample);
        EXPECT_STREQ(text, "6291456.0 MB");
        EXPECT_EQ(source.Value(&sampler, &sample), 0.5);
    }
}

TEST_F(ServerConnectionTest, StartsTheApplicationOnceHoweverManyAsk)
{
    std::vector<std::unique_ptr<SampleTaker>> takers;
    for (int i = 0; i < 10; i++) {
        takers.push_back(NewTaker());
        takers.back()->Connect(true);
    }
    for (const auto& taker : takers)
        EXPECT_TRUE(AwaitSamples(*taker));
    const BMessenger server = takers[0]->connection.Server();
    EXPECT_EQ(CountReceivers(server), 10);
    for (const auto& taker : takers) {
        EXPECT_EQ(taker->connection.Server(), server);
        EXPECT_EQ(taker->countFailures, 0);
    }
    bool isEarly = false;
    EXPECT_EQ(InfoOf(server).FindBool("early", &isEarly), B_OK);
    EXPECT_TRUE(isEarly);
}

TEST_F(ServerConnectionTest, SaysOnceThatItCannotBeStarted)
{
    SampleTaker taker(fLooper, 5000, "application/x-vnd.test-nowhere_to_be_found");
    taker.Connect(true);
    EXPECT_TRUE(RunUntil([&] { return taker.countFailures == 1; }));
    EXPECT_EQ(taker.connection.Phase(), Phase::kWaiting);
    // Anybody can send such a message.
    BMessenger(&taker).SendMessage(test::kFailureCode);
    const thread_id connector = find_thread("ChartView: Waiting for Qel server...");
    EXPECT_GT(connector, 0);
    thread_info info;
    EXPECT_EQ(get_thread_info(connector, &info), B_OK);
    EXPECT_EQ(info.priority, 5);
    EXPECT_TRUE(AwaitState(connector, B_THREAD_ASLEEP));
    EXPECT_TRUE(RunUntil([this] { return fLooper->CountMessages() == 0; }));
    EXPECT_EQ(taker.countFailures, 1);
    // Another request is a new question.
    taker.Connect(true);
    EXPECT_TRUE(RunUntil([&] { return taker.countFailures == 2; }));
}

TEST_F(ServerConnectionTest, StartsNothingThatItMayNot)
{
    auto taker = NewTaker();
    taker->Connect(false);
    EXPECT_TRUE(RunUntil([&] { return taker->countFailures == 1; }));
    EXPECT_FALSE(be_roster->IsRunning(test::kServerSignature));
    // It finds an application that somebody else has started.
    Server server;
    EXPECT_TRUE(AwaitSamples(*taker));
}

TEST_F(ServerConnectionTest, WaitsForOneThatHasQuit)
{
    auto taker = NewTaker();
    for (int i = 0; i < 3; i++) {
        Server server;
        const BMessenger application = server.Application();
        taker->Connect(true);
        ASSERT_TRUE(AwaitSamples(*taker));
        ASSERT_TRUE(AwaitPhase(*taker, Phase::kConnected));
        application.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(AwaitPhase(*taker, Phase::kWaiting));
        EXPECT_EQ(server.Await(), 0);
        EXPECT_EQ(taker->countGone, i + 1);
        EXPECT_FALSE(taker->connection.Server().IsValid());
        taker->connection.Disconnect();
    }
    EXPECT_EQ(taker->countFailures, 0);
}

TEST_F(ServerConnectionTest, WaitsForOneThatWasKilled)
{
    auto taker = NewTaker();
    {
        Server server;
        server.Application();
        taker->Connect();
        ASSERT_TRUE(AwaitSamples(*taker));
        server.Signal(SIGKILL);
        EXPECT_TRUE(AwaitPhase(*taker, Phase::kWaiting));
        EXPECT_EQ(taker->countGone, 0);
    }
    EXPECT_GT(find_thread("ChartView: Waiting for Qel server..."), 0);
    Server next;
    EXPECT_TRUE(AwaitSamples(*taker));
    EXPECT_EQ(taker->connection.Server(), next.Application());
    // The connector ends when it is no longer needed.
    EXPECT_TRUE(RunUntil([] { return find_thread("ChartView: Waiting for Qel server...") < 0; }));
    EXPECT_EQ(taker->countFailures, 0);
}

TEST_F(ServerConnectionTest, ComesBackToOneThatHung)
{
    Server server;
    server.Application();
    auto taker = NewTaker();
    taker->Connect();
    ASSERT_TRUE(AwaitSamples(*taker));
    server.Signal(SIGSTOP);
    EXPECT_TRUE(AwaitPhase(*taker, Phase::kWaiting));
    server.Signal(SIGCONT);
    EXPECT_TRUE(AwaitPhase(*taker, Phase::kConnected));
    EXPECT_TRUE(AwaitSamples(*taker));
    EXPECT_EQ(CountReceivers(server.Application()), 1);
}

TEST_F(ServerConnectionTest, NobodyWaitsForOneThatHangs)
{
    Server server;
    const BMessenger application = server.Application();
    server.Signal(SIGSTOP);
    {
        auto taker = NewTaker();
        taker->Connect(true);
        const thread_id asker = find_thread("ChartView: Looking for Qel server...");
        EXPECT_GT(asker, 0);
        EXPECT_TRUE(AwaitState(asker, B_THREAD_RECEIVING));
        // The destructor is not held up in the middle of asking: the answer would take five seconds.
    }
    EXPECT_LT(find_thread("ChartView: Looking for Qel server..."), 0);
    auto taker = NewTaker();
    taker->Connect(true);
    EXPECT_TRUE(RunUntil([&] { return taker->countFailures == 1; }));
    server.Signal(SIGCONT);
    EXPECT_TRUE(AwaitSamples(*taker));
    // The first one had asked, and then withdrawn its request.
    EXPECT_EQ(CountReceivers(application), 1);
}

TEST_F(ServerConnectionTest, DisconnectsWhenItIsToldToAndWhenItGoes)
{
    Server server;
    const BMessenger application = server.Application();
    auto first = NewTaker(), second = NewTaker();
    first->Connect();
    second->Connect();
    ASSERT_TRUE(AwaitSamples(*first) && AwaitSamples(*second));
    EXPECT_EQ(CountReceivers(application), 2);
    first->connection.Disconnect();
    first->connection.Disconnect();
    EXPECT_EQ(CountReceivers(application), 1);
    EXPECT_EQ(first->connection.Phase(), Phase::kOff);
    // A message from a sampler with which it was registered before starts nothing.
    first->connection.ServerGone();
    EXPECT_EQ(first->connection.Phase(), Phase::kOff);
    second.reset();
    EXPECT_EQ(CountReceivers(application), 0);
    first->Connect();
    EXPECT_TRUE(AwaitSamples(*first));
}

TEST_F(ServerConnectionTest, GetsSamplesAgainAfterItWasInNoLooper)
{
    Server server(1000);
    const BMessenger application = server.Application();
    auto taker = NewTaker();
    SampleTaker other(fLooper);
    other.Connect();
    taker->Connect();
    for (int i = 0; i < 3; i++) {
        ASSERT_TRUE(AwaitSamples(*taker));
        fLooper->RemoveHandler(taker.get());
        // Some samples arrive meanwhile, with nowhere to go.
        ASSERT_TRUE(AwaitSamples(other, 20));
        fLooper->AddHandler(taker.get());
    }
    EXPECT_TRUE(AwaitSamples(*taker));
    EXPECT_EQ(CountReceivers(application), 2);
}

TEST_F(ServerConnectionTest, TakesNoForAnAnswerAndAsksAgain)
{
    Server server;
    const BMessenger application = server.Application();
    application.SendMessage('deny');
    auto taker = NewTaker();
    taker->Connect();
    EXPECT_TRUE(RunUntil([&] { return taker->countFailures == 1; }));
    EXPECT_EQ(taker->connection.Phase(), Phase::kWaiting);
    EXPECT_EQ(CountReceivers(application), 0);
}

TEST_F(ServerConnectionTest, IsForgottenByTheServerWhenItsProcessIsGone)
{
    Server server(5000);
    const BMessenger application = server.Application();
    auto taker = NewTaker();
    taker->Connect();
    ASSERT_TRUE(AwaitSamples(*taker));
    taker->connection.Disconnect();
    // A receiver that has gone without a word.
    BMessage request(MSG_CONNECT);
    {
        SampleTaker other(fLooper);
        request.AddMessenger("Messenger", BMessenger(&other));
        EXPECT_EQ(Ask(application, request).what, 0u);
    }
    EXPECT_TRUE(RunUntil([&] { return CountReceivers(application) == 0; }));
    int32 countAlone = 0;
    EXPECT_TRUE(
        RunUntil([&] { return InfoOf(application).FindInt32("alone", &countAlone) == B_OK && countAlone == 1; }));
}
