// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"
#include "src/prefs/store/StoreWriter.h"

#include <functional>
#include <optional>
#include <vector>

/// Writes what the user arranged while the program runs, so that a kill loses five seconds' worth at most. It looks
/// every four seconds, archives if something has changed (Changes), and writes, on a thread of its own, what differs
/// from the disk. Every fifteenth look, once a minute, archives in any case: a change that nobody has noted is not
/// lost either.
///
/// Main thread.
class Autosave {
public:
    static constexpr bigtime_t kPeriod = 4'000'000;
    static constexpr int32 kLooksToArchive = 15;

    /// @param stores   are written in this order; outlive this object
    /// @param archive  puts what the program has arranged into the stores
    /// @param tell     is called at each look, before anything is archived: tells the user when saving has begun to fail
    Autosave(std::vector<const Preferences*> stores, std::function<status_t()> archive,
             std::function<void(const StoreWriter& writer)> tell);
    /// Waits until everything handed over is on disk, or could not be written.
    ~Autosave() = default;

    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    void Start() { fTimer.Start(kPeriod); }
    /// Looks no more. Copies handed over are still written.
    void Stop();
    /// One look.
    void Look();
    /// Archives now and has what changed written.
    void Save();
    /// Saves in 0.3 seconds, together with what changes until then.
    void SaveSoon();
    /// True if everything saved is on the disk.
    bool HasWrittenAll() const { return fWriter.HasWrittenAll(); }
    /// Waits for that.
    /// @return why something could not be written
    status_t Drain() { return fWriter.Drain(); }

private:
    const std::vector<const Preferences*> fStores;
    const std::function<status_t()> fArchive;
    const std::function<void(const StoreWriter&)> fTell;
    StoreWriter fWriter;
    std::optional<uint64> fSaved; ///< the count of changes when all was saved; nothing before, and when that failed
    int32 fLooks = 0;             ///< since something was archived
    kits::Timer fTimer;
    kits::Timer fSoon;
};
