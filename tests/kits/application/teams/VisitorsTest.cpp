// SPDX-License-Identifier: MIT
#include "kits/application/teams/Visitors.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/Loop.h"
#include "tests/support/RuntimeFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <cstring>
#include <optional>

using kits::CloseReason;
using kits::FileDescriptor;
using kits::FrameKind;
using kits::PeerAccounts;
using kits::Resource;
using kits::Visitors;
namespace bounds = kits::bounds;

namespace {

using namespace std::chrono_literals;

/// Visitors without a port: the test plays its thread and sets the clock.
class VisitorsTest : public testing::Test {
protected:
    VisitorsTest()
    {
        EXPECT_EQ(fFolder.Open(), B_OK);
        FileDescriptor listener;
        EXPECT_EQ(kits::Listen(fFolder, {"", kits::ThisTeam()}, &listener), B_OK);
        fVisitors.SetListener(std::move(listener));
        fLooper->Run();
    }
    ~VisitorsTest() override
    {
        fVisitors.Clear();
        fLooper->Quit();
    }

    /// Does what the port's thread does, until nothing is left to do.
    void Serve()
    {
        std::vector<pollfd> polls;
        for (int turns = 0; turns < 1000; ++turns) {
            polls.clear();
            fVisitors.AppendPolls(&polls);
            const bool isDue = fVisitors.Deadline() <= fNow;
            if (poll(polls.data(), polls.size(), 0) <= 0 && !isDue && !std::exchange(fIsWoken, false))
                return;
            fVisitors.Handle(polls.data());
        }
        ADD_FAILURE() << "there is always more to do";
    }

    FileDescriptor Connected()
    {
        FileDescriptor socket;
        EXPECT_EQ(kits::Connect(fFolder, kits::ThisTeam(), &socket), B_OK);
        Serve();
        return socket;
    }

    FileDescriptor Introduced()
    {
        FileDescriptor socket = Connected();
        EXPECT_TRUE(Send(socket, kits::HelloFrame(kits::ThisTeam())));
        return socket;
    }

    /// Sends everything, while the visitors are served. Returns false if it cannot be sent, or is not taken.
    bool Send(const FileDescriptor& socket, std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t sent = send(socket.Get(), bytes.data(), std::min(bytes.size(), size_t(50000)), MSG_NOSIGNAL);
            if (sent > 0)
                bytes.remove_prefix(static_cast<size_t>(sent));
            Serve();
            if (sent < 0) {
                const ssize_t again = send(socket.Get(), bytes.data(), 1, MSG_NOSIGNAL);
                if (again < 0)
                    return false;
                bytes.remove_prefix(1);
            }
        }
        return true;
    }

    /// What came back, and whether the connection has ended.
    struct Heard {
        std::vector<std::pair<FrameKind, uint64>> frames;
        bool isOver = false;

        std::optional<CloseReason> Reason() const
        {
            return isOver && !frames.empty() && frames.back().first == FrameKind::kClosed
                       ? std::optional(static_cast<CloseReason>(frames.back().second))
                       : std::nullopt;
        }
    };
    static Heard Hear(const FileDescriptor& socket)
    {
        Heard heard;
        kits::FrameReader reader;
        char buffer[4096];
        ssize_t size;
        while ((size = recv(socket.Get(), buffer, sizeof(buffer), 0)) > 0)
            reader.Add({buffer, static_cast<size_t>(size)});
        heard.isOver = size == 0 || errno == ECONNRESET;
        FrameKind kind{};
        std::string_view content;
        while (reader.Next(&kind, &content) == kits::FrameReader::Result::kFrame)
            heard.frames.emplace_back(kind, kits::ReadNumber(content).value_or(0));
        return heard;
    }

    std::string Tick(size_t size = 0, std::vector<kits::token_t> targets = {}) const
    {
        BMessage message('tick');
        if (size > 0)
            message.AddData("body", B_RAW_TYPE, std::string(size, 'x').data(), static_cast<ssize_t>(size));
        std::string flat;
        EXPECT_EQ(kits::WriteMessage(message, &flat, false), B_OK);
        kits::MessageFrame frame;
        frame.targets = targets.empty() ? std::vector{fLooper->Token()} : std::move(targets);
        return kits::MessageFrameHead(frame, flat.size()) + flat;
    }

