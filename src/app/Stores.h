#pragma once

#include <memory>

#include "src/prefs/Preferences.h"

/// The two stores of the program for as long as it lives: makes `prefs_common` and `prefs_user` point to them, and
/// keeps the moment of boot beside the common one. Main thread; needs an application object.
class Stores {
public:
    enum class Mode {
        kSession,  ///< as told by the files, written back with `Save()`
        kReadOnly, ///< nothing is ever written
    };

    explicit Stores(Mode mode);
    /// Writes nothing.
    ~Stores();

    Stores(const Stores&) = delete;
    Stores& operator=(const Stores&) = delete;

    /// Stamps the user's store with this version and writes the common store, then the user's. A failure is said on
    /// stderr, one line each; the old files are then still there.
    void Save();

private:
    std::unique_ptr<Preferences> fCommon;
    std::unique_ptr<Preferences> fUser;
};
