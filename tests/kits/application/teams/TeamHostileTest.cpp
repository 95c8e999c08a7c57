// SPDX-License-Identifier: MIT
// Strangers that connect to this team.

#include "kits/application/Roster.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/Frame.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Errors.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/TeamFixture.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>

namespace bounds = kits::bounds;
using kits::CloseReason;
using kits::FileDescriptor;
using kits::FrameKind;
using test::Partner;
using test::Recorder;

namespace {

/// This process can be found, and connects to itself as a stranger.
class TeamHostileTest : public test::TeamTest {
protected:
    TeamHostileTest()
    {
        EXPECT_EQ(kits::TeamPort::Get().SetSignature(kSignature), B_OK);
        EXPECT_EQ(fFolder.Open(), B_OK);
    }

    FileDescriptor Connected()
    {
        FileDescriptor socket;
        EXPECT_EQ(kits::Connect(fFolder, kits::ThisTeam(), &socket), B_OK);
        return socket;
    }

    /// Sends as much as the other side takes. Returns false if the connection is broken.
    static bool Send(const FileDescriptor& socket, std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t sent = send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno != EAGAIN)
                return false;
            bytes.remove_prefix(sent > 0 ? static_cast<size_t>(sent) : 0);
        }
        return true;
    }

    /// @param last  gets the last bytes received, if there are any
    static bool IsClosed(const FileDescriptor& socket, std::string* last = nullptr)
    {
        char buffer[4096];
        ssize_t size;
        while ((size = recv(socket.Get(), buffer, sizeof(buffer), 0)) > 0)
            if (last != nullptr)
                last->append(buffer, static_cast<size_t>(size));
        return size == 0 || errno == ECONNRESET;
    }

    /// Waits for the end of a connection.
    /// @return the reason for the end; nothing if none was given
    static std::optional<CloseReason> AwaitReason(const FileDescriptor& socket)
    {
        std::string last;
        EXPECT_TRUE(test::Await([&] { return IsClosed(socket, &last); }));
        const std::string frame = kits::NumberFrame(FrameKind::kClosed, 0);
        if (last.size() < frame.size() ||
            last.compare(last.size() - frame.size(), frame.size() - 8, frame, 0, frame.size() - 8) != 0)
            return {};
        uint64 reason;
        memcpy(&reason, last.data() + last.size() - 8, 8);
        return static_cast<CloseReason>(reason);
    }

    std::string TickTo(const BHandler* target, int32 number = 0, size_t size = 0) const
    {
        BMessage message('tick');
        message.AddInt32("number", number);
        message.AddData("body", B_RAW_TYPE, std::string(size, 'x').data(), static_cast<ssize_t>(size));
        std::string flat;
        kits::WriteMessage(message, &flat, false);
        kits::MessageFrame frame;
        frame.targets = {target->Token()};
        return kits::MessageFrameHead(frame, flat.size()) + flat;
    }

    /// Returns whether a well-behaved process gets through.
    bool IsOpen()
    {
        Recorder handler;
        fLooper->AddHandler(&handler);
        // The connection is refused until enough of this process's earlier connections have gone.
        return test::RunUntil([&] {
            const FileDescriptor socket = Connected();
            return Send(socket, kits::HelloFrame(kits::ThisTeam()) + TickTo(&handler)) &&
                   test::RunUntil([&] { return handler.codes.size() == 1 || IsClosed(socket); }) &&
                   handler.codes.size() == 1;
        });
    }

    static constexpr const char* kSignature = "application/x-vnd.test-hostile";
    kits::TeamFolder fFolder;
};

std::string FrameOf(uint8 kind, const std::string& content)
{
    std::string frame(4, '\0');
    const uint32 length = static_cast<uint32>(content.size()) + 1;
    memcpy(frame.data(), &length, 4);
    return frame + static_cast<char>(kind) + content;
}

} // namespace

TEST_F(TeamHostileTest, LetsInWhoBehaves)
{
    EXPECT_TRUE(IsOpen());
}

