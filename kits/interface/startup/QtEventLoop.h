// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/EventLoop.h"
#include "kits/application/MainWait.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <vector>

class QEventLoop;

namespace kits {

/// The event loop of programs with windows: the toolkit's, which also drives all loopers. It holds the interface lock
/// while anything is handled and releases it completely while it waits, in nested loops too.
///
/// It releases the lock in the dispatcher's aboutToBlock, and takes it in the first event after that (Held, which the
/// application object calls for every event), or in awake. Neither alone is enough: one dispatcher emits awake only
/// after its events, and a lock around every event alone would shut out other threads as long as a nested loop runs.
///
/// Main thread. The toolkit delivers events on other threads as well, for example when it loads a plugin there; those
/// need neither the loop nor the lock.
class QtEventLoop : public EventLoop {
public:
    /// Needs the toolkit's application object.
    QtEventLoop();
    ~QtEventLoop() override;

    void Run() override;
    void Quit() override;

    /// Something is about to be handled: takes the lock as deep as before the wait. Does nothing if no wait is active.
    void Held();
    /// Shows what was drawn, sets the timer for the next deadline, and releases the lock.
    void BeginWait();
    /// Tells the toolkit's parts that a wait begins, as the dispatcher does: then the connection to the display sends
    /// its buffered requests.
    void TellOthers();

    /// Called when the dispatcher is about to wait, after BeginWait(); the dispatcher waits when it returns.
    using WaitInPlace = void (*)(QtEventLoop& loop);
    /// Installs a function that waits in place of the dispatcher; null, the initial value, installs none. Main thread.
    static void SetWaitInPlace(WaitInPlace wait) { sWaitInPlace = wait; }

private:
    void AboutToBlock();
    void TakeTurn();
    void ArmTimer();

    QSocketNotifier fNotifier;
    QTimer fTimer;
    bigtime_t fArmedFor;
    MainWait fWait;
    bool fIsTellingOthers = false;
    std::vector<QEventLoop*> fRunning;
    inline static WaitInPlace sWaitInPlace = nullptr;
};

/// The toolkit's application object: every event passes through it, on any thread. It counts events of other threads
/// (EventLoop::CountEventsElsewhere) and only passes them on.
class KitsApplication : public QApplication {
public:
    KitsApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
    void SetLoop(QtEventLoop* loop) { fLoop = loop; }

protected:
    bool event(QEvent* event) override;

private:
    QtEventLoop* fLoop = nullptr;
};

} // namespace kits
