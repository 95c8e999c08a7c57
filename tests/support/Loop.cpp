// SPDX-License-Identifier: MIT
#include "tests/support/Loop.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/kernel/Errors.h"

#include <chrono>

namespace test {

namespace {

constexpr auto kLongest = std::chrono::minutes(1);
using SteadyClock = std::chrono::steady_clock;

} // namespace

bool RunUntil(const std::function<bool()>& condition)
{
    const kits::InterfaceLocker locker;
    const SteadyClock::time_point end = SteadyClock::now() + kLongest;
    while (!condition()) {
        if (SteadyClock::now() > end)
            return false;
        kits::WaitForWork(std::min(kits::EventLoop::Deadline(), system_time() + 2000));
        kits::EventLoop::RunDue();
    }
    return true;
}

status_t AwaitReply(const BMessenger& target, uint32 code, BMessage* reply)
{
    const BMessage message(code);
    return target.SendMessage(&message, reply);
}

bool AwaitState(thread_id thread, thread_state state)
{
    return Await([thread, state] {
        thread_info info;
        return get_thread_info(thread, &info) == B_OK && info.state == state;
    });
}

KitThread::KitThread(std::function<void()> work)
    : fWork(std::move(work))
    , fId(spawn_thread(Entry, "worker", B_NORMAL_PRIORITY, this))
{
    resume_thread(fId);
}

KitThread::~KitThread()
{
    Join();
}

void KitThread::Join()
{
    wait_for_thread(fId, nullptr);
}

int32 KitThread::Entry(void* self)
{
    static_cast<KitThread*>(self)->fWork();
    return 0;
}

void Recorder::MessageReceived(BMessage* message)
{
    codes.push_back(message->what);
    if (fWork != nullptr)
        fWork(message);
}

RecordingLooper::~RecordingLooper()
{
    if (destroyed != nullptr)
        *destroyed = true;
}

void RecordingLooper::MessageReceived(BMessage* message)
{
    codes.push_back(message->what);
    if (fWork != nullptr)
        fWork(message);
}

bool RecordingLooper::QuitRequested()
{
    codes.push_back(B_QUIT_REQUESTED);
    return quitAnswer;
}

MockClock::MockClock()
{
    kits::SetClockSource(this);
}

MockClock::~MockClock()
{
    kits::SetClockSource(nullptr);
}

} // namespace test
