// SPDX-License-Identifier: MIT
#include "src/sampling/Sysinfo.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/Changes.h"
#include "src/support/MessageCodes.h"

#include <algorithm>
#include <bit>

Sysinfo* application_sampler = nullptr;

void Sampler(Sysinfo* sampler)
{
    sampler->Sample();
}

Sysinfo::Sysinfo(int16 nodesToKeep)
    : BList(nodesToKeep)
    , fInfo()
    , fNodesToKeep(nodesToKeep)
    , fGhost(false)
    , fInitStatus(B_OK)
{
    get_system_info(&fInfo);
    fSumActive.resize(static_cast<size_t>(fInfo.cpu_count));

    BMessage settings;
    if (prefs_user != nullptr && prefs_user->Claim(kSamplerSettingsField) &&
        kSamplerSettingsField.Find(*prefs_user, &settings))
        LoadPrefsFrom(&settings);
    if (fThread == nullptr)
        LaunchThread();
}

Sysinfo::Sysinfo(const BMessage* ghostArchive)
    : BList(1)
    , fInfo()
    , fNodesToKeep(0)
    , fGhost(true)
    , fInitStatus(B_BAD_VALUE)
{
    SysinfoBody body = {};
    if (!FindRecord(ghostArchive, kSysinfoBodyField, &body))
        return;
    fInitStatus = B_OK;
    fDelay = body.delay;
    fSumElapsed = body.sumElapsed;
    fSumTotalActive = body.sumTotalActive;
    fSumCounters = std::bit_cast<CounterDeltas>(body.sumCounters);
    fInfo = body.info;
    fNodesToKeep = body.nodesToKeep;
    fSumActive = FindTimes(ghostArchive, kSumActiveField);
    HoldToRange(&fInfo);
    HoldToRange(fInfo.cpu_count, &fSumElapsed, &fSumTotalActive, &fSumActive);
}

Sysinfo::~Sysinfo()
{
    if (fGhost)
        return;
    Autolock lock(this);
    if (prefs_user != nullptr) {
        BMessage settings;
        SavePrefsTo(&settings);
        prefs_user->Set(kSamplerSettingsField, settings);
    }
    // This thread holds the lock, so the sampler's thread sleeps or waits for it, and is not killed inside a round.
    if (fThread != nullptr)
        fThread->Die();
    while (SysinfoNode* node = TakeOldest())
        delete node;
    if (!fRemoteMessengers.empty()) {
        const BMessage gone(MSG_SERVER_GONE);
        BMessenger::SendToAll(fRemoteMessengers, &gone);
    }
}

bool Sysinfo::Lock() const
{
    return fGhost || fLock.Lock();
}

void Sysinfo::Unlock() const
{
    if (!fGhost)
        fLock.Unlock();
}

void Sysinfo::Sample()
{
    Autolock lock(this);
    if (!HasListeners())
        return;

    const int32 nodesToKeep = std::max<int32>(fNodesToKeep, 1);
    while (CountItems() > nodesToKeep)
        delete TakeOldest();

    // The oldest node, not the newest: the test only matters if rounds come faster than the history can span one delay.
    if (CountItems() > 2 && system_time() - static_cast<SysinfoNode*>(LastItem())->Time() < fDelay)
        return;

    SysinfoNode* newest = NewestNode();
    SysinfoNode* node = CountItems() >= nodesToKeep ? TakeOldest() : new SysinfoNode;
    node->Update(newest);
    Attach(node);

    if (CountItems() > 1)
        Broadcast();
}

void Sysinfo::Broadcast()
{
    const auto isGone = [](const BMessenger& messenger) { return !messenger.IsValid(); };
    std::erase_if(fLocalMessengers, isGone);
    std::erase_if(fRemoteMessengers, isGone);
    if (!fLocalMessengers.empty()) {
        BMessage sample(MSG_SYSINFO_SAMPLE);
        sample.SetNewestWins(true);
        kSamplerField.Add(&sample, this);
        for (const BMessenger& messenger : fLocalMessengers)
            messenger.SendMessage(&sample);
    }
    if (!fRemoteMessengers.empty()) {
        BMessage sample(MSG_SYSINFO_SAMPLE);
        sample.SetNewestWins(true);
        GhostArchive(&sample);
        BMessenger::SendToAll(fRemoteMessengers, &sample);
    }
    if (!HasListeners())
        be_app_messenger.SendMessage(MSG_NO_LISTENERS);
}

void Sysinfo::Attach(SysinfoNode* node)
{
    ChangeSums(*node, [](auto& sum, const auto& value) { sum += value; });
    AddItem(node, 0);
}

void Sysinfo::Detach(SysinfoNode* node)
{
    if (RemoveItem(static_cast<void*>(node)))
        SubtractFromSums(*node);
}

