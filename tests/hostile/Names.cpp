// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"

#include <deque>

void ClaimNames(Attacker& attacker)
{
    const Door& door = attacker.TheDoor();
    constexpr size_t kMost = 1500;
    struct Claim {
        kits::team_address name;
        kits::FileDescriptor listener;
        kits::FileDescriptor connection;
    };
    std::deque<Claim> claims;
    // One connection may ask for answers to every name, or each name may come on its own.
    kits::FileDescriptor first;
    for (unsigned number = 1; !attacker.IsOver(); ++number) {
        Claim claim{Door::Name(number), door.Listen(Door::Name(number)), kits::FileDescriptor()};
        if (!claim.listener.IsOpen() || claims.size() >= kMost) {
            if (!claims.empty()) {
                door.Leave(claims.front().name);
                claims.pop_front();
            }
            if (!claim.listener.IsOpen())
                continue;
        }
        const std::string question = Question(claim.name, number + 1);
        if (number % 2 == 0) {
            claim.connection = door.Connect();
            Door::SendAll(claim.connection, kits::HelloFrame(claim.name) + question);
        } else if (!first.IsOpen() || !Door::SendAll(first, question) || !Door::Read(first)) {
            first = door.Connect();
            Door::SendAll(first, kits::HelloFrame(Door::Name(0)) + question);
        }
        attacker.Count("names");
        claims.push_back(std::move(claim));
    }
    for (const Claim& claim : claims)
        door.Leave(claim.name);
}
