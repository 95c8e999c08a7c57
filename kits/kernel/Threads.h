// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>

/// Threads by number: other threads can start, suspend, resume, await and end them.
///
/// A new thread is suspended until `resume_thread`. Ids are the kit's own, positive, and never reused in a process; the
/// id of a thread that is gone gives `B_BAD_THREAD_ID`. Threads that the kit has not made (the main thread, a
/// library's) get an id when they first ask for it or wait: they can be named, queried and can wait, but cannot be
/// killed, suspended or waited for (`B_NOT_ALLOWED`).
///
/// Ending and suspending take effect only at *waits*: `snooze`, a BLocker's `Lock`, the interface lock, waiting for a
/// reply, `wait_for_thread`; everything built on kits::WaitPoint. Between two waits a thread is never interrupted, so
/// its work there is complete. WaitPoint.h explains the requirements on code that may be killed.
///
/// Any thread may make any call.

/// The state of a thread, as far as the kit knows.
enum thread_state : int32 {
    B_THREAD_RUNNING = 1, ///< it runs, or would if a processor were free
    B_THREAD_READY,       ///< not distinguished from running; never reported
    B_THREAD_RECEIVING,   ///< it waits for a reply
    B_THREAD_ASLEEP,      ///< in `snooze`
    B_THREAD_SUSPENDED,   ///< not resumed yet, or suspended in a wait
    B_THREAD_WAITING      ///< it waits for a lock or for another thread
};

// Priorities. They become nice levels, see kits::NiceForPriority.
inline constexpr int32 B_LOWEST_ACTIVE_PRIORITY = 1;
inline constexpr int32 B_LOW_PRIORITY = 5;
inline constexpr int32 B_NORMAL_PRIORITY = 10;
inline constexpr int32 B_REAL_TIME_PRIORITY = 120;

/// A time-out that never expires.
inline constexpr bigtime_t B_INFINITE_TIMEOUT = INT64_MAX;

/// The entry function of a thread; its result is the thread's exit status. It must not throw.
using thread_func = int32 (*)(void* data);

struct thread_info {
    thread_id thread = -1;
    std::string name; ///< complete, even if the system shows only its first 15 bytes
    thread_state state = B_THREAD_RUNNING;
    int32 priority = B_NORMAL_PRIORITY;
};

/// Makes a thread that will call `entry(data)`, suspended until `resume_thread`.
/// @param name      copied; null counts as empty
/// @param priority  1 to 120; other values are held to that range
/// @return its id, `B_BAD_VALUE` without an entry, `B_NO_MORE_THREADS` if the system refuses one
thread_id spawn_thread(thread_func entry, const char* name, int32 priority, void* data);

/// Starts a new thread, or continues a suspended one (even if the suspension has not taken effect yet).
/// @return `B_OK`, `B_BAD_THREAD_ID`, `B_BAD_THREAD_STATE` if it is not suspended
status_t resume_thread(thread_id thread);

/// Asks the thread to stop at its next wait, or at once if it is in one; the wait's time-out runs on meanwhile. While
/// it is suspended, a thread never holds the lock for which it was waiting. Suspending the calling thread stops it
/// here. Otherwise returns without waiting for the effect. The program suspends nothing; its thread classes offer it.
/// @return `B_OK` (also if it is suspended already), `B_BAD_THREAD_ID`, `B_NOT_ALLOWED`
status_t suspend_thread(thread_id thread);

/// Ends the thread at its next wait, or at once if it is in one or was never started: its stack is unwound, then the
/// locks that it still holds are released. Returns only when it is gone. So do not call it while you hold a lock that
/// the thread needs outside of the waits above.
///
/// On the calling thread it changes nothing and returns `B_OK`: that thread ends when its entry function returns. If
/// the thread is itself killing the caller at this moment, this returns without waiting, because neither could end
/// otherwise. Never ends the caller itself, even if that is killed meanwhile: safe in destructors.
/// @return `B_OK`, `B_BAD_THREAD_ID`, `B_NOT_ALLOWED`
status_t kill_thread(thread_id thread);

/// Waits until the thread is gone. Starts it if it was never started. The caller can be killed in this wait.
/// @param exitStatus  receives the result of its entry function, `B_INTERRUPTED` if it was killed; may be null
/// @return `B_OK`, `B_BAD_THREAD_ID` (also if it is gone already), `B_NOT_ALLOWED`, `B_BAD_VALUE` for the caller itself
status_t wait_for_thread(thread_id thread, status_t* exitStatus);

/// Returns the id of the oldest living thread with this name, or of the calling thread for null.
/// @return `B_NAME_NOT_FOUND` if there is none
thread_id find_thread(const char* name);

/// @return `B_OK`, `B_BAD_THREAD_ID`, `B_BAD_VALUE` for a null `info`
status_t get_thread_info(thread_id thread, thread_info* info);

/// Sleeps for this many microseconds of the monotonic clock (which stands still while the machine sleeps). Less than
/// 1000, including 0 and negative values, counts as 1000. The thread can be killed and suspended in this wait.
/// @return `B_OK`
status_t snooze(bigtime_t microseconds);

namespace kits {

/// Returns the nice level that a priority adds to that of the process: 0 at `B_NORMAL_PRIORITY`, up to 9 below it, down
/// to -13 above it. Negative levels are used as far as the user may; no priority is ever a real-time one.
[[nodiscard]] int NiceForPriority(int32 priority) noexcept;

} // namespace kits
