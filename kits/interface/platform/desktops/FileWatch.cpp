// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/FileWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>

namespace kits {

namespace {

constexpr unsigned kOfFile = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE;
constexpr unsigned kOfFolders = IN_CREATE | IN_MOVED_TO;
constexpr unsigned kEnd = IN_DELETE_SELF | IN_MOVE_SELF;

/// Returns "" for the topmost folder.
std::string FolderOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos || path == "/")
        return "";
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

FileWatch::FileWatch(const std::string& path)
    : fPath(path)
    , fNotices(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    Arm();
}

bool FileWatch::Watch(const std::string& folder, unsigned events)
{
    const int watch = inotify_add_watch(fNotices.Get(), folder.c_str(), events | kEnd | IN_ONLYDIR);
    if (watch < 0)
        return false;
    if (fWatch >= 0 && fWatch != watch)
        inotify_rm_watch(fNotices.Get(), fWatch);
    fWatch = watch;
    fWatched = folder;
    return true;
}

void FileWatch::Arm()
{
    const std::string folder = FolderOf(fPath);
    if (folder.empty())
        return;
    // A folder that is made while its parent is not watched yet causes no event. So the path is tried again from its
    // end until no more of it can be watched than before.
    for (std::string reached = "-"; reached != fWatched;) {
        reached = fWatched;
        fHasFolder = Watch(folder, kOfFile);
        for (std::string above = FolderOf(folder); !fHasFolder && !above.empty(); above = FolderOf(above))
            if (Watch(above, kOfFolders))
                break;
        if (fHasFolder)
            return;
    }
}

bool FileWatch::TakeNews()
{
    bool isOfFile = false;
    bool isLost = false;
    const std::string name = fPath.substr(fPath.rfind('/') + 1);
    alignas(inotify_event) char bytes[4096];
    for (ssize_t size; (size = read(fNotices.Get(), bytes, sizeof(bytes))) > 0;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, bytes + at, sizeof(event));
            if ((event.mask & IN_Q_OVERFLOW) != 0)
                isOfFile = true;
            if (event.wd == fWatch) {
                const char* what = bytes + at + sizeof(event);
                isOfFile |= fHasFolder && event.len > 0 && std::strcmp(what, name.c_str()) == 0;
                // A folder that was moved away belongs to somebody else now, though the watch goes with it.
                isLost |= !fHasFolder || (event.mask & (kEnd | IN_IGNORED)) != 0;
            }
            at += static_cast<ssize_t>(sizeof(event) + event.len);
        }
    }
    if (isLost) {
        const bool had = fHasFolder;
        if (had) {
            inotify_rm_watch(fNotices.Get(), fWatch);
            fWatch = -1;
            fWatched.clear();
        }
        Arm();
        isOfFile |= fHasFolder || had;
    }
    return isOfFile;
}

} // namespace kits
