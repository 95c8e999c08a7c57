// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"
#include "src/prefs/StoreAlerts.h"
#include "src/prefs/store/StoreWriter.h"

#include <optional>

class QelApp;

/// Writes what the user arranged while the program runs, so that little is lost when it is killed: at most five
/// seconds' worth. It looks every four seconds, and writes, on a thread of its own, only what changed.
///
/// What changed is found by comparing archives, which costs some ten microseconds a chart: so nothing that the user
/// can change can be forgotten here. They are compared only after something was handled that may have changed them
/// (kits::EventLoop::CountChanges): samples, which say that they do not, cost nothing here.
///
/// Main thread.
class Autosave {
public:
    static constexpr bigtime_t kPeriod = 4'000'000;

    /// @param app  whose windows and sampler are stored; outlives this object
    explicit Autosave(QelApp& app);
    /// Waits until all that was handed over is on disk, or could not be written.
    ~Autosave() = default;

    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    /// What it does every four seconds: tells the user when saving has begun to fail (SaveAlarm), then Save(), unless
    /// nothing can have changed since the last one and that is on the disk.
    void Look();
    /// Looks no more. What was handed over is still written.
    void Stop() { fTimer.Stop(); }
    /// Has what changed written, now.
    void Save();
    /// Whether all that was saved is on the disk.
    bool HasWrittenAll() const { return fWriter.HasWrittenAll(); }

private:
    QelApp& fApp;
    StoreWriter fWriter;
    SaveAlarm fAlarm;
    std::optional<uint64> fSaved; ///< the count of changes when all was saved; nothing before, and when that failed
    kits::Timer fTimer;
};
