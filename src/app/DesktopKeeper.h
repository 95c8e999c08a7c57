// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "kits/application/Timer.h"
#include "kits/support/Identity.h"
#include "kits/support/SupportDefs.h"
#include "src/chart/ChartShelf.h"
#include "src/sampling/ThreadMagic.h"

#include <deque>
#include <memory>
#include <vector>

class Autosave;
class BMessage;

/// Keeps charts on the desktop: starts the program that shows them when the application starts, and again when it has
/// died while it had charts to show. One that ends in order (the session ends, its last chart goes) is left alone.
///
/// It also tells that program which of its charts the window has taken, as soon as that is stored, and again when
/// either program has started: so a chart that was moved between the two is in one place, whichever of them is killed,
/// and when.
///
/// Belongs to the application, which hands B_SOME_APP_DIED, B_SOME_APP_LAUNCHED and B_REPLICANT_TAKEN on to it. Main
/// thread; what waits is done on a thread.
class DesktopKeeper {
public:
    /// A program that dies at once is not started more often than this in a minute.
    static constexpr size_t kMostRestarts = 3;

    /// Begins to watch, and starts the program if it does not run and has charts.
    /// @param autosave  stores what was taken; outlives this object
    explicit DesktopKeeper(Autosave& autosave);
    ~DesktopKeeper();
    DesktopKeeper(const DesktopKeeper&) = delete;
    DesktopKeeper& operator=(const DesktopKeeper&) = delete;

    /// @param notice  B_SOME_APP_DIED
    void AppDied(const BMessage& notice);
    /// @param notice  B_SOME_APP_LAUNCHED
    void AppLaunched(const BMessage& notice);
    /// @param notice  B_REPLICANT_TAKEN, see ChartShelf; an empty one has told again what was taken before
    void Taken(const BMessage& notice);

private:
    /// What the thread does. @p again  when it has died
    static void Start(bool again);
    void Launch(bool again);
    bool MayRestart();
    void TellWhenStored();

    Autosave& fAutosave;
    kits::Identities fTaken{ChartShelf::kMostTaken};
    std::vector<BMessenger> fSources; ///< of those that are not stored yet
    kits::Timer fTellSoon;
    std::unique_ptr<FireAndForgetThread> fThread;
    std::deque<bigtime_t> fRestarts; ///< when, the oldest first
};
