// SPDX-License-Identifier: MIT
#include "src/app/Stores.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/OneLine.h"
#include "src/support/Qel.h"

#include <cstdio>

namespace {

/// If the moment of boot cannot be stored, the measured one is used in this run.
/// @return a line that says so; empty if the moment is stored or need not be
std::string KeepBootMoment(bool mayWrite)
{
    BPath path;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, mayWrite) != B_OK)
        return "";
    const std::string leaf = BPath(signature).Leaf();
    path.Append((leaf + ".boot").c_str());
    const status_t status = kits::SetBootMomentFile(path.Path(), mayWrite);
    if (!mayWrite || status == B_OK || status == B_NO_INIT)
        return "";
    return "qel: the moment of boot could not be kept in " + OneLine(path.Path()) + ": " + kits::StatusText(status);
}

} // namespace

Stores::Stores(Mode mode)
    : fCommon(std::make_unique<Preferences>(signature, true, mode == Mode::kReadOnly))
    , fUser(std::make_unique<Preferences>(signature, false, mode == Mode::kReadOnly))
{
    prefs_common = fCommon.get();
    prefs_user = fUser.get();
    fBootMomentError = KeepBootMoment(mode == Mode::kSession);
    if (mode == Mode::kReadOnly)
        PrintWhatCouldNotBeRead(All());
}

Stores::~Stores()
{
    prefs_common = nullptr;
    prefs_user = nullptr;
}

status_t Stores::Save()
{
    fUser->Set(kVersionField, kVersion);
    const status_t status = SaveAtEnd({fCommon.get(), fUser.get()}, "qel");
    // Otherwise it is one of the settings, and the line about those is enough.
    if (status == B_OK && !fBootMomentError.empty())
        std::fprintf(stderr, "%s\n", fBootMomentError.c_str());
    return status;
}
