#include "src/app/Stores.h"

#include <cstdio>
#include <string>

#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/Qel.h"

namespace {

void KeepBootMoment(bool mayWrite)
{
    BPath path;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, mayWrite) == B_OK) {
        const std::string leaf = BPath(signature).Leaf();
        path.Append((leaf + ".boot").c_str());
        // Where it cannot be kept, what was measured holds for this run.
        const status_t status = kits::SetBootMomentFile(path.Path(), mayWrite);
        if (mayWrite && status != B_OK && status != B_NO_INIT) {
            std::fprintf(stderr, "qel: the moment of boot could not be kept in %s: %s\n", path.Path(),
                         kits::StatusText(status));
        }
    }
}

} // namespace

Stores::Stores(Mode mode)
    : fCommon(std::make_unique<Preferences>(signature, true, mode == Mode::kReadOnly))
    , fUser(std::make_unique<Preferences>(signature, false, mode == Mode::kReadOnly))
{
    prefs_common = fCommon.get();
    prefs_user = fUser.get();
    KeepBootMoment(mode == Mode::kSession);
    if (mode == Mode::kReadOnly) {
        PrintWhatCouldNotBeRead(All());
    }
}

Stores::~Stores()
{
    prefs_common = nullptr;
    prefs_user = nullptr;
}

status_t Stores::Save()
{
    fUser->SetString("Version", kVersion);
    const status_t status = SaveAtEnd(*fCommon, "qel");
    return FirstError(SaveAtEnd(*fUser, "qel"), status);
}
