// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"

#include <vector>

void NeverRead(Attacker& attacker, int names)
{
    const Door& door = attacker.TheDoor();
    struct Ear {
        kits::team_address name;
        kits::FileDescriptor listener;
        kits::FileDescriptor connection;
    };
    std::vector<Ear> ears;
    for (int i = 0; i < names; ++i)
        ears.push_back({Door::Name(static_cast<unsigned>(i)), kits::FileDescriptor(), kits::FileDescriptor()});
    while (!attacker.IsOver()) {
        for (Ear& ear : ears) {
            // The application may have taken the name of a dead process out of the folder.
            if (!ear.connection.IsOpen()) {
                ear.listener = door.Listen(ear.name);
                ear.connection = door.Connect();
                if (!Door::SendAll(ear.connection, kits::HelloFrame(ear.name)))
                    ear.connection.Close();
            }
            std::string questions;
            for (kits::token_t token = 1; token <= 500; ++token)
                questions += Question(ear.name, token);
            if (ear.connection.IsOpen() && Door::SendAll(ear.connection, questions) && Door::Read(ear.connection))
                attacker.Count("times 500 questions");
            else
                ear.connection.Close();
        }
    }
    for (const Ear& ear : ears)
        door.Leave(ear.name);
}
