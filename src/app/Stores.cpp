#include "src/app/Stores.h"

#include <cstdio>
#include <string>

#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "src/support/Qel.h"

namespace {

void KeepBootMoment(bool mayWrite)
{
    BPath path;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, mayWrite) == B_OK) {
        const std::string leaf = BPath(signature).Leaf();
        path.Append((leaf + ".boot").c_str());
        // Where it cannot be kept, what was measured holds for this run.
        kits::SetBootMomentFile(path.Path(), mayWrite);
    }
}

void Save(Preferences& store, const char* what)
{
    if (const status_t status = store.Sync(); status != B_OK) {
        std::fprintf(stderr, "qel: the %s could not be saved: %s\n", what, kits::StatusText(status));
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
}

Stores::~Stores()
{
    prefs_common = nullptr;
    prefs_user = nullptr;
}

void Stores::Save()
{
    fUser->SetString("Version", kVersion);
    ::Save(*fCommon, "uptimes");
    ::Save(*fUser, "settings");
}
