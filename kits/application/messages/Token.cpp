// SPDX-License-Identifier: MIT
#include "kits/application/Token.h"

#include "kits/kernel/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace kits {

namespace {

struct ProcessState {
    char state = 0;
    uint64 startTicks = 0; ///< the start time, in the system's ticks since boot
};

/// Returns the state of a process; all zero if there is no such process.
ProcessState StateOf(const std::string& process)
{
    // A stream would throw if the process ended between opening and reading.
    const FileDescriptor file(open(("/proc/" + process + "/stat").c_str(), O_RDONLY | O_CLOEXEC));
    char buffer[4096];
    const ssize_t size = file.IsOpen() ? read(file.Get(), buffer, sizeof(buffer)) : 0;
    const std::string text(buffer, size > 0 ? static_cast<size_t>(size) : 0);
    // The name, the second value, may contain blanks and brackets; the start time is the 20th value after it.
    size_t place = text.rfind(')');
    if (place == std::string::npos || place + 2 >= text.size())
        return {};
    ProcessState state;
    state.state = text[place + 2];
    for (int count = 0; count < 20 && place != std::string::npos; ++count)
        place = text.find(' ', place + 1);
    if (place == std::string::npos)
        return {};
    state.startTicks = std::strtoull(text.c_str() + place, nullptr, 10);
    return state;
}

/// The system reuses a process id only after all others, which takes longer than a tick, so id and start time together
/// identify a process for good.
team_address AddressOfProcess(uint64 process, uint64 startTicks)
{
    return process << 32 | (startTicks & 0xFFFFFFFF);
}

} // namespace

team_address ThisTeam()
{
    static const team_address sTeam = AddressOfProcess(static_cast<uint64>(getpid()), StateOf("self").startTicks);
    return sTeam;
}

team_id TeamIdOf(team_address team)
{
    return static_cast<team_id>(team >> 32);
}

team_address TeamOfProcess(team_id process)
{
    const ProcessState state = StateOf(std::to_string(process));
    return state.state != 0 ? AddressOfProcess(static_cast<uint64>(process), state.startTicks) : 0;
}

bool IsTeamAlive(team_address team)
{
    const ProcessState state = StateOf(std::to_string(team >> 32));
    // Without a file descriptor or memory for reading its state, an existing process counts as alive.
    if (state.state == 0)
        return TeamIdOf(team) > 0 && kill(TeamIdOf(team), 0) == 0;
    return state.state != 0 && state.state != 'Z' && state.state != 'X' &&
           AddressOfProcess(team >> 32, state.startTicks) == team;
}

} // namespace kits
