// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/MainThread.h"

#include <string>

namespace kits {

/// Something may have changed, see EventLoop::CountChanges. Any thread.
void NoteChange();

/// Something is handled that counts as a change when it is over, unless EventLoop::NoteUnchanged was called in it. Main
/// thread.
class ChangeScope {
public:
    ChangeScope();
    ~ChangeScope();
    ChangeScope(const ChangeScope&) = delete;
    ChangeScope& operator=(const ChangeScope&) = delete;

    bool IsInsideACounted() const;

private:
    friend class EventLoop;

    ChangeScope* const fOuter;
    bool fCounts = true;
};

/// Something is handed to the program: counts the event, and keeps what is destroyed meanwhile until this is over.
/// Main thread.
class DispatchScope {
public:
    DispatchScope();
    ~DispatchScope();
    DispatchScope(const DispatchScope&) = delete;
    DispatchScope& operator=(const DispatchScope&) = delete;

private:
    ChangeScope fChange;
};

/// Runs the actions of RunAtOutermostLoop if this is the outermost loop; else, if there are any, tells the nested loops
/// to end.
void RunOutermostActions();
/// Runs the actions of RunOnMainThread that are there now.
void RunMainThreadActions();
/// Whether actions wait that could be run now.
bool HasActionsToRun();
/// Runs the actions that are there now, and none that these cause in turn. For the end of the application.
void RunLeftOverActions();

/// Waits until EventLoop::WakeDescriptor() can be read or the moment (of system_time) has come, with the interface lock
/// given up meanwhile and as deep as before afterwards.
void WaitForWork(bigtime_t until);

/// EventLoop::RunDue, which ends before the next message when `stop` says so; null never does.
void TakeTurn(const std::function<bool()>& stop);

/// Until InstallQuitSignals(), a SIGTERM, SIGINT or SIGHUP that ends this process gives a file another name before.
/// That takes the team out of the folder, so that others see it end in order and not die. Those that the process was
/// started to ignore stay ignored.
/// @param folder  a descriptor of the folder; has to stay open as long as the file has this name
/// @param name    what the file is called, now or soon; up to kLongestNameToLeave characters
/// @param left    what it is called afterwards; the same
inline constexpr size_t kLongestNameToLeave = 127;
void LeaveAtQuitSignal(int folder, const std::string& name, const std::string& left);
/// Has SIGTERM, SIGINT and SIGHUP noted from now on, for good. Those that the process was started to ignore stay
/// ignored.
void InstallQuitSignals();
/// Has them come to this thread alone, and to none of those that the toolkit has made until now. Another thread that
/// takes one may be held up before it has noted it, and meanwhile this one would tell a second start that it goes on.
void KeepQuitSignals();
/// Whether one of them came since the last call.
bool TakeQuitSignal();
/// Whether TakeQuitSignal() would be true.
bool IsQuitSignalWaiting();

} // namespace kits
