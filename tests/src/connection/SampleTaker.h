// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Handler.h"
#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/kernel/Clock.h"
#include "src/sampling/ServerConnection.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

namespace test {

inline constexpr const char* kServerSignature = "application/x-vnd.test-sampling_server";
inline constexpr uint32 kFailureCode = 'fail';

/// A replicant without anything to show: receives samples, and passes on messages about the application.
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
            longestGap = std::max(longestGap, system_time() - fLast);
            fLast = system_time();
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
    /// The longest time between two samples since this was last set to 0.
    bigtime_t longestGap = 0;

private:
    bigtime_t fLast = system_time();
};

} // namespace test
