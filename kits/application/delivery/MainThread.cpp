// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/kernel/Threads.h"

#include <deque>
#include <mutex>
#include <thread>

namespace kits {

namespace {

using Actions = std::deque<std::function<void()>>;

const std::thread::id sMainThread = std::this_thread::get_id();

/// Queues that other threads may fill.
struct ActionQueues {
    std::mutex mutex;
    Actions soon;
    Actions outermost;

    static ActionQueues& Get()
    {
        // Never destroyed: threads may still post while the process ends.
        static ActionQueues& queues = *new ActionQueues;
        return queues;
    }

    void Add(Actions ActionQueues::*queue, std::function<void()> action)
    {
        {
            std::lock_guard lock(mutex);
            (this->*queue).push_back(std::move(action));
        }
        EventLoop::Wake();
    }

    size_t Count(Actions ActionQueues::*queue)
    {
        std::lock_guard lock(mutex);
        return (this->*queue).size();
    }

    /// Returns the next action; empty if there is none.
    std::function<void()> Take(Actions ActionQueues::*queue)
    {
        std::lock_guard lock(mutex);
        if ((this->*queue).empty())
            return nullptr;
        std::function<void()> action = std::move((this->*queue).front());
        (this->*queue).pop_front();
        return action;
    }
};

// Used by the main thread only.
int32 sCountDispatches = 0;
int32 sCountNested = 0;
NestedLoop* sInnermost = nullptr;

} // namespace

bool IsMainThread()
{
    return std::this_thread::get_id() == sMainThread;
}

thread_id MainThreadId()
{
    static const thread_id sId = find_thread(nullptr);
    return sId;
}

void RunOnMainThread(std::function<void()> action)
{
    ActionQueues::Get().Add(&ActionQueues::soon, std::move(action));
}

void RunAtOutermostLoop(std::function<void()> action)
{
    ActionQueues::Get().Add(&ActionQueues::outermost, std::move(action));
}

bool IsOutermost()
{
    return sCountNested == 0 && sCountDispatches == 0;
}

DispatchScope::DispatchScope()
{
    EventLoop::NoteEvent();
    ++sCountDispatches;
}

DispatchScope::~DispatchScope()
{
    --sCountDispatches;
}

namespace {

/// Runs one action. Returns false if there is none.
bool RunOutermostAction()
{
    const std::function<void()> action = ActionQueues::Get().Take(&ActionQueues::outermost);
    if (action == nullptr)
        return false;
    EventLoop::NoteEvent();
    action();
    return true;
}

void RunMainThreadActions(size_t count)
{
    for (; count > 0; --count) {
        const std::function<void()> action = ActionQueues::Get().Take(&ActionQueues::soon);
        if (action == nullptr)
            return;
        const DispatchScope scope;
        action();
    }
}

} // namespace

void RunOutermostActions()
{
    ActionQueues& queues = ActionQueues::Get();
    if (sCountNested > 0 && queues.Count(&ActionQueues::outermost) > 0) {
        NestedLoop::CancelAll();
        return;
    }
    while (IsOutermost() && RunOutermostAction()) {
    }
}

void RunMainThreadActions()
{
    RunMainThreadActions(ActionQueues::Get().Count(&ActionQueues::soon));
}

bool HasActionsToRun()
{
    ActionQueues& queues = ActionQueues::Get();
    return queues.Count(&ActionQueues::soon) > 0 || (IsOutermost() && queues.Count(&ActionQueues::outermost) > 0);
}

void RunLeftOverActions()
{
    ActionQueues& queues = ActionQueues::Get();
    const size_t countSoon = queues.Count(&ActionQueues::soon);
    for (size_t count = queues.Count(&ActionQueues::outermost); count > 0 && IsOutermost(); --count)
        RunOutermostAction();
    RunMainThreadActions(countSoon);
}

NestedLoop::NestedLoop(std::function<void()> cancel)
    : fCancel(std::move(cancel))
    , fOuter(sInnermost)
    , fLockDepth(InterfaceLock::Get().Depth())
{
    sInnermost = this;
    ++sCountNested;
    // If something waits for the nested loops to end, this loop has to learn of it too.
    EventLoop::Wake();
}

NestedLoop::~NestedLoop()
{
    InterfaceLock::Get().Restore(fLockDepth);
    sInnermost = fOuter;
    --sCountNested;
    EventLoop::Wake();
}

int32 NestedLoop::Count()
{
    return sCountNested;
}

void NestedLoop::CancelAll()
{
    // Restarts after each call, because the call may end loops.
    for (NestedLoop* loop = sInnermost; loop != nullptr;) {
        if (loop->fCanceled) {
            loop = loop->fOuter;
            continue;
        }
        loop->fCanceled = true;
        if (loop->fCancel != nullptr)
            loop->fCancel();
        loop = sInnermost;
    }
}

} // namespace kits
