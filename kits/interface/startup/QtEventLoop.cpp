// SPDX-License-Identifier: MIT
#include "kits/interface/startup/QtEventLoop.h"

#include "kits/application/Application.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/interface/controls/TextPaste.h"
#include "kits/interface/core/EventScope.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/platform/ForeignDrag.h"
#include "kits/interface/startup/Theme.h"
#include "kits/kernel/Clock.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QWindow>

#include <algorithm>

namespace kits {

QtEventLoop::QtEventLoop()
    : fNotifier(WakeDescriptor(), QSocketNotifier::Read)
    , fArmedFor(B_INFINITE_TIMEOUT)
{
    fTimer.setSingleShot(true);
    fTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&fNotifier, &QSocketNotifier::activated, [this] { TakeTurn(); });
    QObject::connect(&fTimer, &QTimer::timeout, [this] {
        fArmedFor = B_INFINITE_TIMEOUT;
        TakeTurn();
    });
    // The main thread's; other threads that wait in a loop of the toolkit have dispatchers of their own.
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(
        dispatcher, &QAbstractEventDispatcher::aboutToBlock, &fNotifier, [this] { AboutToBlock(); });
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &fNotifier, [this] { Held(); });
}

QtEventLoop::~QtEventLoop()
{
    Held();
}

void QtEventLoop::Run()
{
    QEventLoop loop;
    fRunning.push_back(&loop);
    loop.exec();
    Held();
    fRunning.pop_back();
}

void QtEventLoop::Quit()
{
    if (!fRunning.empty())
        fRunning.back()->quit();
}

void QtEventLoop::Held()
{
    fWait.End();
}

void QtEventLoop::AboutToBlock()
{
    if (fIsTellingOthers)
        return;
    BeginWait();
    if (sWaitInPlace != nullptr)
        sWaitInPlace(*this);
}

void QtEventLoop::TellOthers()
{
    fIsTellingOthers = true;
    emit QAbstractEventDispatcher::instance()->aboutToBlock();
    fIsTellingOthers = false;
}

void QtEventLoop::BeginWait()
{
    Held();
    UpdateQueue::Flush();
    ArmTimer();
    fWait.Begin();
}

void QtEventLoop::TakeTurn()
{
    RunDue();
    UpdateQueue::Flush();
    ArmTimer();
}

void QtEventLoop::ArmTimer()
{
    const bigtime_t deadline = Deadline();
    if (deadline == fArmedFor)
        return;
    fArmedFor = deadline;
    if (deadline == B_INFINITE_TIMEOUT) {
        fTimer.stop();
        return;
    }
    // Rounded up: a timer that ends too early would only be set again.
    constexpr bigtime_t kLongest = 3600000;
    const bigtime_t wait = (std::max<bigtime_t>(0, deadline - system_time()) + 999) / 1000;
    fTimer.start(static_cast<int>(std::min(wait, kLongest)));
}

KitsApplication::KitsApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    setQuitOnLastWindowClosed(false);
}

bool KitsApplication::notify(QObject* receiver, QEvent* event)
{
    // A lock taken here on another thread would never be released, and everything below belongs to the main thread.
    if (!IsMainThread()) {
        EventLoop::NoteEventElsewhere();
        return QApplication::notify(receiver, event);
    }
    if (fLoop == nullptr)
        return QApplication::notify(receiver, event);
    fLoop->Held();
    EventLoop::NoteEvent();
    const EventScope inside;
    if (event->spontaneous() || receiver->isWindowType())
        Pointer::Watch(receiver, event);
    if (receiver->isWindowType() ? ForeignDrag::Deliver(*static_cast<QWindow*>(receiver), *event)
                                 : TextPaste::Handle(*receiver, *event))
        return true;
    return QApplication::notify(receiver, event);
}

bool KitsApplication::event(QEvent* event)
{
    Theme::Watch(event->type());
    // The session ends, or someone asks the process to quit: it quits as by its menu.
    if (event->type() == QEvent::Quit && be_app != nullptr) {
        be_app->PostMessage(B_QUIT_REQUESTED);
        return true;
    }
    return QApplication::event(event);
}

} // namespace kits
