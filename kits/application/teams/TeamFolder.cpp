// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamFolder.h"

#include "kits/kernel/Bounds.h"
#include "kits/kernel/Errors.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace kits {

namespace {

constexpr std::string_view kSignatureStart = "application/";
constexpr size_t kLongestSignature = 64; // so that the whole path fits a socket's address
constexpr size_t kCountDigits = 16;
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Returns why a folder is not safe, as the end of a sentence; null if it is safe.
const char* FaultOf(const struct stat& info)
{
    if (S_ISLNK(info.st_mode))
        return "is a link";
    if (!S_ISDIR(info.st_mode))
        return "is not a folder";
    if (info.st_uid != geteuid())
        return "belongs to another user";
    return (info.st_mode & 077) != 0 ? "is open to other users" : nullptr;
}

bool BelongsToTheUserAlone(int descriptor)
{
    struct stat info;
    return fstat(descriptor, &info) == 0 && FaultOf(info) == nullptr;
}

std::string Because(const char* text, status_t status)
{
    return std::string(text) + " (" + StatusText(status) + ")";
}

/// Opens the folder; makes it if it does not exist.
/// @param fault  receives the reason for a failure, as the end of a sentence
status_t OpenSafely(int parent, const std::string& name, FileDescriptor* result, std::string* fault)
{
    if (mkdirat(parent, name.c_str(), 0700) != 0 && errno != EEXIST) {
        const status_t status = StatusFromErrno(errno);
        *fault = Because("cannot be made", status);
        return status;
    }
    // Checked by name first, because a link, or the folder of another user, cannot be opened.
    struct stat info;
    if (fstatat(parent, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && FaultOf(info) != nullptr) {
        *fault = FaultOf(info);
        return B_PERMISSION_DENIED;
    }
    FileDescriptor folder(openat(parent, name.c_str(), kOpenFolder));
    if (!folder.IsOpen() || !BelongsToTheUserAlone(folder.Get())) {
        const status_t status =
            folder.IsOpen() || errno == ELOOP || errno == ENOTDIR ? B_PERMISSION_DENIED : StatusFromErrno(errno);
        *fault = Because("cannot be opened", status);
        return status;
    }
    *result = std::move(folder);
    return B_OK;
}

bool IsNameOfSignature(std::string_view text)
{
    return !text.empty() && text.size() <= kLongestSignature &&
           std::all_of(
               text.begin(), text.end(),
               [](char c) {
                   return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
                          std::string_view(".-_+").find(c) != std::string::npos;
               });
}

} // namespace

status_t TeamFolder::Open(std::string* obstacle)
{
    std::string fault;
    const char* runtime = getenv("XDG_RUNTIME_DIR");
    const FileDescriptor parent(runtime != nullptr && runtime[0] == '/' ? open(runtime, kOpenFolder) : -1);
    status_t status;
    if (parent.IsOpen() && BelongsToTheUserAlone(parent.Get())) {
        fPath = std::string(runtime) + "/kits";
        status = OpenSafely(parent.Get(), "kits", &fDescriptor, &fault);
    } else {
        fPath = "/tmp/kits-" + std::to_string(geteuid());
        status = OpenSafely(AT_FDCWD, fPath, &fDescriptor, &fault);
    }
    if (status != B_OK && obstacle != nullptr)
        *obstacle = fPath + " " + fault;
    return status;
}

std::string TeamFolder::PathOf(const std::string& name) const
{
    return "/proc/self/fd/" + std::to_string(Descriptor()) + "/" + name;
}

std::vector<std::string> TeamFolder::Names() const
{
    std::vector<std::string> names;
    DIR* folder = opendir(PathOf(".").c_str());
    if (folder == nullptr)
        return names;
    const dirent* entry;
    for (size_t count = 0; count < bounds::kMostNamesOfTeams && (entry = readdir(folder)) != nullptr; ++count)
        names.emplace_back(entry->d_name);
    closedir(folder);
    return names;
}

std::vector<TeamFolder::Entry> TeamFolder::List() const
{
    std::vector<Entry> entries;
    for (const std::string& name : Names()) {
        Entry entry;
        if (entries.size() >= bounds::kMostTeams || !ParseName(name, &entry))
            continue;
        if (IsTeamAlive(entry.team))
            entries.push_back(entry);
        else
            unlinkat(Descriptor(), name.c_str(), 0);
    }
    return entries;
}

std::vector<TeamFolder::Entry> TeamFolder::Find(const std::string& signature) const
{
    std::vector<Entry> entries = List();
    std::erase_if(
        entries, [&signature](const Entry& entry) { return entry.signature != signature; });
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return (a.team & 0xFFFFFFFF) != (b.team & 0xFFFFFFFF) ? (a.team & 0xFFFFFFFF) < (b.team & 0xFFFFFFFF)
                                                              : a.team < b.team;
    });
    return entries;
}

std::string TeamFolder::NameOf(team_address team) const
{
    for (const std::string& name : Names()) {
        Entry entry;
        if (ParseName(name, &entry) && entry.team == team)
            return name;
    }
    return {};
}

std::string TeamFolder::MakeName(const Entry& entry)
{
    char digits[kCountDigits + 1];
    snprintf(digits, sizeof(digits), "%016llx", static_cast<unsigned long long>(entry.team));
    const std::string name = entry.signature.empty() ? std::string() : entry.signature.substr(kSignatureStart.size());
    return name + "@" + digits;
}

bool TeamFolder::ParseName(const std::string& name, Entry* entry)
{
    const size_t place = name.find('@');
    if (place == std::string::npos || name.size() != place + 1 + kCountDigits ||
        name.find_first_not_of("0123456789abcdef", place + 1) != std::string::npos ||
        (place > 0 && !IsNameOfSignature(std::string_view(name).substr(0, place))))
        return false;
    entry->signature = place > 0 ? std::string(kSignatureStart) + name.substr(0, place) : std::string();
    entry->team = std::strtoull(name.c_str() + place + 1, nullptr, 16);
    return true;
}

bool TeamFolder::IsSignature(const std::string& signature)
{
    return signature.starts_with(kSignatureStart) &&
           IsNameOfSignature(std::string_view(signature).substr(kSignatureStart.size()));
}

} // namespace kits
