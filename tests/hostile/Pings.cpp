// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"

void FloodWithPings(Attacker& attacker)
{
    std::string pings;
    for (uint64 number = 1; number <= 4000; ++number)
        pings += kits::NumberFrame(kits::FrameKind::kPing, number);
    kits::FileDescriptor socket;
    while (!attacker.IsOver()) {
        if (!socket.IsOpen()) {
            socket = attacker.TheDoor().Connect();
            if (!Door::SendAll(socket, kits::HelloFrame(Door::Name(0))))
                socket.Close();
            Door::Wait(socket, true);
            continue;
        }
        if (Door::SendAll(socket, pings) && Door::Read(socket))
            attacker.Count("times 4000 pings");
        else
            socket.Close();
    }
}
