// SPDX-License-Identifier: MIT
#include "src/app/Startup.h"

#include "kits/application/Application.h"
#include "kits/interface/Alert.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/storage/File.h"
#include "kits/storage/Resources.h"
#include "kits/support/TypeConstants.h"
#include "src/app/Defaults.h"
#include "src/prefs/store/Preferences.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"

#include <string>

namespace {

constexpr const char* kQuestion = TrLater(
    "Qel:\n\nThe version of the saved preferences is older then the executable ! You may try to load it or use the "
    "defaults (but then the old settings will be overwritten at exit !)\n(Loading the old prefs should not cause any "
    "harm, but if you get empty charts or similar I recommend loading the defaults !)\nFOR VERSION 0.3.0: Use the "
    "defaults, the prefs format changed !!! Or read the readme for info on how to migrate your settings...");

} // namespace

bool IsOfAnotherVersion(const Preferences& store)
{
    return kVersionField.IsIn(store) && kVersionField.Get(store) != kVersion;
}

bool AskAboutVersion(Preferences* store)
{
    store->Claim(kVersionField);
    if (!IsOfAnotherVersion(*store))
        return true;
    const std::string version = kVersionField.Get(*store);
    // The alert deletes itself.
    auto* alert = new BAlert("Qel", Tr(kQuestion), Tr("Quit"), Tr("Use defaults"), Tr("Load"), B_WIDTH_FROM_LABEL,
                             B_OFFSET_SPACING, B_STOP_ALERT);
    switch (alert->Go()) {
    case 1:
        store->KeepOld(version.c_str());
        store->MakeEmpty();
        return true;
    case 2:
        return true;
    default:
        return false;
    }
}

void LoadDefaults(Preferences* store)
{
    if (store->CountNames(B_ANY_TYPE) != 0)
        return;
    size_t size = 0;
    const void* resource = BApplication::AppResources()->LoadResource(B_ANY_TYPE, "Defaults", &size);
    if (resource != nullptr) {
        store->Unflatten(static_cast<const char*>(resource), static_cast<ssize_t>(size));
        system_info info;
        if (get_system_info(&info) == B_OK)
            AdaptDefaultsToMachine(store, info.cpu_count);
        return;
    }
    BFile file("defaults", B_READ_ONLY);
    if (file.InitCheck() == B_OK)
        store->LoadFrom(&file);
}