TEST_F(TeamHostileTest, ShowsStrangersTheDoor)
{
    const std::string hello = kits::HelloFrame(kits::ThisTeam());
    const kits::team_address another = static_cast<kits::team_address>(getppid()) << 32;
    for (const std::string& first :
         {std::string(1000, 'x'), std::string(8, '\0'), TickTo(fLooper), kits::NumberFrame(FrameKind::kPing, 1),
          kits::HelloFrame(another), kits::HelloFrame(kits::ThisTeam() + 1), FrameOf(1, "kits"), FrameOf(1, ""),
          FrameOf(9, hello.substr(5))}) {
        const FileDescriptor socket = Connected();
        Send(socket, first);
        EXPECT_EQ(AwaitReason(socket), CloseReason::kBadHello);
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(fLooper->codes.empty());
}

TEST_F(TeamHostileTest, EndsTheConnectionOfWhoBreaksTheRules)
{
    std::string huge(4, '\0');
    const uint32 length = static_cast<uint32>(bounds::kMostFrame) + 1;
    memcpy(huge.data(), &length, 4);
    std::string flat;
    kits::WriteMessage(BMessage('tick'), &flat, false);
    std::string damaged = flat;
    damaged[12] = '\xFF';
    kits::MessageFrame frame;
    frame.targets = {fLooper->Token()};
    for (const std::string& bad :
         {huge, FrameOf(0, ""), FrameOf(1, "again"), FrameOf(2, ""), FrameOf(3, "1234567"), FrameOf(4, "12345678"),
          FrameOf(5, "12345678"), FrameOf(77, "x"), kits::MessageFrameHead(frame, damaged.size()) + damaged,
          kits::MessageFrameHead(frame, flat.size() - 1) + flat.substr(1), kits::MessageFrameHead(frame, 0)}) {
        const FileDescriptor socket = Connected();
        Send(socket, kits::HelloFrame(kits::ThisTeam()) + bad);
        EXPECT_EQ(AwaitReason(socket), CloseReason::kBadFrame);
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(fLooper->codes.empty());
}

TEST_F(TeamHostileTest, GivesStrangersLittleTime)
{
    const FileDescriptor silent = Connected();
    const FileDescriptor slow = Connected();
    Send(slow, kits::HelloFrame(kits::ThisTeam()).substr(0, 7));
    EXPECT_FALSE(IsClosed(silent));
    EXPECT_EQ(AwaitReason(silent), CloseReason::kNoHello);
    EXPECT_EQ(AwaitReason(slow), CloseReason::kNoHello);
}

TEST_F(TeamHostileTest, KeepsOneConnectionOfATeam)
{
    const FileDescriptor first = Connected();
    Send(first, kits::HelloFrame(kits::ThisTeam()) + TickTo(fLooper));
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 1; }));
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(AwaitReason(first), CloseReason::kReplaced);
}

TEST_F(TeamHostileTest, TellsWhoIsGone)
{
    const FileDescriptor socket = Connected();
    auto handler = std::make_unique<Recorder>();
    fLooper->AddHandler(handler.get());
    const std::string tick = TickTo(handler.get());
    const uint64 token = static_cast<uint64>(handler->Token());
    handler = nullptr;
    Send(socket, kits::HelloFrame(kits::ThisTeam()) + tick);
    char buffer[64];
    ssize_t size = 0;
    EXPECT_TRUE(test::Await([&] { return (size = recv(socket.Get(), buffer, sizeof(buffer), 0)) > 0; }));
    EXPECT_EQ(std::string(buffer, static_cast<size_t>(size)), kits::NumberFrame(FrameKind::kGone, token));
}

