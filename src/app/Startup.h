// SPDX-License-Identifier: MIT
#pragma once

class Preferences;

/// What is done with the user's store before the application runs. Main thread.

/// Whether a store was left by another version of the program, older or newer. One without "Version" was not.
bool IsOfAnotherVersion(const Preferences& store);

/// Asks what to do with a user's store of another version, in an alert: load it all the same, empty it (so that it
/// takes the defaults; the file of the old one is kept under its version when the store is written), or quit. Asks
/// nothing when the version is this one's.
/// @return false to quit: nothing is to be written then
bool AskAboutVersion(Preferences* store);

/// Fills an empty store: from the program's resource "Defaults", fitted to this machine, or where there is none from
/// the file "defaults" in the working directory. Without either it stays empty.
void LoadDefaults(Preferences* store);
