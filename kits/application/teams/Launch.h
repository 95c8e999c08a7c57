// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <memory>
#include <string>

class BMessage;

namespace kits {

/// One start of an application at a time: held by who starts it until it can be found, or by the application itself
/// from before it looks for another one until it can be found. A lock on a file of the folder; ends with the process.
class LaunchLock {
public:
    /// Why there is no lock to be taken for a signature, for a user: "FILE cannot be opened (Permission denied)". Empty
    /// if there is one, whoever has it.
    static std::string ObstacleTo(const TeamFolder& folder, const std::string& signature);

    /// Waits for it as long as that may take. A wait: the thread can be killed in it.
    /// @return `B_TIMED_OUT`, or what the system said
    status_t Take(const TeamFolder& folder, const std::string& signature, bigtime_t timeout);

private:
    FileDescriptor fFile;
};

/// The program of a signature: "application/x-vnd.MAKER-NAME" is run by "name", which lies beside this executable or,
/// if it does not, in $PATH. Empty if the signature has no such form.
std::string ProgramOfSignature(const std::string& signature);

/// Starts a program with a message for its application object.
/// @param message  null for none
/// @param alive    readable, at its end, when the program has ended or can be found
status_t StartProgram(const std::string& program, const BMessage* message, FileDescriptor* alive);

/// What StartProgram has given to this process, for its application object. Taken once; no other program's to be had.
struct LaunchGrant {
    std::unique_ptr<BMessage> message; ///< null for none
    FileDescriptor alive;              ///< to be closed when this application can be found
    bool isLaunched = false;           ///< who started it holds its lock
};
LaunchGrant TakeLaunchGrant();

} // namespace kits
