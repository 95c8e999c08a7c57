// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "src/sampling/ConnectionState.h"

#include <memory>
#include <mutex>
#include <string>

class FireAndForgetThread;
class OwnedPeriodicThread;

/// Connects a chart outside the application to its samples: finds the application or starts it, registers with it, and
/// when it goes, hangs or dies, tries again at intervals until it is back.
///
/// Threads of its own do all of that, without the interface lock, so nothing here waits, whatever the application does.
/// First a thread asks once, and may start the application. If it fails, or when the application goes later, the
/// connector follows: a periodic thread that never starts anything. Each checks after one more interval that the
/// application it has found is still there, and ends.
///
/// This class tells the receiver of the samples only one thing: that the first attempt failed. The receiver passes on
/// what it hears about the application: MSG_SERVER_GONE to ServerGone(), B_SOME_APP_QUIT to TeamGone().
///
/// Main thread, or under the interface lock, unless stated otherwise.
class ServerConnection {
public:
    /// How long an attempt waits for the application to answer, microseconds.
    static constexpr bigtime_t kTimeout = 5'000'000;
    /// The pause between two attempts.
    static constexpr bigtime_t kInterval = 1'000'000;

    /// @param signature    the application's
    /// @param failureCode  the code of the message to the receiver that an attempt has failed, see TakeFailure()
    ServerConnection(const char* signature, uint32 failureCode, bigtime_t interval = kInterval);
    /// Disconnects.
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// Connects, or reconnects if it is connected; does nothing while that is under way.
    /// @param receiver     of samples, in this process
    /// @param mayLaunch    the application may be started
    /// @param tellFailure  the receiver gets a message if this attempt fails. Further attempts follow in any case.
    void Connect(const BMessenger& receiver, bool mayLaunch, bool tellFailure);
    /// Ends all attempts and tells the application, if it was asked anything, that no more samples are wanted.
    void Disconnect();

    void ServerGone();
    /// @param team  any that has ended or does not answer
    void TeamGone(team_id team);

    /// Returns whether an attempt has failed whose failure should be reported; once for each. Anybody can send a
    /// message that claims it.
    bool TakeFailure();
    /// The current state. Any thread.
    ConnectionState::Phase Phase() const;
    /// The application to which it is connected, otherwise an invalid messenger. Any thread.
    BMessenger Server() const;

private:
    static void Asker(ServerConnection* connection);
    static void Connector(ServerConnection* connection);

    void Attempt();
    /// The watch on applications may have begun a moment after an application had ended that had just answered.
    /// @return false if it is gone
    bool LookAfterServer();
    void StartConnector();

    const std::string fSignature;
    const uint32 fFailureCode;
    const bigtime_t fInterval;

    mutable std::mutex fMutex; ///< guards the members below; held only briefly
    ConnectionState fState;
    BMessenger fReceiver;
    BMessenger fServer; ///< the last one that was asked
    OwnedPeriodicThread* fConnector = nullptr;
    bool fMayLaunch = false;
    bool fTellFailure = false;
    bool fHasFailed = false;

    std::unique_ptr<FireAndForgetThread> fAsker; ///< used by the callers' thread; not guarded
};
