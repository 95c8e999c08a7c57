// SPDX-License-Identifier: MIT
#include "kits/kernel/Threads.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/threads/ThreadRecord.h"

#include <algorithm>

namespace {

constexpr bigtime_t kShortestSnooze = 1000;

} // namespace

thread_id spawn_thread(thread_func entry, const char* name, int32 priority, void* data)
{
    if (entry == nullptr)
        return B_BAD_VALUE;
    return kits::ThreadRecord::Spawn(entry, name, std::clamp(priority, B_LOWEST_ACTIVE_PRIORITY, B_REAL_TIME_PRIORITY),
                                     data);
}

status_t resume_thread(thread_id thread)
{
    const auto record = kits::ThreadRecord::Find(thread);
    return record != nullptr ? record->Resume() : B_BAD_THREAD_ID;
}

status_t suspend_thread(thread_id thread)
{
    const auto record = kits::ThreadRecord::Find(thread);
    if (record == nullptr)
        return B_BAD_THREAD_ID;
    if (!record->IsOfTheKit())
        return B_NOT_ALLOWED;
    record->Suspend();
    if (record.get() == &kits::ThreadRecord::Current())
        record->StopIfAsked(nullptr);
    return B_OK;
}

status_t kill_thread(thread_id thread)
{
    const auto record = kits::ThreadRecord::Find(thread);
    if (record == nullptr)
        return B_BAD_THREAD_ID;
    if (!record->IsOfTheKit())
        return B_NOT_ALLOWED;
    if (record.get() == &kits::ThreadRecord::Current())
        return B_OK;
    const bool canWait = record->BeginKilling();
    record->Kill();
    if (canWait) {
        kits::KillShield shield;
        record->AwaitEnd(nullptr);
        kits::ThreadRecord::EndKilling();
    }
    return B_OK;
}

status_t wait_for_thread(thread_id thread, status_t* exitStatus)
{
    const auto record = kits::ThreadRecord::Find(thread);
    if (record == nullptr)
        return B_BAD_THREAD_ID;
    if (!record->IsOfTheKit())
        return B_NOT_ALLOWED;
    if (record.get() == &kits::ThreadRecord::Current())
        return B_BAD_VALUE;
    if (record->IsNew())
        record->Resume();
    record->AwaitEnd(exitStatus);
    return B_OK;
}

thread_id find_thread(const char* name)
{
    if (name == nullptr)
        return kits::ThreadRecord::Current().Id();
    const auto record = kits::ThreadRecord::FindNamed(name);
    return record != nullptr ? record->Id() : B_NAME_NOT_FOUND;
}

status_t get_thread_info(thread_id thread, thread_info* info)
{
    if (info == nullptr)
        return B_BAD_VALUE;
    const auto record = kits::ThreadRecord::Find(thread);
    if (record == nullptr)
        return B_BAD_THREAD_ID;
    *info = record->Info();
    return B_OK;
}

status_t snooze(bigtime_t microseconds)
{
    kits::ThreadRecord::Current().Snooze(std::max(microseconds, kShortestSnooze));
    return B_OK;
}
