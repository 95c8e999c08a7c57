// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"

#include <vector>

void KeepSilent(Attacker& attacker)
{
    std::vector<kits::FileDescriptor> connections(600);
    while (!attacker.IsOver()) {
        for (kits::FileDescriptor& connection : connections) {
            if (connection.IsOpen() && Door::Read(connection))
                continue;
            connection = attacker.TheDoor().Connect();
            if (connection.IsOpen())
                attacker.Count("connections");
        }
        Door::Wait(kits::FileDescriptor(), false);
    }
}
