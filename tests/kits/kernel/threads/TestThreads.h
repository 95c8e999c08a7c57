// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <atomic>

/// A thread that sleeps for ever; the constructor returns when it is asleep.
class SleepingThread : public test::TestThread {
public:
    explicit SleepingThread(std::atomic<int>* endings = nullptr)
        : test::TestThread([endings]() -> int32 {
            const struct Unwound {
                std::atomic<int>* count;
                ~Unwound()
                {
                    if (count != nullptr)
                        ++*count;
                }
            } unwound{endings};
            snooze(B_INFINITE_TIMEOUT);
            return 0;
        })
    {
        Start();
        EXPECT_TRUE(AwaitState(B_THREAD_ASLEEP));
    }
};

/// A thread that computes, at step 1, until it may go on; its first wait is at step 2, and step 3 is its end. The
/// constructor returns when it is at step 1.
class BusyThread {
public:
    BusyThread()
        : fThread([this]() -> int32 {
            ++fSteps;
            while (!fMayGoOn) {
            }
            ++fSteps;
            snooze(1000);
            return ++fSteps;
        })
    {
        fThread.Start();
        EXPECT_TRUE(AwaitStep(1));
    }

    test::TestThread& Thread() { return fThread; }
    [[nodiscard]] int Step() const { return fSteps; }
    [[nodiscard]] bool AwaitStep(int step) const
    {
        return test::Await([&] { return fSteps == step; });
    }
    void GoOn() { fMayGoOn = true; }

private:
    std::atomic<bool> fMayGoOn = false;
    std::atomic<int> fSteps = 0;
    test::TestThread fThread; // last member, so it ends before the others
};
