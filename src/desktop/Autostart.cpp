// SPDX-License-Identifier: MIT
#include "src/desktop/Autostart.h"

#include "kits/kernel/Bounds.h"
#include "kits/storage/Directory.h"
#include "kits/storage/Entry.h"
#include "kits/storage/File.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "kits/storage/ReadSmallFile.h"
#include "src/support/Qel.h"

namespace {

constexpr const char* kFolder = "autostart";

/// Escapes a value of an entry: a backslash begins an escape.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        if (c == '\\')
            escaped += "\\\\";
        else if (c == '\n')
            escaped += "\\n";
        else
            escaped += c;
    return escaped;
}

/// Makes one word of a command line: in quotes, in which some characters are escaped, and a percent sign is doubled.
std::string Quoted(const std::string& word)
{
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '`' || c == '$' || c == '\\')
            quoted += '\\';
        if (c == '%')
            quoted += '%';
        quoted += c;
    }
    return quoted + "\"";
}

std::string ExecLine(const std::string& program)
{
    return "Exec=" + Escaped(Quoted(program)) + "\n";
}

status_t OpenFolder(bool createIt, BDirectory* folder)
{
    BPath path;
    status_t status = find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, createIt);
    if (status != B_OK)
        return status;
    const BDirectory settings(path.Path());
    path.Append(kFolder);
    status = folder->SetTo(path.Path());
    return status == B_OK || !createIt ? status
                                       : BDirectory(settings.PathName().c_str()).CreateDirectory(kFolder, folder);
}

/// @param entry  any file with its name is removed first: a killed program may have left it
status_t WriteNew(BEntry* entry, const std::string& text)
{
    entry->Remove();
    BFile file(entry, B_READ_WRITE | B_CREATE_FILE | B_FAIL_IF_EXISTS);
    status_t status = file.InitCheck();
    if (status == B_OK) {
        const ssize_t written = file.Write(text.data(), text.size());
        status = written < 0 ? static_cast<status_t>(written) : file.Sync();
    }
    return status;
}

} // namespace

std::string Autostart::EntryFor(const std::string& program)
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Qel charts on the desktop\n"
           "Comment=Shows the charts that were dragged onto the desktop\n" +
           ExecLine(program) + "TryExec=" + Escaped(program) + "\nIcon=" + kDesktopEntry +
           "\n"
           "NoDisplay=true\n"
           "X-GNOME-Autostart-enabled=true\n";
}

std::string Autostart::Place()
{
    BPath path;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &path) != B_OK)
        return "";
    path.Append(kFolder);
    path.Append(kFile);
    return path.Path();
}

status_t Autostart::Enable(const std::string& program)
{
    BDirectory folder;
    status_t status = OpenFolder(true, &folder);
    if (status != B_OK)
        return status;
    const BEntry before(&folder, kFile);
    const std::string text = kits::ReadSmallFile(Place(), kits::bounds::kMostAutostart).value_or("");
    if (("\n" + text).find("\n" + ExecLine(program)) != std::string::npos)
        return B_OK;
    if (before.IsSymLink())
        return B_NOT_ALLOWED;
    const std::string newName = std::string(kFile) + ".new";
    BEntry entry(&folder, newName.c_str());
    status = WriteNew(&entry, EntryFor(program));
    if (status == B_OK)
        status = entry.Rename(kFile, true);
    else
        entry.Remove();
    return status == B_OK ? folder.Sync() : status;
}

status_t Autostart::Disable()
{
    BDirectory folder;
    if (OpenFolder(false, &folder) != B_OK)
        return B_OK;
    BEntry entry(&folder, kFile);
    if (entry.IsSymLink())
        return B_NOT_ALLOWED;
    const status_t status = entry.Remove();
    if (status == B_ENTRY_NOT_FOUND)
        return B_OK;
    return status == B_OK ? folder.Sync() : status;
}
