#include "kits/application/Token.h"

#include <unistd.h>

#include <fstream>
#include <string>

namespace kits {

namespace {

/// The moment at which this process was started, in the system's own ticks since boot: with the process id it names
/// the process for good, as an id is not given again before other processes were started with all the others.
uint64 StartTicks()
{
    std::ifstream file("/proc/self/stat");
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    // The name, second of the values, may hold blanks and brackets; the moment is the 20th after it.
    size_t place = text.rfind(')');
    for (int count = 0; count < 20 && place != std::string::npos; ++count)
        place = text.find(' ', place + 1);
    return place == std::string::npos ? 0 : std::strtoull(text.c_str() + place, nullptr, 10);
}

} // namespace

team_address ThisTeam()
{
    static const team_address sTeam = static_cast<team_address>(getpid()) << 32 | (StartTicks() & 0xFFFFFFFF);
    return sTeam;
}

team_id TeamIdOf(team_address team)
{
    return static_cast<team_id>(team >> 32);
}

} // namespace kits
