// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamLinks.h"

#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"
#include "tests/support/RuntimeFolder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

using kits::FileDescriptor;
using kits::FrameKind;
using kits::Resource;
using kits::TeamLinks;
namespace bounds = kits::bounds;

namespace {

using namespace std::chrono_literals;

/// Links without a port, to this team itself; the test sets the clock.
class TeamLinksTest : public testing::Test {
protected:
    TeamLinksTest()
    {
        EXPECT_EQ(fFolder.Open(), B_OK);
        EXPECT_EQ(kits::Listen(fFolder, {"", kits::ThisTeam()}, &fListener), B_OK);
        fLinks.SetFolder(&fFolder);
    }
    ~TeamLinksTest() override { fLinks.SetFolder(nullptr); }

    status_t Send(size_t size, kits::team_address team = kits::ThisTeam())
    {
        kits::MessageFrame frame;
        frame.targets = {1};
        return fLinks.Send(team, std::move(frame), 'tick', std::make_shared<std::string>(size, 'x'));
    }

    /// Does once what the port's thread does.
    void Serve()
    {
        std::vector<pollfd> polls;
        fLinks.AppendPolls(&polls);
        poll(polls.data(), polls.size(), 0);
        fLinks.Handle(polls.data(), polls.size());
    }

    FileDescriptor Accepted() const
    {
        return FileDescriptor(accept4(fListener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    }

    static void Read(const FileDescriptor& socket, size_t size)
    {
        std::string bytes(size, '\0');
        while (size > 0) {
            const ssize_t got = recv(socket.Get(), bytes.data(), size, 0);
            if (got <= 0)
                return;
            size -= static_cast<size_t>(got);
        }
    }

    size_t Used(Resource resource) const { return fAccounts.Used(kits::ThisTeam(), resource); }

    const test::RuntimeFolder fRuntime;
    kits::TeamFolder fFolder;
    FileDescriptor fListener;
    TeamLinks::Clock::time_point fNow{1000s};
    std::vector<kits::team_address> fClosed;
    kits::PeerAccounts fAccounts{[] {}};
    TeamLinks fLinks{&fAccounts,
                     {[] {}, [this](kits::team_address team) { fClosed.push_back(team); },
                      [](kits::team_address, bool) {}, [this] { return fNow; }}};
};

} // namespace

TEST_F(TeamLinksTest, MakeOneConnectionToATeam)
{
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(Send(10), B_OK);
    EXPECT_EQ(Used(Resource::kLinks), 1u);
    EXPECT_TRUE(Accepted().IsOpen());
    EXPECT_FALSE(Accepted().IsOpen());
}

TEST_F(TeamLinksTest, MakeNoMoreConnectionsThanThereMayBe)
{
    std::vector<kits::PeerClaim> others;
    for (size_t i = 0; i < bounds::kMostLinks; ++i) {
        others.emplace_back(&fAccounts, i + 1, Resource::kLinks);
        ASSERT_TRUE(others.back().Resize(1));
    }
    EXPECT_EQ(Send(10), B_NO_MORE_FDS);
    EXPECT_FALSE(fLinks.IsReachable({kits::ThisTeam(), 1}));
    EXPECT_FALSE(Accepted().IsOpen());
    others.pop_back();
    EXPECT_EQ(Send(10), B_OK);
}

TEST_F(TeamLinksTest, ConnectToNobodyUnderAnInventedName)
{
    std::vector<FileDescriptor> listeners(50);
    for (size_t i = 0; i < listeners.size(); ++i) {
        const kits::team_address invented = kits::ThisTeam() + i + 1;
        ASSERT_EQ(kits::Listen(fFolder, {"", invented}, &listeners[i]), B_OK);
        EXPECT_EQ(Send(10, invented), B_BAD_HANDLER);
    }
    EXPECT_EQ(fAccounts.UsedByAll(Resource::kLinks), 0u);
}

TEST_F(TeamLinksTest, GiveUpWhoReadsNothing)
{
    while (Send(100000) == B_OK) {
    }
    EXPECT_LE(Used(Resource::kUnsent), bounds::kMostUnsentOfAProcess);
    EXPECT_EQ(fLinks.Deadline(), fNow + bounds::kLongestFull);
    fNow += bounds::kLongestFull - 1ms;
    Serve();
    EXPECT_TRUE(fClosed.empty());
    fNow += 1ms;
    Serve();
    EXPECT_EQ(fClosed, std::vector{kits::ThisTeam()});
    EXPECT_EQ(fAccounts.CountProcesses(), 0u);
    EXPECT_EQ(Send(10), B_BAD_HANDLER);
    fLinks.Forgive(kits::ThisTeam());
    EXPECT_EQ(Send(10), B_OK);
}

TEST_F(TeamLinksTest, DoNotBlameWhoHasReadAllIfOthersLeaveNoRoom)
{
    EXPECT_EQ(Send(10), B_OK);
    const FileDescriptor reader = Accepted();
    std::vector<kits::PeerClaim> others;
    for (kits::team_address team = 1; team <= 2; ++team) {
        others.emplace_back(&fAccounts, team, Resource::kUnsent);
        ASSERT_TRUE(others.back().Resize(bounds::kMostUnsent / 2));
    }
    EXPECT_EQ(Send(100000), B_WOULD_BLOCK);
    fNow += 1h;
    Serve();
    EXPECT_TRUE(fClosed.empty());
    // The guaranteed share is still available.
    EXPECT_EQ(Send(1000), B_OK);
    Read(reader, 1000);
    others.clear();
    EXPECT_EQ(Send(100000), B_OK);
}

TEST_F(TeamLinksTest, RememberSoManyHandlersThatAreGone)
{
    EXPECT_EQ(Send(10), B_OK);
    const FileDescriptor other = Accepted();
    for (uint64 token = 1; token <= 2 * bounds::kMostGone; ++token) {
        const std::string gone = kits::NumberFrame(FrameKind::kGone, token);
        ASSERT_EQ(send(other.Get(), gone.data(), gone.size(), 0), static_cast<ssize_t>(gone.size()));
        Serve();
    }
    EXPECT_FALSE(fLinks.IsReachable({kits::ThisTeam(), static_cast<kits::token_t>(bounds::kMostGone)}));
    EXPECT_TRUE(fLinks.IsReachable({kits::ThisTeam(), static_cast<kits::token_t>(bounds::kMostGone) + 1}));
}

TEST_F(TeamLinksTest, EndWhenTheOtherSideSaysWhy)
{
    EXPECT_EQ(Send(10), B_OK);
    const FileDescriptor other = Accepted();
    const std::string closed = kits::NumberFrame(FrameKind::kClosed, 1);
    ASSERT_EQ(send(other.Get(), closed.data(), closed.size(), 0), static_cast<ssize_t>(closed.size()));
    Serve();
    EXPECT_EQ(fClosed, std::vector{kits::ThisTeam()});
}
