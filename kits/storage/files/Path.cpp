// SPDX-License-Identifier: MIT
#include "kits/storage/Path.h"

#include "kits/storage/Entry.h"

#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace {

/// Removes doubled and trailing slashes and "." from an absolute path.
std::string Clean(std::string_view path)
{
    std::string clean;
    while (!path.empty()) {
        const size_t slash = path.find('/');
        const std::string_view part = path.substr(0, slash);
        if (!part.empty() && part != ".")
            clean.append("/").append(part);
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    }
    return clean.empty() ? "/" : clean;
}

} // namespace

BPath::BPath(const char* path, const char* leaf)
{
    SetTo(path, leaf);
}

BPath::BPath(const BEntry* entry)
{
    SetTo(entry);
}

status_t BPath::SetTo(const char* path, const char* leaf)
{
    // The arguments may lie in this object.
    std::string whole;
    if (path == nullptr || *path == '\0' || (leaf != nullptr && *leaf == '/')) {
        Unset();
        return fStatus = B_BAD_VALUE;
    }
    if (*path != '/') {
        char folder[B_PATH_NAME_LENGTH];
        if (getcwd(folder, sizeof folder) == nullptr) {
            Unset();
            return fStatus = kits::StatusFromErrno(errno);
        }
        whole.append(folder).append("/");
    }
    whole.append(path);
    if (leaf != nullptr)
        whole.append("/").append(leaf);
    fPath = Clean(whole);
    return fStatus = B_OK;
}

status_t BPath::SetTo(const BEntry* entry)
{
    Unset();
    return fStatus = entry != nullptr ? entry->GetPath(this) : B_BAD_VALUE;
}

void BPath::Unset()
{
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BPath::Append(const char* path)
{
    if (fStatus != B_OK)
        return fStatus;
    if (path == nullptr || *path == '\0') {
        Unset();
        return fStatus = B_BAD_VALUE;
    }
    return SetTo(fPath.c_str(), path);
}

const char* BPath::Path() const
{
    return fStatus == B_OK ? fPath.c_str() : nullptr;
}

const char* BPath::Leaf() const
{
    return fStatus == B_OK ? fPath.c_str() + fPath.rfind('/') + 1 : nullptr;
}

status_t BPath::GetParent(BPath* parent) const
{
    if (parent == nullptr)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return fStatus;
    if (fPath == "/")
        return B_ENTRY_NOT_FOUND;
    return parent->SetTo(fPath.substr(0, fPath.rfind('/') + 1).c_str());
}
