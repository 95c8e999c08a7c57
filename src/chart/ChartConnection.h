// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"

#include <functional>
#include <memory>

class BHandler;
class BMessage;
class ServerConnection;
class Sysinfo;
class SysinfoNode;

/// How a chart comes by its samples. A chart in the application registers with that; a replicant has a
/// ServerConnection, which finds the application, or starts it, on threads of its own. Nothing here waits.
class ChartConnection {
public:
    /// @param chart  gets the samples; stays the caller's and outlives this
    explicit ChartConnection(BHandler* chart);
    /// Whoever is connected disconnects before.
    ~ChartConnection();
    ChartConnection(const ChartConnection&) = delete;
    ChartConnection& operator=(const ChartConnection&) = delete;

    /// From now on it is that of a chart outside the application.
    void BecomeReplicant();
    bool IsReplicant() const { return fServer != nullptr; }
    /// A replicant's connection to the application; null for other charts. Stays this object's.
    const ServerConnection* Server() const { return fServer.get(); }

    /// Registers for samples, or again if it is registered.
    /// @param mayLaunch    a replicant may start the application
    /// @param tellFailure  MSG_SERVER_UNREACHABLE comes to a replicant that cannot be connected
    void Connect(bool mayLaunch, bool tellFailure);
    void Disconnect();

    /// Takes MSG_SERVER_GONE or B_SOME_APP_QUIT.
    void ServerGone(const BMessage& message);
    /// Shows an alert if a failure was to be told that has not been shown yet.
    void TellFailure();

    /// Hands over the sample of a message, and the sampler it belongs to, locked, for the time of the call. A sample
    /// from a sampler that has gone is left out, and so is a broken one.
    static void TakeSample(const BMessage& message, const std::function<void(Sysinfo*, SysinfoNode*)>& take);

private:
    void Tell(uint32 command);

    BHandler* fChart;
    BMessenger fMessenger; // as last registered
    std::unique_ptr<ServerConnection> fServer;
};
