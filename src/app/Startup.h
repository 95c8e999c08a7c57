// SPDX-License-Identifier: MIT
#pragma once

class Preferences;

/// Work on the user's store before the application runs. Main thread.

/// Returns whether another version of the program, older or newer, has left the store. False for a store without
/// "Version".
bool IsOfAnotherVersion(const Preferences& store);

/// Asks in an alert what to do with a user's store of another version: load it anyway, empty it (so that it takes the
/// defaults; when the store is written, the old file is kept under its version), or quit. Asks nothing if the version
/// is this one's.
/// @return false to quit: then nothing must be written
bool AskAboutVersion(Preferences* store);

/// Fills an empty store from the program's resource "Defaults", fitted to this machine, or if there is none from the
/// file "defaults" in the working directory. Without either it stays empty.
void LoadDefaults(Preferences* store);
