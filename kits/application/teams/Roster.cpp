// SPDX-License-Identifier: MIT
#include "kits/application/Roster.h"

#include "kits/application/MainThread.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/teams/DetachedProcess.h"
#include "kits/application/teams/Launch.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/kernel/Clock.h"
#include "kits/storage/Node.h"
#include "kits/storage/Path.h"
#include "kits/support/TypeConstants.h"

#include <poll.h>

#include <cctype>
#include <cstdio>
#include <filesystem>

using kits::TeamFolder;
using kits::TeamPort;

namespace {

constexpr bigtime_t kLongestLaunch = 30000000;
constexpr bigtime_t kPauseBetweenLooks = 2000;

const BRoster sRoster;

/// Returns the text of an attribute; empty if there is none.
std::string TextAttribute(const BNode& node, const char* name)
{
    char text[1024];
    const ssize_t size = node.ReadAttr(name, B_STRING_TYPE, 0, text, sizeof(text));
    if (size <= 0)
        return {};
    const std::string whole(text, static_cast<size_t>(size));
    return whole.substr(0, whole.find('\0'));
}

/// Escapes a part of an address: reserved characters become %XX.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 ||
            std::string_view("-._~@").find(c) != std::string::npos) {
            escaped += c;
            continue;
        }
        char code[4];
        snprintf(code, sizeof(code), "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        escaped += code;
    }
    return escaped;
}

/// Extracts the address from "Name <address>" or "address".
std::string MailAddressIn(const std::string& sender)
{
    const size_t begin = sender.rfind('<');
    const size_t end = sender.find('>', begin);
    return begin == std::string::npos || end == std::string::npos ? sender : sender.substr(begin + 1, end - begin - 1);
}

/// Returns what the desktop should open for a file. Ignores addresses that the desktop could take for an option or a
/// file.
std::string WhatToOpen(const BNode& node, const char* path)
{
    const std::string url = TextAttribute(node, "META:url");
    if (!url.empty() && std::isalpha(static_cast<unsigned char>(url[0])) != 0 && url.find("://") != std::string::npos)
        return url;
    const std::string sender = TextAttribute(node, "MAIL:from");
    if (sender.empty())
        return path;
    const std::string subject = TextAttribute(node, "MAIL:subject");
    return "mailto:" + Escaped(MailAddressIn(sender)) + (subject.empty() ? "" : "?subject=" + Escaped(subject));
}

} // namespace

const BRoster* be_roster = &sRoster;

team_id BRoster::TeamFor(const char* signature) const
{
    if (signature == nullptr)
        return B_NAME_NOT_FOUND;
    const std::vector<TeamFolder::Entry> found = TeamPort::Get().Find(signature);
    return found.empty() ? B_NAME_NOT_FOUND : kits::TeamIdOf(found.front().team);
}

status_t BRoster::Launch(const entry_ref* ref) const
{
    if (ref == nullptr)
        return B_BAD_VALUE;
    const BEntry entry(ref, true);
    const BPath path(&entry);
    const BNode node(&entry);
    if (path.InitCheck() != B_OK || node.InitCheck() != B_OK)
        return B_ENTRY_NOT_FOUND;
    const status_t status = kits::StartDetached({"xdg-open", WhatToOpen(node, path.Path())});
    return status == B_OK ? B_OK : B_LAUNCH_FAILED;
}

status_t BRoster::GetRunningAppInfo(team_id team, app_info* info) const
{
    if (info == nullptr)
        return B_BAD_VALUE;
    app_info found;
    found.team = team;
    std::string process = "self";
    if (team == kits::TeamIdOf(kits::ThisTeam())) {
        found.thread = kits::MainThreadId();
        found.signature = kits::PostOffice::Get().Signature();
    } else {
        for (const TeamFolder::Entry& entry : TeamPort::Get().List())
            if (kits::TeamIdOf(entry.team) == team)
                found.signature = entry.signature;
        if (found.signature.empty())
            return B_BAD_VALUE;
        process = std::to_string(team);
    }
    std::error_code error;
    const std::string path = std::filesystem::read_symlink("/proc/" + process + "/exe", error).string();
    const status_t status = get_ref_for_path(path.c_str(), &found.ref);
    if (status == B_OK)
        *info = found;
    return status;
}

status_t BRoster::Launch(const char* signature, const BMessage* message, team_id* team) const
{
    if (signature == nullptr || !TeamFolder::IsSignature(signature))
        return B_BAD_VALUE;
    const auto isRunning = [&] {
        const BMessenger application(signature);
        if (!application.IsValid())
            return false;
        if (team != nullptr)
            *team = application.Team();
        return true;
    };
    const auto tellRunning = [&] {
        if (message != nullptr)
            BMessenger(signature).SendMessage(message);
        return B_ALREADY_RUNNING;
    };
    if (isRunning())
        return tellRunning();

    kits::TeamFolder folder;
    status_t status = folder.Open();
    kits::LaunchLock lock;
    if (status == B_OK)
        status = lock.Take(folder, signature, kLongestLaunch);
    if (status != B_OK)
        return status;
    if (isRunning())
        return tellRunning();
    const std::string program = kits::ProgramOfSignature(signature);
    kits::FileDescriptor alive;
    if (program.empty() || kits::StartProgram(program, message, &alive) != B_OK)
        return B_LAUNCH_FAILED;
    const bigtime_t end = system_time() + kLongestLaunch;
    while (system_time() < end) {
        pollfd poller{alive.Get(), POLLIN, 0};
        const bool isOver = poll(&poller, 1, 0) > 0;
        if (isRunning())
            return B_OK;
        if (isOver)
            return B_LAUNCH_FAILED;
        snooze(kPauseBetweenLooks);
    }
    return B_TIMED_OUT;
}

status_t BRoster::StartWatching(BMessenger target, uint32 events) const
{
    return TeamPort::Get().StartWatching(kits::MessageAccess::AddressOf(target), events);
}

status_t BRoster::StopWatching(BMessenger target) const
{
    return TeamPort::Get().StopWatching(kits::MessageAccess::AddressOf(target));
}

app_obstacle BRoster::FindObstacle(const char* signature) const
{
    app_obstacle obstacle;
    obstacle.text = TeamPort::Get().Obstacle(signature != nullptr ? signature : "", &obstacle.isToStartsOnly);
    return obstacle;
}