TEST_F(TeamHostileTest, OutlivesConnectionsThatEndAnywhere)
{
    const auto countFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    EXPECT_TRUE(IsOpen());
    const auto before = countFiles();
    std::mt19937 random(1);
    const std::string good = kits::HelloFrame(kits::ThisTeam()) + TickTo(fLooper) +
                             kits::NumberFrame(FrameKind::kPing, 1) + TickTo(fLooper, 1, 500);
    for (int round = 0; round < 1000; ++round) {
        std::string bytes = good.substr(0, random() % (good.size() + 1));
        for (int change = static_cast<int>(random() % 3); change > 0 && !bytes.empty(); --change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        const FileDescriptor socket = Connected();
        Send(socket, bytes);
        if (random() % 4 == 0)
            shutdown(socket.Get(), SHUT_WR);
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(test::Await([&] { return countFiles() <= before; }));
}

TEST_F(TeamHostileTest, OutlivesMoreConnectionsThanItLetsIn)
{
    // First a crowd that stays, then very many that leave again.
    std::vector<FileDescriptor> crowd;
    for (size_t i = 0; i < 600; ++i)
        crowd.push_back(Connected());
    // Another process is let in although these came first.
    const Partner partner;
    EXPECT_EQ(Ask(partner.Application(), 'echo').what, uint32('repl'));
    size_t countSilent = 0;
    for (const FileDescriptor& socket : crowd) {
        const std::optional<CloseReason> reason = AwaitReason(socket);
        countSilent += reason == CloseReason::kNoHello ? 1 : 0;
        EXPECT_TRUE(reason == CloseReason::kNoHello || reason == CloseReason::kTooManyConnections);
    }
    EXPECT_GE(countSilent, bounds::kMostConnectionsOfAProcess);
    EXPECT_TRUE(IsOpen());
    for (int i = 0; i < 2000; ++i) {
        FileDescriptor socket;
        kits::Connect(fFolder, kits::ThisTeam(), &socket);
    }
    EXPECT_TRUE(IsOpen());
}

TEST_F(TeamHostileTest, WaitsForAFileDescriptorWhenNoneIsLeft)
{
    const FileDescriptor socket = Connected();
    Send(socket, kits::HelloFrame(kits::ThisTeam()) + TickTo(fLooper));
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 1; }));
    std::vector<FileDescriptor> all;
    while (true) {
        FileDescriptor one(dup(socket.Get()));
        if (!one.IsOpen())
            break;
        all.push_back(std::move(one));
    }
    // One descriptor for the stranger's end, none for ours.
    all.pop_back();
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = fFolder.PathOf(kits::TeamFolder::MakeName({kSignature, kits::ThisTeam()}));
    strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const FileDescriptor stranger(::socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_EQ(connect(stranger.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    Send(stranger, kits::HelloFrame(kits::ThisTeam()) + TickTo(fLooper));
    // Connected processes are served meanwhile.
    Send(socket, TickTo(fLooper));
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 2; }));
    EXPECT_EQ(be_roster->TeamFor(kSignature), B_NAME_NOT_FOUND);
    EXPECT_EQ(be_roster->Launch(kSignature), B_NO_MORE_FDS);
    all.clear();
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 3; }));
}

TEST_F(TeamHostileTest, HoldsBackWhoSendsMoreThanIsTaken)
{
    const FileDescriptor socket = Connected();
    std::vector<int32> numbers;
    Recorder handler([&numbers](BMessage* message) {
        int32 number = -1;
        message->FindInt32("number", &number);
        numbers.push_back(number);
    });
    fLooper->AddHandler(&handler);
    constexpr int32 kCount = 3000;
    constexpr int32 kCountBig = 20;
    std::thread sender([&] {
        Send(socket, kits::HelloFrame(kits::ThisTeam()));
        for (int32 i = 0; i < kCount; ++i)
            Send(socket, TickTo(&handler, i));
        for (int32 i = 0; i < kCountBig; ++i)
            Send(socket, TickTo(&handler, kCount + i, bounds::kMostFrame - 4096));
    });
    // The limit that is reached without the main thread.
    constexpr auto kMost = static_cast<int32>(bounds::kMostUnhandledOfAProcess);
    EXPECT_TRUE(test::Await([this] { return fLooper->CountMessages() == kMost; }));
    EXPECT_TRUE(test::RunUntil([&] {
        EXPECT_LE(fLooper->CountMessages(), kMost);
        return numbers.size() == kCount;
    }));
    // Long messages are limited by their length.
    EXPECT_TRUE(test::Await([this] { return fLooper->CountMessages() == 3; }));
    EXPECT_TRUE(test::RunUntil([&] {
        EXPECT_LE(fLooper->CountMessages(), 4);
        return numbers.size() > kCount;
    }));
    EXPECT_TRUE(test::RunUntil([&numbers] { return numbers.size() == kCount + kCountBig; }));
    sender.join();
    for (int32 i = 0; i < kCount + kCountBig; ++i)
        ASSERT_EQ(numbers[static_cast<size_t>(i)], i);
}

