// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"
#include "src/prefs/store/StoreWriter.h"

#include <functional>
#include <optional>
#include <vector>

/// Writes the user's arrangement while the program runs, so that a kill loses at most the changes of five seconds. It
/// looks every four seconds, archives if something has changed (Changes), and writes the differences from the disk on a
/// thread of its own. Every fifteenth look, once a minute, archives in any case, so that a change that nobody noted is
/// saved, too.
///
/// Main thread.
class Autosave {
public:
    static constexpr bigtime_t kPeriod = 4'000'000;
    static constexpr int32 kLooksToArchive = 15;

    /// @param stores   written in this order; they outlive this object
    /// @param archive  puts the program's arrangement into the stores
    /// @param tell     called at each look, before anything is archived: tells the user when saving has begun to fail
    Autosave(std::vector<const Preferences*> stores, std::function<status_t()> archive,
             std::function<void(const StoreWriter& writer)> tell);
    /// Waits until all copies handed over are on the disk, or could not be written.
    ~Autosave() = default;

    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    void Start() { fTimer.Start(kPeriod); }
    /// Stops looking. Copies handed over are still written.
    void Stop();
    /// Looks once, as the timer does.
    void Look();
    /// Archives now, and writes the changes.
    void Save();
    /// Saves in 0.3 seconds, together with all changes until then.
    void SaveSoon();
    /// True if everything saved is on the disk.
    bool HasWrittenAll() const { return fWriter.HasWrittenAll(); }
    /// Waits until everything saved is on the disk.
    /// @return why something could not be written
    status_t Drain() { return fWriter.Drain(); }

private:
    const std::vector<const Preferences*> fStores;
    const std::function<status_t()> fArchive;
    const std::function<void(const StoreWriter&)> fTell;
    StoreWriter fWriter;
    std::optional<uint64> fSaved; ///< the count of changes when everything was saved; empty before the first save and
                                  ///< after a failed one
    int32 fLooks = 0;             ///< number of looks since the last archiving
    kits::Timer fTimer;
    kits::Timer fSoon;
};
