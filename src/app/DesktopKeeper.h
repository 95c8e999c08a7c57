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

/// Keeps charts on the desktop: starts the program that shows them when the application starts, and again if it has
/// died while it had charts to show. Leaves a program alone that ends in order (the session ends, or its last chart is
/// removed).
///
/// It also tells that program which of its charts the window has taken, as soon as that is stored, and again when
/// either program has started: so a chart that was moved between the two is in one place, whichever of them is killed,
/// and when.
///
/// Belongs to the application, which passes B_SOME_APP_DIED, B_SOME_APP_LAUNCHED and B_REPLICANT_TAKEN on to it. Main
/// thread; a thread of its own does what has to wait.
class DesktopKeeper {
public:
    /// The limit of restarts per minute, for a program that dies at once.
    static constexpr size_t kMostRestarts = 3;

    /// Begins to watch, and starts the program if it does not run and has charts.
    /// @param autosave  stores taken charts; outlives this object
    explicit DesktopKeeper(Autosave& autosave);
    ~DesktopKeeper();
    DesktopKeeper(const DesktopKeeper&) = delete;
    DesktopKeeper& operator=(const DesktopKeeper&) = delete;

    /// @param notice  B_SOME_APP_DIED
    void AppDied(const BMessage& notice);
    /// @param notice  B_SOME_APP_LAUNCHED
    void AppLaunched(const BMessage& notice);
    /// @param notice  B_REPLICANT_TAKEN, see ChartShelf; an empty one repeats the charts taken before
    void Taken(const BMessage& notice);

private:
    /// The thread's work. @p again after the program has died
    static void Start(bool again);
    void Launch(bool again);
    bool MayRestart();
    void TellWhenStored();

    Autosave& fAutosave;
    kits::Identities fTaken{ChartShelf::kMostTaken};
    std::vector<BMessenger> fSources; ///< of charts that are not stored yet
    kits::Timer fTellSoon;
    std::unique_ptr<FireAndForgetThread> fThread;
    std::deque<bigtime_t> fRestarts; ///< their times, the oldest first
};
