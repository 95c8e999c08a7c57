// SPDX-License-Identifier: MIT
#include "kits/storage/FindDirectory.h"

#include "kits/storage/Path.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <sys/stat.h>

#include <cstdlib>
#include <cstring>

namespace {

/// Returns the folder that a variable names; unset if it names none.
BPath FromEnvironment(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && value[0] == '/' ? BPath(value) : BPath();
}

bool IsFolder(const char* path)
{
    struct stat info;
    return stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

/// Creates the folder and its parents.
status_t MakeAll(const BPath& path)
{
    if (std::strlen(path.Path()) >= B_PATH_NAME_LENGTH)
        return B_NAME_TOO_LONG;
    if (IsFolder(path.Path()))
        return B_OK;
    BPath parent;
    status_t status = path.GetParent(&parent);
    if (status == B_OK)
        status = MakeAll(parent);
    if (status == B_OK)
        status = kits::MakeFolder(path.Path());
    // Another process may have created it meanwhile.
    return status == B_FILE_EXISTS && IsFolder(path.Path()) ? B_OK : status;
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt)
{
    if (path == nullptr)
        return B_BAD_VALUE;
    path->Unset();
    if (which != B_COMMON_SETTINGS_DIRECTORY)
        return B_BAD_VALUE;
    BPath settings = FromEnvironment("XDG_CONFIG_HOME");
    // A program must not create a missing home: nobody lives there.
    const BPath home = FromEnvironment("HOME");
    if (settings.InitCheck() != B_OK && home.InitCheck() == B_OK && IsFolder(home.Path()))
        settings.SetTo(home.Path(), ".config");
    if (settings.InitCheck() != B_OK || (!createIt && !IsFolder(settings.Path())))
        return B_ENTRY_NOT_FOUND;
    *path = settings;
    return createIt ? MakeAll(settings) : B_OK;
}
