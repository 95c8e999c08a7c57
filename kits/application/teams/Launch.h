// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <memory>
#include <string>

class BMessage;

namespace kits {

/// Allows one start of an application at a time: held by the starting process until the application can be found, or by
/// the application itself, from before it looks for another one until it can be found. A lock on a file in the folder;
/// ends with the process.
class LaunchLock {
public:
    /// Returns why no lock for a signature can be taken, worded for a user: "FILE cannot be opened (Permission
    /// denied)". Empty if it can, whoever holds it.
    static std::string ObstacleTo(const TeamFolder& folder, const std::string& signature);

    /// Waits for the lock. The thread can be killed in this wait.
    /// @return `B_TIMED_OUT`, or an error of the system
    status_t Take(const TeamFolder& folder, const std::string& signature, bigtime_t timeout);

private:
    FileDescriptor fFile;
};

/// Returns the program of a signature: "application/x-vnd.MAKER-NAME" is run by "name", beside this executable or, if
/// it is not there, in $PATH. Empty if the signature has no such form.
std::string ProgramOfSignature(const std::string& signature);

/// Starts a program with a message for its application object.
/// @param message  null for none
/// @param alive    readable, at its end, when the program has ended or can be found
status_t StartProgram(const std::string& program, const BMessage* message, FileDescriptor* alive);

/// What StartProgram has passed to this process, for its application object. It can be taken once, and only by the
/// process for which it was meant.
struct LaunchGrant {
    std::unique_ptr<BMessage> message; ///< null for none
    FileDescriptor alive;              ///< close it when this application can be found
    bool isLaunched = false;           ///< the starting process holds its lock
};
LaunchGrant TakeLaunchGrant();

} // namespace kits
