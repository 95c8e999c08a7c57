// SPDX-License-Identifier: MIT
#include "kits/storage/FindDirectory.h"

#include "kits/storage/Path.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

/// Returns the folder that a variable names; unset if it names none.
BPath FromEnvironment(const char* variable, const char* leaf = nullptr)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && value[0] == '/' ? BPath(value, leaf) : BPath();
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

/// Checks that a folder is real, belongs to the user and is closed to others.
status_t CheckClosed(const char* path)
{
    struct stat info;
    if (lstat(path, &info) != 0)
        return kits::StatusFromErrno(errno);
    const bool closed = S_ISDIR(info.st_mode) && info.st_uid == geteuid() && (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return closed ? B_OK : B_NOT_ALLOWED;
}

status_t FindSettings(BPath* path, bool createIt)
{
    *path = FromEnvironment("XDG_CONFIG_HOME");
    // A program must not create a missing home: nobody lives there.
    const BPath home = FromEnvironment("HOME");
    if (path->InitCheck() != B_OK && home.InitCheck() == B_OK && IsFolder(home.Path()))
        path->SetTo(home.Path(), ".config");
    if (path->InitCheck() != B_OK)
        return B_ENTRY_NOT_FOUND;
    if (createIt)
        return MakeAll(*path);
    return IsFolder(path->Path()) ? B_OK : B_ENTRY_NOT_FOUND;
}

status_t FindRuntime(BPath* path, bool createIt)
{
    *path = FromEnvironment("XDG_RUNTIME_DIR");
    if (path->InitCheck() == B_OK && CheckClosed(path->Path()) == B_OK)
        return B_OK;
    path->SetTo(("/tmp/kits-" + std::to_string(geteuid())).c_str());
    if (createIt) {
        if (const status_t status = kits::MakeFolder(path->Path()); status != B_OK && status != B_FILE_EXISTS)
            return status;
    }
    return CheckClosed(path->Path());
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt)
{
    if (path == nullptr)
        return B_BAD_VALUE;
    status_t status = B_BAD_VALUE;
    if (which == B_COMMON_SETTINGS_DIRECTORY)
        status = FindSettings(path, createIt);
    else if (which == B_USER_RUNTIME_DIRECTORY)
        status = FindRuntime(path, createIt);
    const bool couldNotBeMade = which == B_COMMON_SETTINGS_DIRECTORY && createIt;
    if (status != B_OK && !couldNotBeMade)
        path->Unset();
    return status;
}