    size_t Used(Resource resource) const { return fAccounts.Used(kits::ThisTeam(), resource); }
    bool IsNothingClaimed() const
    {
        for (size_t i = 0; i < kits::kCountResources; ++i)
            if (fAccounts.UsedByAll(static_cast<Resource>(i)) != 0)
                return false;
        return true;
    }

    /// Makes the main thread handle this many messages.
    static void HandleMessages(size_t count)
    {
        for (; count > 0; --count)
            kits::PostOffice::Get().DispatchNext(kits::PostOffice::Get().BeginTurn());
    }

    const test::RuntimeFolder fRuntime;
    const kits::InterfaceLocker fLocker;
    kits::TeamFolder fFolder;
    test::RecordingLooper* const fLooper = new test::RecordingLooper;
    Visitors::Clock::time_point fNow{1000s};
    bool fIsWoken = false;
    int fCountPings = 0;
    std::vector<kits::team_address> fGone;
    PeerAccounts fAccounts{[this] { fVisitors.NoteRoom(); }};
    Visitors fVisitors{&fAccounts,
                       {[this] { fIsWoken = true; }, [](kits::team_address) {}, [this] { ++fCountPings; },
                        [this](kits::team_address team) { fGone.push_back(team); }, [this] { return fNow; }}};
};

} // namespace

TEST_F(VisitorsTest, GiveAStrangerASecondToSayHello)
{
    const FileDescriptor silent = Connected();
    const FileDescriptor slow = Connected();
    EXPECT_TRUE(Send(slow, kits::HelloFrame(kits::ThisTeam()).substr(0, 7)));
    EXPECT_EQ(Used(Resource::kConnections), 2u);
    fNow += bounds::kTimeToSayHello - 1ms;
    Serve();
    EXPECT_FALSE(Hear(silent).isOver);
    EXPECT_EQ(fVisitors.Deadline(), fNow + 1ms);
    fNow += 1ms;
    Serve();
    EXPECT_EQ(Hear(silent).Reason(), CloseReason::kNoHello);
    EXPECT_EQ(Hear(slow).Reason(), CloseReason::kNoHello);
    EXPECT_TRUE(IsNothingClaimed());
    EXPECT_TRUE(fGone.empty());
}

TEST_F(VisitorsTest, GiveThoseWhoAreKnownAllTheTime)
{
    const FileDescriptor socket = Introduced();
    fNow += 24h;
    Serve();
    EXPECT_FALSE(Hear(socket).isOver);
    EXPECT_EQ(fVisitors.Deadline(), Visitors::Clock::time_point::max());
}

TEST_F(VisitorsTest, ReadAHelloThatHasComeInTimeHoweverLateTheyAreThemselves)
{
    const FileDescriptor socket = Connected();
    const std::string hello = kits::HelloFrame(kits::ThisTeam());
    ASSERT_EQ(send(socket.Get(), hello.data(), hello.size(), 0), static_cast<ssize_t>(hello.size()));
    fNow += 1h;
    Serve();
    EXPECT_FALSE(Hear(socket).isOver);
    EXPECT_TRUE(Send(socket, Tick()));
    EXPECT_EQ(fLooper->CountMessages(), 1);
}

TEST_F(VisitorsTest, LetInSoManyOfAProcess)
{
    std::vector<FileDescriptor> crowd;
    for (size_t i = 0; i < bounds::kMostConnectionsOfAProcess; ++i) {
        crowd.push_back(Connected());
        EXPECT_FALSE(Hear(crowd.back()).isOver);
    }
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(Hear(Connected()).Reason(), CloseReason::kTooManyConnections);
    EXPECT_EQ(Used(Resource::kConnections), bounds::kMostConnectionsOfAProcess);
    // One that leaves makes room for another.
    crowd.pop_back();
    Serve();
    const FileDescriptor next = Introduced();
    EXPECT_FALSE(Hear(next).isOver);
}

TEST_F(VisitorsTest, LetNobodyInWhileThereAreManyStrangers)
{
    // As if other processes had that many.
    std::vector<kits::PeerClaim> others;
    for (size_t i = 0; i < bounds::kMostConnections; ++i) {
        others.emplace_back(&fAccounts, i + 1, Resource::kConnections);
        ASSERT_TRUE(others.back().Resize(1));
    }
    EXPECT_EQ(Hear(Connected()).Reason(), CloseReason::kTooManyConnections);
    others.pop_back();
    EXPECT_FALSE(Hear(Introduced()).isOver);
}