TEST_F(TeamHostileTest, DeliversWhatWasSentBeforeTheEnd)
{
    Recorder handler;
    fLooper->AddHandler(&handler);
    {
        const FileDescriptor socket = Connected();
        std::string bytes = kits::HelloFrame(kits::ThisTeam());
        for (int32 i = 0; i < 1000; ++i)
            bytes += TickTo(&handler, i);
        ASSERT_TRUE(Send(socket, bytes));
    }
    EXPECT_TRUE(test::RunUntil([&handler] { return handler.codes.size() == 1000; }));
}

TEST_F(TeamHostileTest, LetsNobodyElseIn)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can be somebody else";
    const std::string name = kits::TeamFolder::MakeName({kSignature, kits::ThisTeam()});
    const std::string path = fRuntime.Path() + "/kits/" + name;
    // Connects as another user. Returns 0 if the connection was closed on it, 1 if it could not even connect.
    const auto knock = [&path] {
        const pid_t child = test::ForkBound();
        if (child == 0) {
            sockaddr_un address = {};
            address.sun_family = AF_UNIX;
            strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
            const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
            char byte;
            if (setgid(65534) != 0 || setuid(65534) != 0)
                _exit(3);
            if (connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0)
                _exit(1);
            _exit(recv(socket, &byte, 1, 0) == 0 ? 0 : 2);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WEXITSTATUS(status);
    };
    EXPECT_EQ(knock(), 1);
    // Even if someone has opened the folders to others.
    for (const std::string& open : {fRuntime.Path(), fRuntime.Path() + "/kits"})
        chmod(open.c_str(), 0755);
    chmod(path.c_str(), 0777);
    EXPECT_EQ(knock(), 0);
    chmod((fRuntime.Path() + "/kits").c_str(), 0700);
    chmod(fRuntime.Path().c_str(), 0700);
    EXPECT_TRUE(IsOpen());
}

TEST_F(TeamHostileTest, OutlivesPartnersThatAreKilledAnywhere)
{
    std::mt19937 random(2);
    for (int round = 0; round < 20; ++round) {
        Partner partner;
        if (round % 4 != 0) {
            const BMessenger application = partner.Application();
            BMessage keep('keep'), send('send');
            keep.AddMessenger("messenger", BMessenger(fLooper));
            send.AddInt32("count", 100000);
            application.SendMessage(&keep);
            application.SendMessage(&send);
            for (unsigned i = random() % 50; i > 0; --i)
                application.SendMessage('echo', fLooper);
            if (round % 4 == 1)
                application.SendMessage(B_QUIT_REQUESTED);
            // It still sends by then: not all of its messages may wait here.
            const auto received = static_cast<int32>(random() % bounds::kMostUnhandledOfAProcess);
            EXPECT_TRUE(test::Await([&] { return fLooper->CountMessages() >= received; }));
        } else if (round % 8 == 0) {
            // The others of these are killed before they can be found.
            EXPECT_TRUE(partner.Application().IsValid());
        }
        partner.Signal(SIGKILL);
        partner.Await();
        EXPECT_TRUE(test::RunUntil([] { return !BMessenger(test::kPartnerSignature).IsValid(); }));
    }
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->CountMessages() == 0; }));
    EXPECT_TRUE(IsOpen());
}
