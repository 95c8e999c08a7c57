// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/files/FileCalls.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <limits>

/// Installs a disk for the life of the object.
class WithDisk {
public:
    explicit WithDisk(kits::FailingDevice& disk)
        : fBefore(kits::SetFailingDevice(&disk))
    {
    }
    ~WithDisk() { kits::SetFailingDevice(fBefore); }
    WithDisk(const WithDisk&) = delete;
    WithDisk& operator=(const WithDisk&) = delete;

private:
    kits::FailingDevice* fBefore;
};

/// Fails the call with this number, counted from 0, and by default those after it; counts all calls.
class FailingDisk : public kits::FailingDevice {
public:
    FailingDisk(int failAt, int error, int failures = std::numeric_limits<int>::max())
        : fFailAt(failAt)
        , fError(error)
        , fFailures(failures)
    {
    }

    int Before(kits::FileAction&) override
    {
        const int number = fCalls++;
        return number >= fFailAt && number - fFailAt < fFailures ? fError : 0;
    }
    int Calls() const { return fCalls; }

private:
    int fFailAt;
    int fError;
    int fFailures;
    int fCalls = 0;
};

/// Has room for this many bytes, and is full after that.
class FullDisk : public kits::FailingDevice {
public:
    explicit FullDisk(size_t room, int error = ENOSPC)
        : fRoom(room)
        , fError(error)
    {
    }

    int Before(kits::FileAction& action) override
    {
        if (action.call != kits::FileCall::kWrite)
            return 0;
        if (fRoom == 0) {
            fFailed = true;
            return fError;
        }
        action.size = std::min(action.size, fRoom);
        return 0;
    }
    void After(const kits::FileAction& action, int64 result) override
    {
        if (action.call == kits::FileCall::kWrite && result > 0)
            fRoom -= static_cast<size_t>(result);
    }
    bool Failed() const { return fFailed; }

private:
    size_t fRoom;
    int fError;
    bool fFailed = false;
};

/// Ends the process before the call with this number, or once this many bytes were written, as `kill -9` does.
class KillingDisk : public kits::FailingDevice {
public:
    static KillingDisk AtCall(int call) { return {call, std::numeric_limits<size_t>::max()}; }
    static KillingDisk AfterBytes(size_t bytes) { return {std::numeric_limits<int>::max(), bytes}; }

    int Before(kits::FileAction& action) override
    {
        const bool isWrite = action.call == kits::FileCall::kWrite;
        if (fCalls++ == fKillAt || (isWrite && fRoom == 0))
            kill(getpid(), SIGKILL);
        if (isWrite) {
            action.size = std::min(action.size, fRoom);
            fRoom -= action.size;
        }
        return 0;
    }

private:
    KillingDisk(int killAt, size_t room)
        : fKillAt(killAt)
        , fRoom(room)
    {
    }

    int fKillAt;
    size_t fRoom;
    int fCalls = 0;
};
