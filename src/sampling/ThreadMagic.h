// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"
#include "kits/kernel/Types.h"

#include <atomic>
#include <memory>

/// The worker threads of the program and their work. Every thread that the program starts is one of these classes; it
/// gets its work as a FunctionObject.

/// A callable object, owned by the thread that calls it.
class FunctionObject {
public:
    virtual void operator()() = 0;
    virtual ~FunctionObject() = default;
};

/// Binds a free function of one parameter to its argument. Owns neither the function nor what the argument points to:
/// the code that starts the thread keeps the argument alive as long as the thread runs.
template <typename T> class OneParamFunctionObject : public FunctionObject {
public:
    OneParamFunctionObject(void (*function)(T), T argument)
        : fFunction(function)
        , fArgument(argument)
    {
    }

    void operator()() override { fFunction(fArgument); }

private:
    void (*fFunction)(T);
    T fArgument;
};

/// A kernel thread with a name, a priority and a virtual entry function.
///
/// Go() may be called once. A derived class calls End() first in its destructor, because the thread uses members that
/// the destructor destroys.
class ThreadPrimitive {
public:
    /// Starts nothing.
    /// @param name      not copied: must outlive the object (in practice a literal); null means "Unnamed"
    /// @param priority  as for spawn_thread()
    ThreadPrimitive(const char* name, int32 priority);

    /// Ends the thread if it still runs, wherever it sleeps or waits, and returns when it is gone. On the thread
    /// itself, only makes sure that nothing runs after Run().
    virtual ~ThreadPrimitive();

    ThreadPrimitive(const ThreadPrimitive&) = delete;
    ThreadPrimitive& operator=(const ThreadPrimitive&) = delete;

    /// Spawns the thread and starts it.
    /// @return its id, or the negative error of spawning, which is kept as the id
    thread_id Go();

    /// The thread's present state; 0, which is no state, if there is no such thread (any more).
    thread_state State() const;

    /// -1 before Go(); the error if Go() failed; otherwise the thread's id, even after the thread has ended.
    thread_id ThreadID() const { return fThread; }

    /// Waits until the thread has done its work; returns at once if it never ran or is gone. Destroying the object
    /// instead may end a thread before it has done any of its work.
    void Join();

    /// Both return the kernel's result. A suspended thread stops at its next sleep or wait. For owners; none suspends
    /// a thread at present.
    status_t Suspend();
    status_t Resume();

protected:
    /// The work of the thread, on the thread. It may delete the object.
    virtual void Run() = 0;

    /// Kills the thread and waits until it is gone; does nothing if it never ran or is gone.
    void End();

private:
    static int32 RunBinder(void* object);

    const char* fName;
    thread_id fThread = -1;
    int32 fPriority;
};

/// Calls its work repeatedly, with a pause after each call, until it is asked to quit.
///
/// It is always on the heap and deletes itself, or Die() deletes it; never use `delete`. The owner keeps the pointer
/// that Launch() returned and gives it up with exactly one of RequestToQuit() and Die().
class OwnedPeriodicThread : public ThreadPrimitive {
public:
    /// @param work    owned by the thread
    /// @param period  microseconds from the end of a call to the next; 0 means no pause at all
    OwnedPeriodicThread(std::unique_ptr<FunctionObject> work, bigtime_t period, const char* name, int32 priority);

    /// Makes a thread and starts it.
    /// @return the running thread, or null if it could not be spawned; then the work is destroyed, too
    static OwnedPeriodicThread* Launch(std::unique_ptr<FunctionObject> work, bigtime_t period, const char* name,
                                       int32 priority);

    /// Asks the thread to end after at most one more call and one more pause, and returns at once. From now on the
    /// pointer is invalid. The work itself may call this.
    void RequestToQuit();

    /// Ends the thread at once: returns when it is gone and the object deleted. The thread is never killed while it
    /// computes, only where it sleeps or waits for a lock; if the caller holds the lock that the work takes first, the
    /// work is not half done. Not for the thread itself.
    void Die();

protected:
    ~OwnedPeriodicThread() override;
    void Run() override;

private:
    std::unique_ptr<FunctionObject> fWork;
    bigtime_t fPeriod;
    std::atomic<bool> fQuitRequested{false};
    /// Set by whichever deletes the object: the thread at its end, or Die().
    std::atomic<bool> fDead{false};
};

/// Calls its work once.
///
/// The object stays after the call; it belongs to the code that launched it. Deleting it ends the thread if it still
/// runs, so objects used by the work may be destroyed right after.
class FireAndForgetThread : public ThreadPrimitive {
public:
    FireAndForgetThread(std::unique_ptr<FunctionObject> work, const char* name, int32 priority);
    ~FireAndForgetThread() override;

    /// Makes a thread and starts it.
    /// @return the thread, or null if it could not be spawned; then the work is destroyed, too
    static std::unique_ptr<FireAndForgetThread> Launch(std::unique_ptr<FunctionObject> work, const char* name,
                                                       int32 priority);

protected:
    void Run() override;

private:
    std::unique_ptr<FunctionObject> fWork;
};
