// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "tests/src/connection/SampleTaker.h"
#include "tests/support/TeamFixture.h"

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace test {

inline constexpr const char* kClientSignature = "application/x-vnd.test-sampling_client";

/// The application, without windows: partner/Server.cpp.
class Server : public Partner {
public:
    explicit Server(bigtime_t delay = 10000, const std::string& signature = kServerSignature)
        : Partner(signature, std::to_string(delay), ProgramBeside("sampling_server"))
    {
    }
};

/// Another process with charts outside the application, without pictures: partner/Client.cpp.
class Client : public Partner {
public:
    /// @param count  the number of its charts
    explicit Client(int count)
        : Partner(kClientSignature, std::to_string(count), ProgramBeside("sampling_client"))
    {
    }
};

/// This process as a receiver of samples.
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

    /// Asks an application that may be missing at the moment for a number.
    static bool AwaitNumber(const char* signature, const char* name, const std::function<bool(int32)>& condition)
    {
        return RunUntil([&] {
            const BMessage question('info');
            BMessage reply;
            int32 number = 0;
            return BMessenger(signature).SendMessage(&question, &reply, 0, 100000) == B_OK &&
                   reply.FindInt32(name, &number) == B_OK && condition(number);
        });
    }

    static int32 NumberOf(const BMessenger& partner, const char* name)
    {
        int32 number = -1;
        EXPECT_EQ(InfoOf(partner).FindInt32(name, &number), B_OK) << name;
        return number;
    }

    static BMessage InfoOf(const BMessenger& server) { return Ask(server, 'info'); }
    static int32 CountReceivers(const BMessenger& server) { return NumberOf(server, "receivers"); }
};

} // namespace test
