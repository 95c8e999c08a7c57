#include "kits/application/Application.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartView.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"

// How a chart comes by its samples.

bool ChartView::Connect(bool connect, bool)
{
    if (connect)
        fMessenger = BMessenger(this);
    BMessage message(connect ? MSG_CONNECT : MSG_DISCONNECT);
    message.AddMessenger("Messenger", fMessenger);
    be_app_messenger.SendMessage(&message);
    return true;
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
