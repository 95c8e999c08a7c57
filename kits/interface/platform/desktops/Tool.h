// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Types.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// A program of the desktop that runs as a child of this process, in the plain locale and without input. It writes to a
/// pipe, and ends with the thread that started it, at the latest.
class Tool {
public:
    /// How a run of a tool ended.
    enum class Ending {
        kGood,   ///< by itself, with the status 0
        kFailed, ///< by itself with another status, by a signal, or stopped because it printed too much
        kGivenUp ///< stopped at the end of its time or on demand, or it could not be started
    };

    /// Starts the program.
    /// @param arguments  the first is the program: a path, or a name to look up in $PATH
    explicit Tool(const std::vector<std::string>& arguments);
    /// Ends the program.
    ~Tool();
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;

    /// Runs one to its end, for at most five seconds.
    /// @return its output; nothing if there is no such program, it failed, or it took too long
    static std::optional<std::string> Run(const std::vector<std::string>& arguments);
    /// Runs one to its end.
    /// @param longest  after this many microseconds it is stopped
    /// @param stop     a descriptor: when it becomes readable the tool is stopped at once; -1 for none
    /// @param printed  receives its output if it ended well
    static Ending Run(const std::vector<std::string>& arguments, bigtime_t longest, int stop, std::string* printed);
    /// Calls a method on the session's bus with dbus-send, which waits for up to four seconds.
    /// @param call  the destination, the object, the method and its arguments, as dbus-send expects them
    /// @return the answer; nothing if there is none
    static std::optional<std::string> CallBus(const std::vector<std::string>& call);
    /// Returns true only if the bus says that no program has the name: if the bus does not answer, one may have it.
    static bool BusLacks(const std::string& name);
    /// True if $PATH has such a program.
    static bool Exists(const std::string& program);

    /// Readable when it has printed something or has ended; -1 from then on.
    int Descriptor() const { return fOutput.Get(); }
    /// Returns its output since the last call: whole lines, without their ends. Does not wait.
    std::vector<std::string> TakeLines();

private:
    /// @return false at the end of its output
    bool ReadSome();
    /// @return false at the given moment, or when `stop` can be read
    bool WaitForOutput(bigtime_t until, int stop) const;
    /// Waits until it is gone.
    /// @return true if it ended with the status 0
    bool Bury(bool kill);

    pid_t fProcess = -1;
    FileDescriptor fOutput;
    std::string fPrinted;
};

} // namespace kits
