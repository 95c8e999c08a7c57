// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"

#include <chrono>
#include <functional>
#include <thread>
#include <utility>

namespace test {

/// Waits until the condition is true, however slow the machine; returns false only after a minute.
template <class Condition> bool Await(Condition condition)
{
    using namespace std::chrono;
    for (const auto end = steady_clock::now() + minutes(1); !condition();) {
        if (steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(milliseconds(1));
    }
    return true;
}

/// A new thread of the kit that runs a lambda; its destructor kills it if it still lives.
class TestThread {
public:
    explicit TestThread(std::function<int32()> work, const char* name = "test", int32 priority = B_NORMAL_PRIORITY)
        : fWork(std::move(work))
        , fId(spawn_thread([](void* self) -> int32 { return static_cast<TestThread*>(self)->fWork(); }, name, priority,
                           this))
    {
    }
    ~TestThread() { kill_thread(fId); }
    TestThread(const TestThread&) = delete;
    TestThread& operator=(const TestThread&) = delete;

    [[nodiscard]] thread_id Id() const { return fId; }
    status_t Start() const { return resume_thread(fId); }
    status_t Join(status_t* exitStatus = nullptr) const { return wait_for_thread(fId, exitStatus); }
    [[nodiscard]] thread_state State() const
    {
        thread_info info;
        return get_thread_info(fId, &info) == B_OK ? info.state : thread_state(0);
    }
    [[nodiscard]] bool AwaitState(thread_state state) const
    {
        return Await([&] { return State() == state; });
    }
    [[nodiscard]] bool IsGone() const
    {
        thread_info info;
        return get_thread_info(fId, &info) != B_OK;
    }

private:
    const std::function<int32()> fWork;
    const thread_id fId;
};

} // namespace test