SysinfoNode* Sysinfo::TakeOldest()
{
    auto* node = static_cast<SysinfoNode*>(RemoveItem(CountItems() - 1));
    if (node != nullptr)
        SubtractFromSums(*node);
    return node;
}

template <class Step> void Sysinfo::ChangeSums(const SysinfoNode& node, Step step)
{
    step(fSumElapsed, node.Elapsed());
    step(fSumTotalActive, node.TotalActive());
    step(fSumCounters, node.Counters());
    for (size_t i = 0; i < fSumActive.size(); i++)
        step(fSumActive[i], node.ActiveDelta(static_cast<int32>(i)));
}

void Sysinfo::SubtractFromSums(const SysinfoNode& node)
{
    ChangeSums(
        node, [](auto& sum, const auto& value) { sum -= value; });
}

bigtime_t Sysinfo::SumActive(int32 processor) const
{
    return processor >= 0 && processor < CountSumActive() ? fSumActive[static_cast<size_t>(processor)] : 0;
}

std::vector<BMessenger>& Sysinfo::ListFor(const BMessenger& messenger)
{
    return messenger.IsTargetLocal() ? fLocalMessengers : fRemoteMessengers;
}

// As in Message.cpp.
static_assert(Sysinfo::kMostReceiversOfATeam == kits::bounds::kMostReceiversOfAProcess &&
              Sysinfo::kMostReceivers == kits::bounds::kMostReceivers);

status_t Sysinfo::AddMessenger(const BMessenger& messenger)
{
    Autolock lock(this);
    std::vector<BMessenger>& list = ListFor(messenger);
    if (std::find(list.begin(), list.end(), messenger) != list.end())
        return B_OK;
    const auto isOfTheTeam = [&messenger](const BMessenger& other) { return other.Team() == messenger.Team(); };
    if (list.size() >= kMostReceivers || std::count_if(list.begin(), list.end(), isOfTheTeam) >= kMostReceiversOfATeam)
        return B_NO_MEMORY;
    list.push_back(messenger);
    return B_ERROR;
}

status_t Sysinfo::RemoveMessenger(const BMessenger& messenger)
{
    Autolock lock(this);
    return std::erase(ListFor(messenger), messenger) > 0 ? B_OK : B_ENTRY_NOT_FOUND;
}

int32 Sysinfo::CountMessengers() const
{
    Autolock lock(this);
    return static_cast<int32>(fLocalMessengers.size() + fRemoteMessengers.size());
}

void Sysinfo::LaunchThread()
{
    fThread = OwnedPeriodicThread::Launch(std::make_unique<OneParamFunctionObject<Sysinfo*>>(&Sampler, this), fDelay,
                                          "Sysinfo sampler", 90);
}

void Sysinfo::SetSamplingDelay(bigtime_t delay)
{
    Autolock lock(this);
    if (delay == fDelay && fThread != nullptr)
        return;
    fDelay = delay;
    Changes::Note();
    // Killed at once, not asked to end: it would sleep for one old delay first, and a slider asks many times.
    if (fThread != nullptr)
        fThread->Die();
    LaunchThread();
}

bigtime_t Sysinfo::SamplingDelay() const
{
    Autolock lock(this);
    return fDelay;
}

void Sysinfo::SetNodesToKeep(int16 nodes)
{
    Autolock lock(this);
    fNodesToKeep = nodes;
    Changes::Note();
}

int16 Sysinfo::NodesToKeep() const
{
    Autolock lock(this);
    return fNodesToKeep;
}

int16 Sysinfo::HoldNodesToKeep(int16 nodes)
{
    return std::clamp<int16>(nodes, 1, kMaxNodesToKeep);
}

status_t Sysinfo::SavePrefsTo(BMessage* archive) const
{
    Autolock lock(this);
    return kDelayField.Add(archive, fDelay) | kNodesToKeepField.Add(archive, fNodesToKeep);
}

void Sysinfo::LoadPrefsFrom(const BMessage* archive)
{
    bigtime_t delay = 0;
    if (kDelayField.Find(*archive, &delay))
        SetSamplingDelay(delay);
    int16 nodes = 0;
    if (kNodesToKeepField.Find(*archive, &nodes))
        SetNodesToKeep(HoldNodesToKeep(nodes));
}

void Sysinfo::GhostArchive(BMessage* archive) const
{
    Autolock lock(this);
    SysinfoBody body = {};
    body.delay = fDelay;
    body.sumElapsed = fSumElapsed;
    body.sumTotalActive = fSumTotalActive;
    body.sumCounters = std::bit_cast<std::array<int32, 6>>(fSumCounters);
    body.info = fInfo;
    body.nodesToKeep = fNodesToKeep;
    AddRecord(archive, kSysinfoBodyField, &body, sizeof(body));
    AddTimes(archive, kSumActiveField, fSumActive);
    if (const SysinfoNode* newest = NewestNode())
        newest->GhostArchive(archive);
}
