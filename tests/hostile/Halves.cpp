// SPDX-License-Identifier: MIT
#include "tests/hostile/Attack.h"

#include <cstring>
#include <vector>

void SendHalves(Attacker& attacker, size_t size)
{
    struct Half {
        kits::team_address name;
        kits::FileDescriptor connection;
        std::string_view left;
    };
    // The length of everything that follows, and half of that.
    const auto length = static_cast<uint32>(size);
    std::string frame(sizeof(length) + size / 2, '\2');
    std::memcpy(frame.data(), &length, sizeof(length));

    std::vector<Half> halves(154);
    for (size_t i = 0; i < halves.size(); ++i)
        halves[i].name = Door::Name(static_cast<unsigned>(i));
    while (!attacker.IsOver()) {
        bool isSending = false;
        for (Half& half : halves) {
            if (!half.connection.IsOpen()) {
                half.connection = attacker.TheDoor().Connect();
                if (!Door::SendAll(half.connection, kits::HelloFrame(half.name)))
                    half.connection.Close();
                half.left = frame;
                continue;
            }
            const size_t before = half.left.size();
            if (!Door::Read(half.connection) || (before > 0 && !Door::Send(half.connection, &half.left))) {
                half.connection.Close();
            } else if (before > 0) {
                isSending = isSending || half.left.size() < before;
                if (half.left.empty())
                    attacker.Count("halves");
            }
        }
        if (!isSending) {
            attacker.Count("halves and pauses");
            Door::Wait(kits::FileDescriptor(), false);
        }
    }
}
