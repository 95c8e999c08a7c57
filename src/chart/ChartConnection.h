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

/// Provides a chart with samples. A chart in the application registers with the application; a replicant has a
/// ServerConnection, which finds the application, or starts it, on threads of its own. Nothing here waits.
class ChartConnection {
public:
    /// @param chart  gets the samples; the caller owns it, and it outlives this object
    explicit ChartConnection(BHandler* chart);
    /// A connected chart must disconnect before.
    ~ChartConnection();
    ChartConnection(const ChartConnection&) = delete;
    ChartConnection& operator=(const ChartConnection&) = delete;

    /// Makes this the connection of a chart outside the application, from now on.
    void BecomeReplicant();
    bool IsReplicant() const { return fServer != nullptr; }
    /// Returns a replicant's connection to the application, or null for other charts. This object owns it.
    const ServerConnection* Server() const { return fServer.get(); }

    /// Registers for samples; registers again if it is registered already.
    /// @param mayLaunch    a replicant may start the application
    /// @param tellFailure  a replicant that cannot be connected gets MSG_SERVER_UNREACHABLE
    void Connect(bool mayLaunch, bool tellFailure);
    void Disconnect();

    /// Handles MSG_SERVER_GONE and B_SOME_APP_QUIT.
    void ServerGone(const BMessage& message);
    /// Shows an alert if a requested report of a failure has not been shown yet.
    void TellFailure();

    /// Calls back with the sample of a message and its sampler, which is locked during the call. Ignores a sample of a
    /// sampler that has gone, and a broken one.
    static void TakeSample(const BMessage& message, const std::function<void(Sysinfo*, SysinfoNode*)>& take);

private:
    void Tell(uint32 command);

    BHandler* fChart;
    BMessenger fMessenger; // the messenger that was registered last
    std::unique_ptr<ServerConnection> fServer;
};
