// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/MainThread.h"

#include <string>

namespace kits {

/// Marks that an event is handed to the program: counts it, and delays destructions until this is over. Main thread.
class DispatchScope {
public:
    DispatchScope();
    ~DispatchScope();
    DispatchScope(const DispatchScope&) = delete;
    DispatchScope& operator=(const DispatchScope&) = delete;
};

/// Runs the actions of RunAtOutermostLoop if this is the outermost loop; else cancels the nested loops if there are
/// actions.
void RunOutermostActions();
/// Runs the actions of RunOnMainThread that wait now.
void RunMainThreadActions();
/// True if actions wait that could run now.
bool HasActionsToRun();
/// Runs the waiting actions, but none that these add. For the end of the application.
void RunLeftOverActions();

/// Waits until EventLoop::WakeDescriptor() can be read or the moment (of system_time) is reached. Releases the
/// interface lock meanwhile, and holds it as deep as before afterwards.
void WaitForWork(bigtime_t until);

/// Does the work of EventLoop::RunDue, but ends before the next message once `stop` returns true; null never does.
void TakeTurn(const std::function<bool()>& stop);

/// Until InstallQuitSignals(), a SIGTERM, SIGINT or SIGHUP that ends this process first renames a file. This removes
/// the team from the folder, so that other teams see it quit and not die. Signals that the process was started to
/// ignore stay ignored.
/// @param folder  a descriptor of the folder; must stay open as long as the file has this name
/// @param name    the name of the file, now or soon; up to kLongestNameToLeave characters
/// @param left    its name afterwards; the same
inline constexpr size_t kLongestNameToLeave = 127;
void LeaveAtQuitSignal(int folder, const std::string& name, const std::string& left);
/// From now on notes SIGTERM, SIGINT and SIGHUP for TakeQuitSignal. Signals that the process was started to ignore stay
/// ignored.
void InstallQuitSignals();
/// Blocks these signals in all other existing threads. Another thread could be interrupted before it has noted one, and
/// meanwhile this one would tell a second start that it keeps running.
void KeepQuitSignals();
/// True if one of them has come since the last call.
bool TakeQuitSignal();
/// True if TakeQuitSignal() would be.
bool IsQuitSignalWaiting();

} // namespace kits
