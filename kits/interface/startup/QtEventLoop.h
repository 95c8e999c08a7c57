// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/EventLoop.h"
#include "kits/application/MainWait.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <vector>

class QEventLoop;

namespace kits {

/// The event loop of programs with windows: the toolkit's, which drives all loopers as well. It keeps the interface
/// lock for whatever is handled and gives it up whole while it waits, in nested loops too.
///
/// The lock is given up in the dispatcher's aboutToBlock and taken in the first event after that (Held, called by the
/// application object for every event), or in awake. Neither alone is enough: one dispatcher says that it is awake only
/// after its events, and a lock around every event alone would shut other threads out for as long as a nested loop
/// runs.
///
/// Main thread. The toolkit delivers events on other threads as well, where it loads a plugin for example; those get
/// by without the loop and without the lock.
class QtEventLoop : public EventLoop {
public:
    /// Needs the toolkit's application object.
    QtEventLoop();
    ~QtEventLoop() override;

    void Run() override;
    void Quit() override;

    /// Something is about to be handled: takes the lock as deep as before the wait. Nothing if no wait is under way.
    void Held();
    /// Shows what was drawn, arms the timer for what comes next, and gives up the lock.
    void BeginWait();
    /// Tells the toolkit's parts that a wait begins, as the dispatcher does: the connection to the display then sends
    /// what it has gathered.
    void TellOthers();

    /// Called when the dispatcher is about to wait, after BeginWait(); the dispatcher waits when it returns.
    using WaitInPlace = void (*)(QtEventLoop& loop);
    /// Installs a function that waits in the dispatcher's place; null, the initial value, installs none. Main thread.
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

/// The toolkit's application object: every event goes through it, on whichever thread. Those of other threads are
/// counted (EventLoop::CountEventsElsewhere) and handed on, nothing else.
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
