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

/// What the kit knows of one thread, its own or another's. Owned jointly by the thread, the table of threads while the
/// thread lives, and those that wait for its end. Every wait of a thread takes place here, on a condition of its own,
/// so killing or suspending a thread requires no knowledge of what it waits for.
class ThreadRecord {
public:
    using Deadline = std::chrono::steady_clock::time_point;
    static constexpr Deadline kNoDeadline = Deadline::max();

    /// The moment so many microseconds from now; kNoDeadline if it is too far away to be represented.
    [[nodiscard]] static Deadline DeadlineIn(bigtime_t microseconds);

    /// Returns the calling thread's record. A thread that the kit has not made gets one here.
    [[nodiscard]] static ThreadRecord& Current();
    /// Returns null if there is no such thread (any more).
    [[nodiscard]] static std::shared_ptr<ThreadRecord> Find(thread_id thread);
    /// Returns the oldest living one, or null.
    [[nodiscard]] static std::shared_ptr<ThreadRecord> FindNamed(const std::string& name);

    /// Makes a thread, suspended. See spawn_thread.
    [[nodiscard]] static thread_id Spawn(thread_func entry, const char* name, int32 priority, void* data);

    ~ThreadRecord() = default;
    ThreadRecord(const ThreadRecord&) = delete;
    ThreadRecord& operator=(const ThreadRecord&) = delete;

    [[nodiscard]] thread_id Id() const { return fId; }
    [[nodiscard]] bool IsOfTheKit() const { return fEntry != nullptr; }
    /// Returns true if it was never resumed.
    [[nodiscard]] bool IsNew() const;
    [[nodiscard]] thread_info Info() const;

    // Any thread may call these.
    status_t Resume();
    void Suspend();
    void Kill();
    /// Waits until it is gone, see wait_for_thread. Not on the thread itself.
    void AwaitEnd(status_t* exitStatus);
    /// Records that the calling thread will wait for this one to be killed. Call EndKilling afterwards if it returns
    /// true.
    /// @return false if the caller must not wait, because this thread waits for the caller in the same way, directly or
    ///         through others
    [[nodiscard]] bool BeginKilling();
    static void EndKilling();

    // Only the thread itself calls these.
    /// True if the thread has to end or to stop at its current wait.
    [[nodiscard]] bool HasToStop() const;
    /// Stops while the thread is suspended, and throws ThreadKilled if it must end, with the guard released, if there
    /// is one.
    void StopIfAsked(WaitPoint::Guard* guard);
    /// Sleeps until `woken`, which others set by Wake, or until it must stop. Returns false if the deadline came first.
    bool Sleep(const bool& woken, Deadline deadline, thread_state state);
    /// See snooze.
    void Snooze(bigtime_t microseconds);
    /// Releases the locks that the thread still holds.
    void ReleaseHeldLocks() noexcept;
    /// The last action of a thread, after its thread-local objects are destroyed.
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

    /// Guards the members below, and the `woken` of the thread's current wait. Locked after the guard of a wait point.
    mutable std::mutex fMutex;
    std::condition_variable fChanged;
    bool fIsStarted = false;
    bool fIsSuspended = false;
    bool fIsKilled = false;
    thread_state fState = B_THREAD_RUNNING; ///< its state if it is not suspended

    std::atomic<bool> fIsAsked = false; ///< suspended or killed: saves locking the mutex if it is neither

    WaitPoint fEnd; ///< guards what follows; threads that wait for the end wait here
    std::thread fThread;
    int fCountInterested = 0;
    bool fHasEnded = false;
    bool fIsJoinTaken = false;
    bool fIsGone = false;
    status_t fExitStatus = B_OK;

    ThreadRecord* fKilling =
        nullptr; ///< the thread that this one waits for in kill_thread; guarded by the table's mutex

    // Used by the thread itself only.
    int fCountShields = 0;
    HeldLock* fNewestHeldLock = nullptr;
};

} // namespace kits
