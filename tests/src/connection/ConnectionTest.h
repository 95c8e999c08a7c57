#pragma once

#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "src/sampling/ServerConnection.h"
#include "src/support/MessageCodes.h"
#include "tests/kits/application/TeamFixture.h"

#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace test {

inline constexpr const char* kServerSignature = "application/x-vnd.test-sampling_server";
inline constexpr uint32 kFailureCode = 'fail';

/// What a replicant does without showing anything: takes samples, hands on what it hears of the application.
class SampleTaker : public BHandler {
public:
    explicit SampleTaker(BLooper* looper, bigtime_t interval = ServerConnection::kInterval,
                         const char* server = kServerSignature)
        : BHandler("sample taker")
        , connection(server, kFailureCode, interval)
    {
        looper->AddHandler(this);
    }

    void Connect(bool mayLaunch = false) { connection.Connect(BMessenger(this), mayLaunch, true); }
    bool IsConnected() const { return connection.Phase() == ConnectionState::Phase::kConnected; }

    void MessageReceived(BMessage* message) override
    {
        int32 team = -1;
        switch (message->what) {
        case MSG_SYSINFO_SAMPLE:
            ++countSamples;
            newest = *message;
            break;
        case MSG_SERVER_GONE:
            ++countGone;
            connection.ServerGone();
            break;
        case B_SOME_APP_QUIT:
            message->FindInt32("team", &team);
            connection.TeamGone(team);
            break;
        case kFailureCode:
            countFailures += connection.TakeFailure() ? 1 : 0;
            break;
        default:
            break;
        }
    }

    ServerConnection connection;
    int countSamples = 0;
    int countGone = 0;
    int countFailures = 0;
    BMessage newest;
};

/// The application, without windows: partner/Server.cpp.
class Server : public Partner {
public:
    explicit Server(bigtime_t delay = 10000, const std::string& signature = kServerSignature)
        : Partner(signature, std::to_string(delay), ProgramBeside("sampling_server"))
    {
    }
};

/// This process as one that takes samples.
class ConnectionTest : public TeamTest {
protected:
    /// Servers that were launched are no children of this process.
    ~ConnectionTest() override
    {
        for (team_id team; (team = be_roster->TeamFor(kServerSignature)) >= 0;) {
            kill(team, SIGKILL);
            test::Await([team] { return be_roster->TeamFor(kServerSignature) != team; });
        }
    }

    std::unique_ptr<SampleTaker> NewTaker(bigtime_t interval = 20000)
    {
        return std::make_unique<SampleTaker>(fLooper, interval);
    }

    static bool AwaitSamples(SampleTaker& taker, int count = 1)
    {
        const int before = taker.countSamples;
        return RunUntil([&] { return taker.countSamples >= before + count; });
    }

    static bool AwaitPhase(const SampleTaker& taker, ConnectionState::Phase phase)
    {
        return RunUntil([&] { return taker.connection.Phase() == phase; });
    }

    static BMessage InfoOf(const BMessenger& server) { return Ask(server, 'info'); }
    static int32 CountReceivers(const BMessenger& server)
    {
        int32 count = -1;
        EXPECT_EQ(InfoOf(server).FindInt32("receivers", &count), B_OK);
        return count;
    }
};

} // namespace test
