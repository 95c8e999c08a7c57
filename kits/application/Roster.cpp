#include "kits/application/Roster.h"

#include "kits/application/Application.h"
#include "kits/application/DetachedProcess.h"
#include "kits/application/MainThread.h"
#include "kits/storage/Node.h"
#include "kits/storage/Path.h"
#include "kits/support/TypeConstants.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>

namespace {

const BRoster sRoster;

/// The text of an attribute, empty if there is none.
std::string TextAttribute(const BNode& node, const char* name)
{
    char text[1024];
    const ssize_t size = node.ReadAttr(name, B_STRING_TYPE, 0, text, sizeof(text));
    if (size <= 0)
        return {};
    const std::string whole(text, static_cast<size_t>(size));
    return whole.substr(0, whole.find('\0'));
}

/// For a part of an address: what has a meaning there is written as %XX.
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

/// "Name <address>" or "address".
std::string MailAddressIn(const std::string& sender)
{
    const size_t begin = sender.rfind('<');
    const size_t end = sender.find('>', begin);
    return begin == std::string::npos || end == std::string::npos ? sender : sender.substr(begin + 1, end - begin - 1);
}

/// What the desktop is to open for a file. An address that the desktop could take for an option or a file is none.
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
    if (info == nullptr || team != kits::TeamIdOf(kits::ThisTeam()))
        return B_BAD_VALUE;
    std::error_code error;
    const std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    app_info found;
    const status_t status = get_ref_for_path(path.c_str(), &found.ref);
    if (status != B_OK)
        return status;
    found.thread = kits::MainThreadId();
    found.team = team;
    found.signature = be_app != nullptr ? be_app->Signature() : "";
    *info = found;
    return B_OK;
}
