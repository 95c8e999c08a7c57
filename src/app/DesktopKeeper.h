#pragma once

#include <deque>
#include <memory>

#include "kits/support/SupportDefs.h"
#include "src/sampling/ThreadMagic.h"

class BMessage;

/// Keeps charts on the desktop: starts the program that shows them when the application starts, and again when it has
/// died while it had charts to show. One that ends in order (the session ends, its last chart goes) is left alone.
///
/// Belongs to the application, which hands B_SOME_APP_DIED on to it. Main thread; what waits is done on a thread.
class DesktopKeeper {
public:
    /// A program that dies at once is not started more often than this in a minute.
    static constexpr size_t kMostRestarts = 3;

    /// Begins to watch, and starts the program if it does not run and has charts.
    DesktopKeeper();
    ~DesktopKeeper();
    DesktopKeeper(const DesktopKeeper&) = delete;
    DesktopKeeper& operator=(const DesktopKeeper&) = delete;

    /// @param notice  B_SOME_APP_DIED
    void AppDied(const BMessage& notice);

private:
    /// What the thread does. @p again  when it has died
    static void Start(bool again);
    void Launch(bool again);
    bool MayRestart();

    std::unique_ptr<FireAndForgetThread> fThread;
    std::deque<bigtime_t> fRestarts; ///< when, the oldest first
};
