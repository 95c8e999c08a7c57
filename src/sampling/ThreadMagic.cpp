// SPDX-License-Identifier: MIT
#include "src/sampling/ThreadMagic.h"

#include "kits/kernel/Errors.h"

#include <utility>

ThreadPrimitive::ThreadPrimitive(const char* name, int32 priority)
    : fName(name)
    , fPriority(priority)
{
}

ThreadPrimitive::~ThreadPrimitive()
{
    End();
}

thread_id ThreadPrimitive::Go()
{
    fThread = spawn_thread(RunBinder, fName != nullptr ? fName : "Unnamed", fPriority, this);
    if (fThread < 0)
        return fThread;
    // The object may be gone once its thread runs.
    const thread_id thread = fThread;
    resume_thread(thread);
    return thread;
}

thread_state ThreadPrimitive::State() const
{
    thread_info info;
    return get_thread_info(fThread, &info) == B_OK ? info.state : thread_state(0);
}

status_t ThreadPrimitive::Suspend()
{
    return suspend_thread(fThread);
}

void ThreadPrimitive::Join()
{
    if (fThread > 0)
        wait_for_thread(fThread, nullptr);
}

status_t ThreadPrimitive::Resume()
{
    return resume_thread(fThread);
}

void ThreadPrimitive::End()
{
    if (fThread > 0)
        kill_thread(fThread);
}

int32 ThreadPrimitive::RunBinder(void* object)
{
    static_cast<ThreadPrimitive*>(object)->Run();
    return 0;
}

OwnedPeriodicThread::OwnedPeriodicThread(std::unique_ptr<FunctionObject> work, bigtime_t period, const char* name,
                                         int32 priority)
    : ThreadPrimitive(name, priority)
    , fWork(std::move(work))
    , fPeriod(period)
{
}

OwnedPeriodicThread::~OwnedPeriodicThread()
{
    fQuitRequested = true;
    End();
}

OwnedPeriodicThread* OwnedPeriodicThread::Launch(std::unique_ptr<FunctionObject> work, bigtime_t period,
                                                 const char* name, int32 priority)
{
    auto* thread = new OwnedPeriodicThread(std::move(work), period, name, priority);
    if (thread->Go() < 0) {
        thread->Die();
        return nullptr;
    }
    return thread;
}

void OwnedPeriodicThread::RequestToQuit()
{
    fQuitRequested = true;
}

void OwnedPeriodicThread::Die()
{
    fDead = true;
    delete this;
}

void OwnedPeriodicThread::Run()
{
    // Also runs when the thread is killed: its stack is unwound then.
    struct Ending {
        OwnedPeriodicThread* thread;
        ~Ending()
        {
            if (!thread->fDead.exchange(true))
                delete thread;
        }
    } ending{this};

    // A thread without a pause never sleeps, so it notices Die() here.
    while (!fQuitRequested && !fDead) {
        (*fWork)();
        if (fPeriod != 0)
            snooze(fPeriod);
    }
}

FireAndForgetThread::FireAndForgetThread(std::unique_ptr<FunctionObject> work, const char* name, int32 priority)
    : ThreadPrimitive(name, priority)
    , fWork(std::move(work))
{
}

FireAndForgetThread::~FireAndForgetThread()
{
    End();
}

std::unique_ptr<FireAndForgetThread> FireAndForgetThread::Launch(std::unique_ptr<FunctionObject> work, const char* name,
                                                                 int32 priority)
{
    auto thread = std::make_unique<FireAndForgetThread>(std::move(work), name, priority);
    if (thread->Go() < 0)
        return nullptr;
    return thread;
}

void FireAndForgetThread::Run()
{
    (*fWork)();
}
