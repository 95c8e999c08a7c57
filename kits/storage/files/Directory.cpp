// SPDX-License-Identifier: MIT
#include "kits/storage/Directory.h"

#include "kits/storage/Entry.h"
#include "kits/storage/Path.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>

BDirectory::BDirectory(const char* path)
{
    SetTo(path);
}

status_t BDirectory::SetTo(const char* path)
{
    // The path may be this folder's own.
    const BPath whole(path);
    Unset();
    if (whole.InitCheck() != B_OK)
        return fStatus = whole.InitCheck();
    fStatus = kits::OpenFile(whole.Path(), O_RDONLY | O_DIRECTORY, &fFile);
    if (fStatus == B_OK)
        fPath = whole.Path();
    return fStatus;
}

void BDirectory::Unset()
{
    fFile.Close();
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BDirectory::CreateDirectory(const char* name, BDirectory* directory)
{
    const BEntry entry(this, name);
    BPath path;
    status_t status = entry.GetPath(&path);
    if (status == B_OK)
        status = kits::MakeFolder(path.Path());
    if (status == B_OK && directory != nullptr)
        status = directory->SetTo(path.Path());
    return status;
}

status_t BDirectory::Sync()
{
    return fStatus == B_OK ? kits::SyncFolder(fFile.Get()) : fStatus;
}
