// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Handler.h"
#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"
#include "tests/support/Await.h"

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace test {

/// Runs the main thread's loop until the condition holds. Returns false if it does not within a minute.
bool RunUntil(const std::function<bool()>& condition);

/// Sends a message of this code and waits for the answer, see BMessenger::SendMessage.
status_t AwaitReply(const BMessenger& target, uint32 code, BMessage* reply);

/// Waits until the thread is in this state: it waits for a lock or an answer, or is suspended.
bool AwaitState(thread_id thread, thread_state state);

/// A thread of the kernel kit that runs a function. Starts at once; its destructor waits for its end.
class KitThread {
public:
    explicit KitThread(std::function<void()> work);
    ~KitThread();
    KitThread(const KitThread&) = delete;
    KitThread& operator=(const KitThread&) = delete;

    thread_id Id() const { return fId; }
    void Join();

private:
    static int32 Entry(void* self);

    std::function<void()> fWork;
    thread_id fId;
};

/// Records the codes of its messages, and passes each message to a function.
class Recorder : public BHandler {
public:
    explicit Recorder(std::function<void(BMessage*)> work = nullptr)
        : BHandler("recorder")
        , fWork(std::move(work))
    {
    }
    void MessageReceived(BMessage* message) override;

    std::vector<uint32> codes;

private:
    std::function<void(BMessage*)> fWork;
};

/// The same as a looper. Made with `new` and ended with Quit(), or made on the stack and not run.
class RecordingLooper : public BLooper {
public:
    explicit RecordingLooper(std::function<void(BMessage*)> work = nullptr)
        : BLooper("looper")
        , fWork(std::move(work))
    {
    }
    ~RecordingLooper() override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

    std::vector<uint32> codes;
    bool quitAnswer = true;
    bool* destroyed = nullptr; ///< set by the destructor

private:
    std::function<void(BMessage*)> fWork;
};

/// A clock that stands still until a test moves it; the wall clock moves with it. Replaces the machine's clock while it
/// lives.
class MockClock : public kits::ClockSource {
public:
    MockClock();
    ~MockClock() override;
    bigtime_t SystemTime() override { return now; }
    bigtime_t WallTime() override { return 1700000000000000 + now; }
    std::string BootId() override { return "boot"; }

    bigtime_t now = 1000000;
};

} // namespace test
