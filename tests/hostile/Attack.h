// SPDX-License-Identifier: MIT
#pragma once

#include "tests/hostile/Door.h"

#include <functional>

/// Each of these does to the application behind a door what no program should, until Attacker::IsOver. What the other
/// side refuses or closes is begun again at once: that is what it has to stand.

/// Sends pings as fast as they are taken, and reads the answers.
void FloodWithPings(Attacker& attacker);
/// Gives itself one name after the other, each with a socket of its own, and asks for answers to all of them. As many
/// stay open as the system allows.
void ClaimNames(Attacker& attacker);
/// Asks for answers under so many names and never takes one.
void NeverRead(Attacker& attacker, int names);
/// Sends the first half of a message of so many bytes on each of 154 connections, and leaves it at that.
void SendHalves(Attacker& attacker, size_t size);
/// Opens 600 connections and says nothing on any.
void KeepSilent(Attacker& attacker);
