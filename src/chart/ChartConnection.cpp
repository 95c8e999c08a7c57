// SPDX-License-Identifier: MIT
#include "src/chart/ChartConnection.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "src/sampling/ServerConnection.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"
#include "src/support/ui/ShowAlert.h"

ChartConnection::ChartConnection(BHandler* chart)
    : fChart(chart)
{
}

ChartConnection::~ChartConnection() = default;

void ChartConnection::BecomeReplicant()
{
    fServer = std::make_unique<ServerConnection>(signature, MSG_SERVER_UNREACHABLE);
}

void ChartConnection::Connect(bool mayLaunch, bool tellFailure)
{
    if (fServer != nullptr) {
        fServer->Connect(BMessenger(fChart), mayLaunch, tellFailure);
        return;
    }
    fMessenger = BMessenger(fChart);
    Tell(MSG_CONNECT);
}

void ChartConnection::Disconnect()
{
    if (fServer != nullptr)
        fServer->Disconnect();
    else
        Tell(MSG_DISCONNECT);
}

void ChartConnection::Tell(uint32 command)
{
    BMessage message(command);
    kMessengerField.Add(&message, fMessenger);
    be_app_messenger.SendMessage(&message);
}

void ChartConnection::ServerGone(const BMessage& message)
{
    if (fServer == nullptr)
        return;
    if (message.what == MSG_SERVER_GONE)
        fServer->ServerGone();
    else if (team_id team = -1; kits::kTeamField.Find(message, &team))
        fServer->TeamGone(team);
}

void ChartConnection::TellFailure()
{
    if (fServer != nullptr && fServer->TakeFailure())
        ShowAlert(Tr("Qel replicant:\n\nUnable to launch or estabilish connection to Qel !"), B_WARNING_ALERT,
                  Tr("Qel replicant error:"));
}

void ChartConnection::TakeSample(const BMessage& message, const std::function<void(Sysinfo*, SysinfoNode*)>& take)
{
    void* address = nullptr;
    if (kSamplerField.Find(message, &address)) {
        // A sample may wait in the queue for longer than its sampler lives.
        Sysinfo* sampler = application_sampler;
        if (sampler == nullptr || sampler != address)
            return;
        Sysinfo::Autolock lock(sampler);
        SysinfoNode* newest = sampler->NewestNode();
        if (newest != nullptr)
            take(sampler, newest);
        return;
    }
    Sysinfo sampler(&message);
    SysinfoNode newest(&message);
    if (sampler.InitCheck() == B_OK && newest.InitCheck() == B_OK)
        take(&sampler, &newest);
}