TEST_F(VisitorsTest, BelieveNobodyWhoHasTheNameOfAnother)
{
    for (const kits::team_address team :
         {kits::ThisTeam() + 1, kits::ThisTeam() ^ (kits::team_address(1) << 32), kits::TeamOfProcess(getppid())}) {
        const FileDescriptor socket = Connected();
        EXPECT_TRUE(Send(socket, kits::HelloFrame(team)));
        EXPECT_EQ(Hear(socket).Reason(), CloseReason::kBadHello);
    }
    EXPECT_TRUE(IsNothingClaimed());
}

TEST_F(VisitorsTest, GiveAFrameFiveSeconds)
{
    const FileDescriptor socket = Introduced();
    const std::string tick = Tick(100000);
    EXPECT_TRUE(Send(socket, tick.substr(0, 10)));
    fNow += bounds::kTimeForAFrame - 1ms;
    // Further bytes gain no time.
    EXPECT_TRUE(Send(socket, tick.substr(10, 90000)));
    EXPECT_FALSE(Hear(socket).isOver);
    fNow += 1ms;
    Serve();
    EXPECT_EQ(Hear(socket).Reason(), CloseReason::kSlowFrame);
    EXPECT_EQ(fGone, std::vector{kits::ThisTeam()});
    EXPECT_TRUE(IsNothingClaimed());
}

TEST_F(VisitorsTest, GiveEachFrameItsOwnTime)
{
    const FileDescriptor socket = Introduced();
    const std::string tick = Tick(1000);
    EXPECT_TRUE(Send(socket, tick.substr(0, 10)));
    for (int i = 0; i < 10; ++i) {
        fNow += bounds::kTimeForAFrame - 1ms;
        EXPECT_TRUE(Send(socket, tick.substr(10) + tick.substr(0, 10)));
    }
    EXPECT_FALSE(Hear(socket).isOver);
    EXPECT_EQ(fLooper->CountMessages(), 10);
    fNow += bounds::kTimeForAFrame;
    Serve();
    EXPECT_EQ(Hear(socket).Reason(), CloseReason::kSlowFrame);
}

TEST_F(VisitorsTest, CountTheMemoryOfWhatIsNotWhole)
{
    const FileDescriptor socket = Introduced();
    const std::string tick = Tick(bounds::kMostFrame - 1000);
    EXPECT_TRUE(Send(socket, tick.substr(0, tick.size() - 1)));
    EXPECT_GE(Used(Resource::kIncomplete), tick.size() - 1);
    EXPECT_LE(Used(Resource::kIncomplete), bounds::kMostIncompleteOfAProcess);
    EXPECT_TRUE(Send(socket, tick.substr(tick.size() - 1)));
    EXPECT_EQ(fLooper->CountMessages(), 1);
    EXPECT_LE(Used(Resource::kIncomplete), 4 * bounds::kKiB);
}

TEST_F(VisitorsTest, ReadNoFurtherWithoutRoomForIt)
{
    kits::PeerClaim other(&fAccounts, kits::ThisTeam(), Resource::kIncomplete);
    const FileDescriptor socket = Introduced();
    ASSERT_TRUE(other.Resize(bounds::kMostIncompleteOfAProcess - Used(Resource::kIncomplete) - 1000));
    const std::string tick = Tick(5000);
    ASSERT_EQ(send(socket.Get(), tick.data(), tick.size(), 0), static_cast<ssize_t>(tick.size()));
    Serve();
    EXPECT_EQ(fLooper->CountMessages(), 0);
    EXPECT_LE(Used(Resource::kIncomplete), bounds::kMostIncompleteOfAProcess);
    // The delay is not the sender's fault.
    fNow += 1h;
    Serve();
    EXPECT_FALSE(Hear(socket).isOver);
    other.Resize(0);
    Serve();
    EXPECT_EQ(fLooper->CountMessages(), 1);
}

