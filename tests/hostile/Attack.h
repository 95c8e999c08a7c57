// SPDX-License-Identifier: MIT
#pragma once

#include "tests/hostile/Door.h"

#include <functional>

/// Each of these attacks the application behind a door in a way that no program should, until Attacker::IsOver. It
/// repeats at once whatever the other side refuses or closes.

/// Sends pings as fast as the application takes them, and reads the answers.
void FloodWithPings(Attacker& attacker);
/// Takes one name after the other, each with a socket of its own, and asks for answers to all of them. As many stay
/// open as the system allows.
void ClaimNames(Attacker& attacker);
/// Asks for answers under this many names and never reads one.
void NeverRead(Attacker& attacker, int names);
/// Sends the first half of a message of this size on each of 154 connections, and then nothing more.
void SendHalves(Attacker& attacker, size_t size);
/// Opens 600 connections and sends nothing on them.
void KeepSilent(Attacker& attacker);
