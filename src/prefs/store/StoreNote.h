// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"

#include <string>

/// Records that the file of a store, or its backup, could not be read, and what was done with it. A plain value.
struct StoreNote {
    std::string folder;       ///< absolute path of its folder; empty if there is none
    std::string file;         ///< its name there
    status_t reason = B_OK;   ///< why it could not be read
    std::string kept;         ///< its name now; empty if it has kept its own
    status_t notKept = B_OK;  ///< why it could not be renamed; B_OK also if nobody tried
    bool isBackup = false;    ///< it stood in place of the backup, and the store itself is unharmed
    bool usedBackup = false;  ///< the backup was loaded instead
    bool wasReplaced = false; ///< the store was saved in its place
};

/// Returns a short English text, as a reason in a sentence about a settings file; StatusText(), except where such a
/// file allows a better text. Tr() translates it. Never null; valid for good.
const char* StoreReason(status_t status);

/// Returns one line for stderr, in English, without its end.
std::string LineOf(const StoreNote& note);

/// Returns the text for an alert, in the user's language.
std::string AlertTextOf(const StoreNote& note);

/// Returns where a file lies, in the user's language: two lines of an alert.
std::string PlaceText(const std::string& folder, const std::string& file);
