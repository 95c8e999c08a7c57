// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "kits/kernel/WaitPoint.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace kits {

class HeldLock;

/// What the kit knows of one thread, its own or somebody else's. Kept by the thread itself, by the table of threads
/// while it lives, and by whoever waits for its end. Every wait of a thread happens in here, on a condition of its
/// own: so who kills or suspends it need not know what it waits for.
class ThreadRecord {
public:
    using Deadline = std::chrono::steady_clock::time_point;
    static constexpr Deadline kNoDeadline = Deadline::max();

    /// The moment so many microseconds from now; kNoDeadline if that is too far away to be written down.
    [[nodiscard]] static Deadline DeadlineIn(bigtime_t microseconds);

    /// The calling thread's. A thread that the kit has not made gets one here.
    [[nodiscard]] static ThreadRecord& Current();
    /// Null if there is no such thread (any more).
    [[nodiscard]] static std::shared_ptr<ThreadRecord> Find(thread_id thread);
    /// The oldest living one, null if there is none.
    [[nodiscard]] static std::shared_ptr<ThreadRecord> FindNamed(const std::string& name);

    /// Makes a thread, suspended. See spawn_thread.
    [[nodiscard]] static thread_id Spawn(thread_func entry, const char* name, int32 priority, void* data);

    ~ThreadRecord() = default;
    ThreadRecord(const ThreadRecord&) = delete;
    ThreadRecord& operator=(const ThreadRecord&) = delete;

    [[nodiscard]] thread_id Id() const { return fId; }
    [[nodiscard]] bool IsOfTheKit() const { return fEntry != nullptr; }
    /// True if it was never resumed.
    [[nodiscard]] bool IsNew() const;
    [[nodiscard]] thread_info Info() const;

    // From any thread.
    status_t Resume();
    void Suspend();
    void Kill();
    /// Waits until it is gone, see wait_for_thread. Not on the thread itself.
    void AwaitEnd(status_t* exitStatus);
    /// Notes that the calling thread will wait for this one to be killed. False if it must not, because this one waits
    /// for the calling thread in the same way, itself or by others. A true is followed by EndKilling.
    [[nodiscard]] bool BeginKilling();
    static void EndKilling();

    // By the thread itself.
    /// True if it has to end or to stop at the wait that it is in.
    [[nodiscard]] bool HasToStop() const;
    /// Stops while it is suspended and throws ThreadKilled if it has to end, with the guard released, if there is one.
    void StopIfAsked(WaitPoint::Guard* guard);
    /// Sleeps until `woken`, which others set by Wake, or until it has to stop. False if the deadline came first.
    bool Sleep(const bool& woken, Deadline deadline, thread_state state);
    /// See snooze.
    void Snooze(bigtime_t microseconds);
    /// Takes the locks away that it still holds.
    void ReleaseHeldLocks() noexcept;
    /// The last act of a thread, after its thread-local objects are destroyed.
    void NoteGone();

    /// Sets `woken` of a sleeping thread and wakes it.
    void Wake(bool* woken);

private:
    friend class HeldLock;
    friend class KillShield;
    class Interest;

    ThreadRecord(thread_id id, std::string name, int32 priority, thread_func entry, void* data);

    static void Adopt(std::shared_ptr<ThreadRecord> record);
    void RunToItsEnd();
    void TakeLeave(status_t exitStatus);
    [[nodiscard]] bool CanBeKilledNow() const;
    void LeaveSuspension();
    void JoinOrAwaitJoin(WaitPoint::Guard& guard);

    const thread_id fId;
    const std::string fName;
    const int32 fPriority;
    const thread_func fEntry; ///< null for a thread that the kit has not made
    void* const fData;

    /// Guards what follows, and the `woken` of the wait that the thread is in. Taken after the guard of a wait point.
    mutable std::mutex fMutex;
    std::condition_variable fChanged;
    bool fIsStarted = false;
    bool fIsSuspended = false;
    bool fIsKilled = false;
    thread_state fState = B_THREAD_RUNNING; ///< what it does if it is not suspended

    std::atomic<bool> fIsAsked = false; ///< suspended or killed: spares the mutex where neither is so

    WaitPoint fEnd; ///< guards what follows, and has those waiting who wait for the end
    std::thread fThread;
    int fCountInterested = 0;
    bool fHasEnded = false;
    bool fIsJoinTaken = false;
    bool fIsGone = false;
    status_t fExitStatus = B_OK;

    ThreadRecord* fKilling = nullptr; ///< whom this thread waits for in kill_thread; guarded by the table's mutex

    // Of the thread itself alone.
    int fCountShields = 0;
    HeldLock* fNewestHeldLock = nullptr;
};

} // namespace kits