TEST_F(VisitorsTest, ReadNoFurtherBeforeTheMainThreadHasHandledWhatCame)
{
    const FileDescriptor socket = Introduced();
    const std::string tick = Tick();
    const auto most = static_cast<int32>(bounds::kMostUnhandledOfAProcess);
    for (int32 i = 0; i < most; ++i)
        EXPECT_TRUE(Send(socket, tick));
    EXPECT_EQ(fLooper->CountMessages(), most);
    std::string flood;
    for (int i = 0; i < 1000; ++i)
        flood += tick;
    ASSERT_EQ(send(socket.Get(), flood.data(), flood.size(), 0), static_cast<ssize_t>(flood.size()));
    Serve();
    EXPECT_EQ(fLooper->CountMessages(), most);
    EXPECT_EQ(Used(Resource::kUnhandled), bounds::kMostUnhandledOfAProcess);
    // Reads as many as were handled.
    HandleMessages(10);
    EXPECT_EQ(fLooper->CountMessages(), most - 10);
    Serve();
    EXPECT_EQ(fLooper->CountMessages(), most);
    for (int i = 0; i < 1000; ++i) {
        HandleMessages(1);
        Serve();
    }
    EXPECT_EQ(fLooper->codes.size(), 1010u);
    EXPECT_EQ(fLooper->CountMessages(), most - 10);
    HandleMessages(static_cast<size_t>(most));
    EXPECT_EQ(Used(Resource::kUnhandled), 0u);
    EXPECT_EQ(Used(Resource::kUnhandledBytes), 0u);
}

TEST_F(VisitorsTest, CountAMessageAsUnhandledWhileItIsHandled)
{
    size_t during = 0;
    test::Recorder handler([&](BMessage*) { during = Used(Resource::kUnhandled); });
    fLooper->AddHandler(&handler);
    const FileDescriptor socket = Introduced();
    EXPECT_TRUE(Send(socket, Tick(0, {handler.Token()})));
    HandleMessages(1);
    EXPECT_EQ(during, 1u);
    EXPECT_EQ(Used(Resource::kUnhandled), 0u);
    fLooper->RemoveHandler(&handler);
}

TEST_F(VisitorsTest, HandOutAMessageForManyAsThereIsRoom)
{
    const FileDescriptor socket = Introduced();
    const auto most = static_cast<int32>(bounds::kMostUnhandledOfAProcess);
    EXPECT_TRUE(Send(socket, Tick(0, std::vector(bounds::kMostTargets, fLooper->Token()))));
    EXPECT_EQ(fLooper->CountMessages(), most);
    for (size_t i = 0; i < bounds::kMostTargets; ++i) {
        HandleMessages(1);
        Serve();
        EXPECT_LE(fLooper->CountMessages(), most);
    }
    EXPECT_EQ(fLooper->codes.size(), bounds::kMostTargets);
    EXPECT_EQ(Used(Resource::kUnhandledBytes), 0u);
}

TEST_F(VisitorsTest, CountTheMemoryOfUnhandledMessages)
{
    const FileDescriptor socket = Introduced();
    // Each of these fields takes many times the memory of its few bytes.
    BMessage message('tick');
    for (int i = 0; i < bounds::kMostFieldsFromOutside; ++i)
        message.AddBool(std::to_string(i).c_str(), true);
    std::string flat;
    ASSERT_EQ(kits::WriteMessage(message, &flat, false, kits::kFrameLimits), B_OK);
    kits::MessageFrame frame;
    frame.targets = {fLooper->Token()};
    const std::string fields = kits::MessageFrameHead(frame, flat.size()) + flat;
    std::string flood;
    for (int i = 0; i < 60; ++i)
        flood += fields;
    Send(socket, flood);
    EXPECT_GT(fLooper->CountMessages(), 2);
    EXPECT_LT(fLooper->CountMessages(), 15);
    EXPECT_GT(Used(Resource::kUnhandledBytes), bounds::kMostUnhandledBytesOfAProcess / 2);
    EXPECT_LE(Used(Resource::kUnhandledBytes), bounds::kMostUnhandledBytesOfAProcess);
    const auto before = static_cast<size_t>(fLooper->CountMessages());
    HandleMessages(1);
    Serve();
    EXPECT_EQ(fLooper->codes.size(), 1u);
    EXPECT_EQ(static_cast<size_t>(fLooper->CountMessages()), before);
}

TEST_F(VisitorsTest, EndTheConnectionOfAMessageWithTooManyFieldsOrValues)
{
    BMessage fields('tick'), values('tick');
    for (int i = 0; i <= bounds::kMostFieldsFromOutside; ++i)
        fields.AddBool(std::to_string(i).c_str(), true);
    for (int i = 0; i <= bounds::kMostValuesFromOutside; ++i)
        values.AddBool("value", true);
    for (const BMessage& message : {fields, values}) {
        std::string flat;
        ASSERT_EQ(kits::WriteMessage(message, &flat, false), B_OK);
        // A well-behaved process refuses to send it.
        EXPECT_EQ(kits::WriteMessage(message, &flat, false, kits::kFrameLimits), B_BAD_VALUE);
        kits::MessageFrame frame;
        frame.targets = {fLooper->Token()};
        const FileDescriptor socket = Introduced();
        Send(socket, kits::MessageFrameHead(frame, flat.size()) + flat);
        EXPECT_EQ(Hear(socket).Reason(), CloseReason::kBadFrame);
    }
    EXPECT_EQ(fLooper->CountMessages(), 0);
}

