// SPDX-License-Identifier: MIT
#include "src/sampling/ServerConnection.h"

#include "kits/application/Roster.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"

#include <utility>

using Phase = ConnectionState::Phase;

namespace {

constexpr int32 kPriority = 5;
constexpr const char* kAskerName = "ChartView: Looking for Qel server...";
constexpr const char* kConnectorName = "ChartView: Waiting for Qel server...";

BMessage Request(uint32 code, const BMessenger& receiver)
{
    BMessage request(code);
    kMessengerField.Add(&request, receiver);
    return request;
}

} // namespace

ServerConnection::ServerConnection(const char* signature, uint32 failureCode, bigtime_t interval)
    : fSignature(signature)
    , fFailureCode(failureCode)
    , fInterval(interval)
{
}

ServerConnection::~ServerConnection()
{
    Disconnect();
}

void ServerConnection::Connect(const BMessenger& receiver, bool mayLaunch, bool tellFailure)
{
    OwnedPeriodicThread* connector = nullptr;
    {
        std::lock_guard lock(fMutex);
        if (!fState.Want())
            return;
        fReceiver = receiver;
        fMayLaunch = mayLaunch;
        fTellFailure = tellFailure;
        fHasFailed = false;
        connector = std::exchange(fConnector, nullptr);
    }
    if (connector != nullptr)
        connector->Die();
    fAsker.reset();
    fAsker = FireAndForgetThread::Launch(std::make_unique<OneParamFunctionObject<ServerConnection*>>(&Asker, this),
                                         kAskerName, kPriority);
    if (fAsker == nullptr) {
        std::lock_guard lock(fMutex);
        fState.AttemptFailed(fState.AttemptBegins());
        StartConnector();
    }
}

void ServerConnection::Disconnect()
{
    OwnedPeriodicThread* connector = nullptr;
    {
        std::lock_guard lock(fMutex);
        if (!fState.Unwant())
            return;
        connector = std::exchange(fConnector, nullptr);
    }
    if (connector != nullptr)
        connector->Die();
    fAsker.reset();
    // The threads have ended, so nothing that they have sent comes after this.
    be_roster->StopWatching(fReceiver);
    const BMessage request = Request(MSG_DISCONNECT, fReceiver);
    std::exchange(fServer, BMessenger()).SendMessage(&request);
}

void ServerConnection::ServerGone()
{
    std::lock_guard lock(fMutex);
    if (fState.ServerGone())
        StartConnector();
}

void ServerConnection::TeamGone(team_id team)
{
    std::lock_guard lock(fMutex);
    if (fState.TeamGone(team))
        StartConnector();
}

bool ServerConnection::TakeFailure()
{
    std::lock_guard lock(fMutex);
    return std::exchange(fHasFailed, false);
}

Phase ServerConnection::Phase() const
{
    std::lock_guard lock(fMutex);
    return fState.Now();
}

BMessenger ServerConnection::Server() const
{
    std::lock_guard lock(fMutex);
    return fState.Now() == Phase::kConnected ? fServer : BMessenger();
}

void ServerConnection::StartConnector()
{
    if (fConnector == nullptr)
        fConnector =
            OwnedPeriodicThread::Launch(std::make_unique<OneParamFunctionObject<ServerConnection*>>(&Connector, this),
                                        fInterval, kConnectorName, kPriority);
}

void ServerConnection::Asker(ServerConnection* connection)
{
    connection->Attempt();
    BMessenger receiver;
    {
        std::lock_guard lock(connection->fMutex);
        if (connection->fState.Now() == Phase::kWaiting)
            connection->StartConnector();
        if (connection->fHasFailed)
            receiver = connection->fReceiver;
    }
    if (receiver.IsTargetLocal())
        receiver.SendMessage(connection->fFailureCode);
    snooze(connection->fInterval);
    connection->LookAfterServer();
}

void ServerConnection::Connector(ServerConnection* connection)
{
    if (connection->Phase() == Phase::kWaiting) {
        connection->Attempt();
        return;
    }
    if (!connection->LookAfterServer())
        return;
    std::lock_guard lock(connection->fMutex);
    // If the connector was taken out already, the taker ends this thread.
    if (connection->fState.Now() == Phase::kConnected && connection->fConnector != nullptr)
        std::exchange(connection->fConnector, nullptr)->RequestToQuit();
}

bool ServerConnection::LookAfterServer()
{
    const BMessenger server = Server();
    if (server.Team() < 0 || server.IsValid())
        return true;
    TeamGone(server.Team());
    return false;
}

void ServerConnection::Attempt()
{
    uint32 attempt = 0;
    BMessenger receiver;
    bool mayLaunch = false, tellFailure = false;
    {
        std::lock_guard lock(fMutex);
        const bool isFirst = fState.Now() == Phase::kAsking;
        attempt = fState.AttemptBegins();
        receiver = fReceiver;
        mayLaunch = isFirst && fMayLaunch;
        tellFailure = isFirst && fTellFailure;
    }
    if (attempt == 0)
        return;
    // First of all: from here on, the end of an application is reported.
    be_roster->StartWatching(receiver, B_REQUEST_QUIT);
    BMessenger server(fSignature.c_str());
    if (mayLaunch && !server.IsValid()) {
        const BMessage launch(MSG_LAUNCHED_BY_REPLICANT);
        be_roster->Launch(fSignature.c_str(), &launch);
        server = BMessenger(fSignature.c_str());
    }
    {
        std::lock_guard lock(fMutex);
        if (!fState.IsCurrent(attempt))
            return;
        fServer = server;
    }
    const BMessage request = Request(MSG_CONNECT, receiver);
    BMessage reply;
    const bool hasAgreed = server.SendMessage(&request, &reply, kTimeout, kTimeout) == B_OK && reply.what == 0;
    std::lock_guard lock(fMutex);
    if (hasAgreed)
        fState.AttemptSucceeded(attempt, server.Team());
    else if (fState.AttemptFailed(attempt) && tellFailure)
        fHasFailed = true;
}
