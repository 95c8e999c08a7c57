// SPDX-License-Identifier: MIT
#pragma once

#include "src/prefs/store/Preferences.h"

#include <memory>
#include <string>
#include <vector>

/// The two stores of the program for as long as it lives: makes `prefs_common` and `prefs_user` point to them, and
/// keeps the moment of boot beside the common one. Main thread; needs an application object.
class Stores {
public:
    enum class Mode {
        kSession,  ///< as told by the files, written back with `Save()`
        kReadOnly, ///< nothing is ever written, and what cannot be read is told of on stderr
    };

    explicit Stores(Mode mode);
    /// Writes nothing.
    ~Stores();

    Stores(const Stores&) = delete;
    Stores& operator=(const Stores&) = delete;

    /// Stamps the user's store with this version and writes the common store, then the user's. A failure is said on
    /// stderr (SaveAtEnd); the old files are then still there. So is a moment of boot that could not be kept, if that
    /// was all that failed.
    /// @return B_OK when everything is on the disk
    status_t Save();

    /// Both, the common one first.
    std::vector<Preferences*> All() const { return {fCommon.get(), fUser.get()}; }

private:
    std::unique_ptr<Preferences> fCommon;
    std::unique_ptr<Preferences> fUser;
    std::string fBootMomentError; ///< a line for stderr; empty for none
};
