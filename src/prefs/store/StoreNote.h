// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"

#include <string>

/// That the file of a store, or its backup, could not be read, and what became of it. A plain value.
struct StoreNote {
    std::string folder;       ///< absolute path of the folder that it lies in; empty when there is none
    std::string file;         ///< its name there
    status_t reason = B_OK;   ///< why it could not be read
    std::string kept;         ///< the name that it has now; empty when it has its own
    status_t notKept = B_OK;  ///< why it could not be renamed; B_OK too when nobody tried
    bool isBackup = false;    ///< it stood in the place of the backup, and the store itself is none the worse for it
    bool usedBackup = false;  ///< the backup was loaded instead
    bool wasReplaced = false; ///< the store has been saved in its place
};

/// A short English text, as a reason in a sentence about a file of settings; StatusText() but for what can be said
/// better of such a file. Its translation is Tr() of it. Never null; valid for good.
const char* StoreReason(status_t status);

/// One line for stderr, in English, without its end.
std::string LineOf(const StoreNote& note);

/// The same for an alert, in the user's language.
std::string AlertTextOf(const StoreNote& note);

/// Where a file lies, in the user's language, two lines of an alert.
std::string PlaceText(const std::string& folder, const std::string& file);
