// SPDX-License-Identifier: MIT
#pragma once

/// Asks an application as every program does, fifty times a second, until stdin closes, and prints at the end how long
/// the answers took.
/// @param once  ask one question and end
/// @return 0 if all were answered
int AskHonestly(const char* signature, bool once);
