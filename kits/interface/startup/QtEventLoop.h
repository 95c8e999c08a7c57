// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/EventLoop.h"
#include "kits/application/MainWait.h"
#include "kits/interface/shortcuts/DispatcherWait.h"

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

    /// Something is about to be handled: the lock is held from here on, as deep as before the wait.
    void Held();

    /// Whether what is sent to the object only has a turn taken.
    bool TakesTurns(const QObject* object) const { return object == &fNotifier || object == &fTimer; }

private:
    void AboutToBlock();
    void BeginWait();
    void TakeTurn();
    void ArmTimer();

    QSocketNotifier fNotifier;
    QTimer fTimer;
    bigtime_t fArmedFor;
    MainWait fWait;
    DispatcherWait fDispatcherWait;
    bool fIsTellingOthers = false;
    std::vector<QEventLoop*> fRunning;
};

/// The toolkit's application object: every event goes through it, on whichever thread. Those of other threads are
/// counted (EventLoop::CountEventsElsewhere) and handed on, nothing else.
class KitsApplication : public QApplication {
public:
    KitsApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
    void SetLoop(QtEventLoop* loop) { fLoop = loop; }

    /// True if an object's event handler is on the main thread's stack. Main thread.
    static bool IsHandlingEvent() { return sHandling > 0; }

protected:
    bool event(QEvent* event) override;

private:
    QtEventLoop* fLoop = nullptr;
    static int32 sHandling;
};

} // namespace kits
