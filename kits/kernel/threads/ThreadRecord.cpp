// SPDX-License-Identifier: MIT
#include "kits/kernel/threads/ThreadRecord.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/HeldLock.h"
#include "kits/kernel/threads/Priority.h"
#include "kits/kernel/threads/ThreadTable.h"

#include <pthread.h>
#include <signal.h>

#include <exception>
#include <system_error>
#include <utility>

namespace kits {

namespace {

/// The record of this thread, once it has one. A plain pointer, so that it can be read while the thread's other objects
/// are destroyed; the thread-specific key below keeps the record until after them.
thread_local ThreadRecord* sCurrent = nullptr;

/// Keeps signals to threads that the kit has not made; a signal caused by a thread itself stays with it.
class SignalsBlocked {
public:
    SignalsBlocked()
    {
        sigset_t blocked;
        sigfillset(&blocked);
        for (int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS, SIGPROF})
            sigdelset(&blocked, signal);
        pthread_sigmask(SIG_BLOCK, &blocked, &fBefore);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &fBefore, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t fBefore;
};

void ForgetThread(void* kept)
{
    std::unique_ptr<std::shared_ptr<ThreadRecord>> record(static_cast<std::shared_ptr<ThreadRecord>*>(kept));
    if ((*record)->IsOfTheKit()) {
        (*record)->NoteGone();
    } else {
        (*record)->ReleaseHeldLocks();
        ThreadTable& table = ThreadTable::Get();
        std::lock_guard lock(table.mutex);
        table.threads.erase((*record)->Id());
    }
    sCurrent = nullptr;
}

pthread_key_t MakeKey()
{
    pthread_key_t key;
    // Its destructor runs after those of all thread-local objects, which may still wait and lock.
    if (pthread_key_create(&key, ForgetThread) != 0)
        std::terminate();
    return key;
}

std::string NameOfSystemThread()
{
    char name[16] = "";
    pthread_getname_np(pthread_self(), name, sizeof(name));
    return name;
}

} // namespace

ThreadTable& ThreadTable::Get()
{
    static ThreadTable* const sTable = new ThreadTable;
    return *sTable;
}

ThreadRecord::ThreadRecord(thread_id id, std::string name, int32 priority, thread_func entry, void* data)
    : fId(id)
    , fName(std::move(name))
    , fPriority(priority)
    , fEntry(entry)
    , fData(data)
{
}

void ThreadRecord::Adopt(std::shared_ptr<ThreadRecord> record)
{
    static const pthread_key_t sKey = MakeKey();
    sCurrent = record.get();
    pthread_setspecific(sKey, new std::shared_ptr<ThreadRecord>(std::move(record)));
}

ThreadRecord& ThreadRecord::Current()
{
    if (sCurrent == nullptr) {
        ThreadTable& table = ThreadTable::Get();
        std::shared_ptr<ThreadRecord> record;
        {
            std::lock_guard lock(table.mutex);
            record.reset(new ThreadRecord(++table.lastId, NameOfSystemThread(), B_NORMAL_PRIORITY, nullptr, nullptr));
            record->fIsStarted = true;
            table.threads.emplace(record->fId, record);
        }
        Adopt(std::move(record));
    }
    return *sCurrent;
}

std::shared_ptr<ThreadRecord> ThreadRecord::Find(thread_id thread)
{
    ThreadTable& table = ThreadTable::Get();
    std::lock_guard lock(table.mutex);
    auto found = table.threads.find(thread);
    return found != table.threads.end() ? found->second : nullptr;
}

std::shared_ptr<ThreadRecord> ThreadRecord::FindNamed(const std::string& name)
{
    ThreadTable& table = ThreadTable::Get();
    std::lock_guard lock(table.mutex);
    for (const auto& [id, record] : table.threads)
        if (record->fName == name)
            return record;
    return nullptr;
}

thread_id ThreadRecord::Spawn(thread_func entry, const char* name, int32 priority, void* data)
{
    ThreadTable& table = ThreadTable::Get();
    std::shared_ptr<ThreadRecord> record;
    {
        std::lock_guard lock(table.mutex);
        record.reset(new ThreadRecord(++table.lastId, name != nullptr ? name : "", priority, entry, data));
        table.threads.emplace(record->fId, record);
    }
    try {
        SignalsBlocked blocked;
        WaitPoint::Guard guard = record->fEnd.Hold();
        record->fThread = std::thread([record]() mutable {
            ThreadRecord* self = record.get();
            Adopt(std::move(record));
            self->RunToItsEnd();
        });
    } catch (const std::system_error&) {
        std::lock_guard lock(table.mutex);
        table.threads.erase(record->fId);
        return B_NO_MORE_THREADS;
    }
    return record->fId;
}

void ThreadRecord::RunToItsEnd()
{
    pthread_setname_np(pthread_self(), fName.substr(0, 15).c_str());
    ApplyPriority(fPriority);
    status_t exitStatus = B_INTERRUPTED;
    bool isStarted;
    {
        std::unique_lock lock(fMutex);
        fChanged.wait(lock, [this] { return fIsStarted || fIsKilled; });
        isStarted = !fIsKilled;
    }
    if (isStarted) {
        try {
            exitStatus = fEntry(fData);
        } catch (const ThreadKilled&) {
        }
    }
    ReleaseHeldLocks();
    TakeLeave(exitStatus);
}

void ThreadRecord::TakeLeave(status_t exitStatus)
{
    {
        ThreadTable& table = ThreadTable::Get();
        std::lock_guard lock(table.mutex);
        table.threads.erase(fId);
    }
    WaitPoint::Guard guard = fEnd.Hold();
    fExitStatus = exitStatus;
    fHasEnded = true;
    if (fCountInterested == 0)
        fThread.detach();
    fEnd.WakeAll(guard);
}

/// Marks that somebody waits for the end of a thread: until the last waiter has gone, the thread stays joinable.
class ThreadRecord::Interest {
public:
    Interest(ThreadRecord& thread, WaitPoint::Guard& guard)
        : fThread(thread)
        , fGuard(guard)
    {
        ++fThread.fCountInterested;
    }
    ~Interest()
    {
        if (!fGuard.owns_lock())
            fGuard.lock();
        if (--fThread.fCountInterested == 0 && fThread.fHasEnded && !fThread.fIsJoinTaken)
            fThread.fThread.detach();
    }
    Interest(const Interest&) = delete;
    Interest& operator=(const Interest&) = delete;

private:
    ThreadRecord& fThread;
    WaitPoint::Guard& fGuard;
};

void ThreadRecord::AwaitEnd(status_t* exitStatus)
{
    WaitPoint::Guard guard = fEnd.Hold();
    if (fHasEnded) {
        fEnd.Wait(
            guard, [this] { return fIsGone; });
    } else {
        Interest interest(*this, guard);
        fEnd.Wait(guard, [this] { return fHasEnded; });
        JoinOrAwaitJoin(guard);
    }
    if (exitStatus != nullptr)
        *exitStatus = fExitStatus;
}

void ThreadRecord::JoinOrAwaitJoin(WaitPoint::Guard& guard)
{
    if (fIsJoinTaken) {
        fEnd.Wait(guard, [this] { return fIsGone; });
        return;
    }
    fIsJoinTaken = true;
    guard.unlock();
    fThread.join();
    guard.lock();
}

void ThreadRecord::NoteGone()
{
    WaitPoint::Guard guard = fEnd.Hold();
    fIsGone = true;
    fEnd.WakeAll(guard);
}

bool ThreadRecord::BeginKilling()
{
    ThreadRecord& self = Current();
    std::lock_guard lock(ThreadTable::Get().mutex);
    for (const ThreadRecord* thread = this; thread != nullptr; thread = thread->fKilling)
        if (thread == &self)
            return false;
    self.fKilling = this;
    return true;
}

void ThreadRecord::EndKilling()
{
    ThreadRecord& self = Current();
    std::lock_guard lock(ThreadTable::Get().mutex);
    self.fKilling = nullptr;
}

void ThreadRecord::ReleaseHeldLocks() noexcept
{
    while (fNewestHeldLock != nullptr) {
        HeldLock* held = fNewestHeldLock;
        held->NoteReleased();
        held->ReleaseWhole();
    }
}

} // namespace kits
