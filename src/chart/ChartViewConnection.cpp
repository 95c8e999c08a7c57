// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"
#include "kits/interface/Alert.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartView.h"
#include "src/sampling/ServerConnection.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"

// How a chart comes by its samples.

void ChartView::Connect(bool connect, bool mayLaunch)
{
    if (fConnection != nullptr) {
        if (connect)
            ConnectReplicant(mayLaunch, false);
        else
            fConnection->Disconnect();
        return;
    }
    if (connect)
        fMessenger = BMessenger(this);
    BMessage message(connect ? MSG_CONNECT : MSG_DISCONNECT);
    message.AddMessenger("Messenger", fMessenger);
    be_app_messenger.SendMessage(&message);
}

void ChartView::ConnectReplicant(bool mayLaunch, bool tellFailure)
{
    if (!fPaused)
        fConnection->Connect(BMessenger(this), mayLaunch, tellFailure);
}

void ChartView::TellFailure()
{
    if (fConnection == nullptr || !fConnection->TakeFailure())
        return;
    // The alert deletes itself.
    auto* alert = new BAlert(Tr("Qel replicant error:"),
                             Tr("Qel replicant:\n\nUnable to launch or estabilish connection to Qel !"), Tr("OK"),
                             nullptr, nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    alert->Go(nullptr);
}

void ChartView::ServerGone(const BMessage& message)
{
    if (fConnection == nullptr)
        return;
    int32 team = -1;
    if (message.what == MSG_SERVER_GONE)
        fConnection->ServerGone();
    else if (message.FindInt32("team", &team) == B_OK)
        fConnection->TeamGone(team);
}

void ChartView::ForwardAbout(BMessage* message)
{
    if (fReplicant)
        BMessenger(signature).SendMessage(B_ABOUT_REQUESTED);
    else
        be_app_messenger.SendMessage(message);
}

void ChartView::Pause(bool pause)
{
    if (pause == fPaused)
        return;
    LooperLock lock(this);
    fPaused = pause;
    if (fMenu != nullptr)
        fMenu->MarkPaused(pause);
    Connect(!pause, !pause);
}

void ChartView::TakeSample(const BMessage& message)
{
    void* address = nullptr;
    if (message.FindPointer("Sysinfo*", &address) == B_OK) {
        // A sample may wait in the queue for longer than its sampler lives.
        Sysinfo* sampler = application_sampler;
        if (sampler == nullptr || sampler != address)
            return;
        Sysinfo::Autolock lock(sampler);
        SysinfoNode* newest = sampler->NewestNode();
        if (newest != nullptr)
            Refresh(sampler, newest);
        return;
    }
    Sysinfo sampler(&message);
    SysinfoNode newest(&message);
    if (sampler.InitCheck() == B_OK && newest.InitCheck() == B_OK)
        Refresh(&sampler, &newest);
}
