// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopKept.h"

#include "kits/storage/Directory.h"
#include "kits/storage/Entry.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"

namespace kits {

namespace {

constexpr const char* kName = "kits-desktop.kept";

std::string Folder(bool create)
{
    BPath path;
    return find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, create) == B_OK ? path.Path() : "";
}

} // namespace

bool DesktopKept::Exists()
{
    const std::string folder = Folder(false);
    return !folder.empty() && BEntry((folder + "/" + kName).c_str()).Exists();
}

bool DesktopKept::Open(bool create)
{
    fFile.Unset();
    const std::string folder = Folder(create);
    if (folder.empty())
        return false;
    fPath = folder + "/" + kName;
    if (fFile.SetTo(fPath.c_str(), create ? B_READ_WRITE | B_CREATE_FILE : B_READ_WRITE) != B_OK)
        return false;
    // Between opening and locking, the program that had it may have removed it.
    const BEntry entry(fPath.c_str());
    if (fFile.Lock() == B_OK && fFile.IsAt(&entry))
        return true;
    fFile.Unset();
    return false;
}

status_t DesktopKept::Save(const BMessage& kept)
{
    if (Folder(true).empty())
        return B_OK;
    if (!Open(true))
        return B_BUSY;
    status_t status = fFile.SetSize(0);
    if (status == B_OK)
        status = kept.Flatten(&fFile);
    if (status == B_OK)
        status = fFile.Sync();
    if (status == B_OK)
        status = BDirectory(Folder(false).c_str()).Sync();
    if (status != B_OK)
        Remove();
    return status;
}

std::optional<BMessage> DesktopKept::TakeLeft()
{
    BMessage kept;
    if (!Open(false))
        return std::nullopt;
    if (kept.Unflatten(&fFile) == B_OK)
        return kept;
    Remove();
    return std::nullopt;
}

void DesktopKept::Remove()
{
    if (fFile.InitCheck() == B_OK)
        BEntry(fPath.c_str()).Remove();
    fFile.Unset();
}

} // namespace kits
