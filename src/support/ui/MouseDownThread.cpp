// SPDX-License-Identifier: MIT
#include "src/support/ui/MouseDownThread.h"

#include "kits/application/Looper.h"
#include "kits/interface/View.h"

MouseDownThread::MouseDownThread(BView* view, MovedFunction moved, ReleasedFunction released, bigtime_t interval)
    : ThreadPrimitive("MouseTracker", 10)
    , fInterval(interval)
    , fView(view)
    , fReleased(released)
    , fMoved(moved)
{
}

MouseDownThread::~MouseDownThread()
{
    End();
}

void MouseDownThread::TrackMouse(BView* view, MovedFunction moved, ReleasedFunction released, bigtime_t interval)
{
    auto* thread = new MouseDownThread(view, moved, released, interval);
    if (thread->Go() < 0)
        delete thread;
}

void MouseDownThread::Run()
{
    // Also runs when the thread is killed: its stack is unwound then.
    struct Ending {
        MouseDownThread* thread;
        ~Ending() { delete thread; }
    } ending{this};

    while (Look(fView, fMoved, fReleased))
        snooze(fInterval);
}

bool MouseDownThread::Look(const BMessenger& target, MovedFunction moved, ReleasedFunction released)
{
    if (!target.LockTarget())
        return false;
    BLooper* looper = nullptr;
    BView* view = dynamic_cast<BView*>(target.Target(&looper));
    struct Unlocking {
        BLooper* looper;
        ~Unlocking() { looper->Unlock(); }
    } unlocking{looper};

    BPoint where;
    uint32 buttons = 0;
    view->GetMouse(&where, &buttons, false);
    if (buttons == 0) {
        if (released != nullptr)
            released(view, where);
        return false;
    }
    return moved == nullptr || moved(view, where, buttons);
}
