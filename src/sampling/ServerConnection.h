// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "src/sampling/ConnectionState.h"

#include <memory>
#include <mutex>
#include <string>

class FireAndForgetThread;
class OwnedPeriodicThread;

/// How a chart outside the application comes by its samples: finds the application or starts it, registers with it, and
/// when it goes, hangs or dies, tries again at intervals until it is back.
///
/// All of that is done by threads of its own, which take no lock of the interface: nothing here waits, whatever the
/// application does. A thread that asks once, and may start the application, comes first; if it fails, or when the
/// application goes later, the connector comes: a periodic thread that never starts anything. Each makes sure after one
/// more interval that what it has found is still there, and ends.
///
/// The receiver, who gets the samples, hears from here only one thing: that the first attempt failed. It hands on what
/// it is told about the application: MSG_SERVER_GONE to ServerGone(), B_SOME_APP_QUIT to TeamGone().
///
/// Main thread, or under the interface lock; except where it says more.
class ServerConnection {
public:
    /// How long an attempt waits for the application to answer, microseconds.
    static constexpr bigtime_t kTimeout = 5'000'000;
    /// The pause between two attempts.
    static constexpr bigtime_t kInterval = 1'000'000;

    /// @param signature    of the application
    /// @param failureCode  the code of the message to the receiver that an attempt has failed, see TakeFailure()
    ServerConnection(const char* signature, uint32 failureCode, bigtime_t interval = kInterval);
    /// Disconnects.
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// Connects, or again if it is connected; nothing while it does so already.
    /// @param receiver     of samples, in this process
    /// @param mayLaunch    the application may be started
    /// @param tellFailure  the receiver gets a message if this attempt fails. Others follow all the same.
    void Connect(const BMessenger& receiver, bool mayLaunch, bool tellFailure);
    /// Ends all attempts and tells the application, if it was asked anything, that no more samples are wanted.
    void Disconnect();

    void ServerGone();
    /// @param team  any that has ended or does not answer
    void TeamGone(team_id team);

    /// Whether an attempt has failed that was to be told; once for each. Anybody can send a message that says so.
    bool TakeFailure();
    /// Where it stands. Any thread.
    ConnectionState::Phase Phase() const;
    /// The application that it is connected to; else one that leads nowhere. Any thread.
    BMessenger Server() const;

private:
    static void Asker(ServerConnection* connection);
    static void Connector(ServerConnection* connection);

    void Attempt();
    /// The watch on applications that end may have begun a moment after one had ended that had just answered.
    /// @return false if it is gone
    bool LookAfterServer();
    void StartConnector();

    const std::string fSignature;
    const uint32 fFailureCode;
    const bigtime_t fInterval;

    mutable std::mutex fMutex; ///< guards what follows; held for moments only
    ConnectionState fState;
    BMessenger fReceiver;
    BMessenger fServer; ///< the last one that was asked
    OwnedPeriodicThread* fConnector = nullptr;
    bool fMayLaunch = false;
    bool fTellFailure = false;
    bool fHasFailed = false;

    std::unique_ptr<FireAndForgetThread> fAsker; ///< of who calls; not guarded
};