TEST_F(VisitorsTest, AnswerTheNewestPingOnly)
{
    const FileDescriptor socket = Introduced();
    std::string pings;
    for (uint64 number = 1; number <= 10000; ++number)
        pings += kits::NumberFrame(FrameKind::kPing, number);
    EXPECT_TRUE(Send(socket, pings));
    EXPECT_EQ(fCountPings, 1);
    EXPECT_TRUE(Hear(socket).frames.empty());
    fVisitors.AnswerPings();
    const Heard heard = Hear(socket);
    ASSERT_EQ(heard.frames.size(), 1u);
    EXPECT_EQ(heard.frames[0], std::make_pair(FrameKind::kPong, uint64(10000)));
    fVisitors.AnswerPings();
    EXPECT_TRUE(Hear(socket).frames.empty());
    EXPECT_TRUE(Send(socket, kits::NumberFrame(FrameKind::kPing, 7)));
    EXPECT_EQ(fCountPings, 2);
}

TEST_F(VisitorsTest, ShowOutWhoDoesNotReadItsAnswers)
{
    const FileDescriptor socket = Introduced();
    // Each names a handler that does not exist, and each is answered with that.
    std::string flood;
    for (int i = 0; i < 100; ++i)
        flood += Tick(0, {INT64_MAX});
    int count = 0;
    while (count < 10000 && Send(socket, flood)) {
        EXPECT_LE(Used(Resource::kUnsent), bounds::kMostAnswers);
        ++count;
    }
    EXPECT_LT(count, 10000);
    EXPECT_TRUE(IsNothingClaimed());
    EXPECT_TRUE(Hear(socket).isOver);
    EXPECT_EQ(fGone.size(), 1u);
}

TEST_F(VisitorsTest, KeepDescriptorsFree)
{
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit few = before;
    few.rlim_cur = 256;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    FileDescriptor waiting;
    ASSERT_EQ(kits::Connect(fFolder, kits::ThisTeam(), &waiting), B_OK);
    std::vector<FileDescriptor> taken;
    while (taken.empty() || taken.back().Get() < 256 - bounds::kReservedDescriptors)
        taken.emplace_back(dup(waiting.Get()));
    Serve();
    EXPECT_EQ(Used(Resource::kConnections), 0u);
    // Nor can it connect to others; but it can open files.
    FileDescriptor socket;
    EXPECT_EQ(kits::Connect(fFolder, kits::ThisTeam(), &socket), B_NO_MORE_FDS);
    int countFree = 0;
    for (FileDescriptor one(dup(waiting.Get())); one.IsOpen(); one = FileDescriptor(dup(waiting.Get())), ++countFree)
        taken.push_back(std::move(one));
    EXPECT_GE(countFree, bounds::kReservedDescriptors - 2);
    // It pauses and does not spin.
    EXPECT_EQ(fVisitors.Deadline(), fNow + bounds::kPauseWithoutDescriptors);
    taken.clear();
    Serve();
    EXPECT_EQ(Used(Resource::kConnections), 0u);
    fNow += bounds::kPauseWithoutDescriptors;
    Serve();
    EXPECT_EQ(Used(Resource::kConnections), 1u);
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
}

TEST_F(VisitorsTest, HaveNothingLeftOfWhoWent)
{
    {
        const FileDescriptor socket = Introduced();
        EXPECT_TRUE(Send(socket, Tick(200000) + Tick(200000).substr(0, 150000)));
        EXPECT_GT(Used(Resource::kIncomplete), 100000u);
    }
    Serve();
    EXPECT_EQ(Used(Resource::kIncomplete), 0u);
    EXPECT_EQ(Used(Resource::kConnections), 0u);
    // Complete messages from it stay until they are handled.
    EXPECT_EQ(Used(Resource::kUnhandled), 1u);
    HandleMessages(1);
    EXPECT_TRUE(IsNothingClaimed());
}
