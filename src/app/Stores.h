// SPDX-License-Identifier: MIT
#pragma once

#include "src/prefs/store/Preferences.h"

#include <memory>
#include <string>
#include <vector>

/// The two stores of the program for the life of the object: sets `prefs_common` and `prefs_user`, and keeps the moment
/// of boot beside the common one. Main thread; needs an application object.
class Stores {
public:
    enum class Mode {
        kSession,  ///< read from the files, written back with `Save()`
        kReadOnly, ///< never writes anything; reports on stderr what cannot be read
    };

    explicit Stores(Mode mode);
    /// Writes nothing.
    ~Stores();

    Stores(const Stores&) = delete;
    Stores& operator=(const Stores&) = delete;

    /// Stamps the user's store with this version and writes the common store, then the user's. Reports a failure on
    /// stderr (SaveAtEnd); then the old files are still there. Also reports a moment of boot that could not be stored,
    /// if nothing else failed.
    /// @return B_OK if everything is on the disk
    status_t Save();

    /// Both, the common one first.
    std::vector<Preferences*> All() const { return {fCommon.get(), fUser.get()}; }

private:
    std::unique_ptr<Preferences> fCommon;
    std::unique_ptr<Preferences> fUser;
    std::string fBootMomentError; ///< a line for stderr; empty for none
};
