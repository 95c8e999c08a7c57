// SPDX-License-Identifier: MIT
#include "src/app/AboutFiles.h"

#include "kits/storage/Entry.h"
#include "kits/storage/File.h"
#include "kits/support/TypeConstants.h"
#include "src/support/Qel.h"

#include <string>

namespace {

constexpr const char* kSubject = "Just reply to this fake e-mail to reach the author of Qel...";

void WriteText(BFile& file, const char* attribute, type_code type, const std::string& text)
{
    file.WriteAttr(attribute, type, 0, text.c_str(), text.size() + 1);
}

status_t Open(const char* path, BFile* file, entry_ref* ref)
{
    BEntry entry(path);
    if (const status_t status = entry.InitCheck(); status != B_OK)
        return status;
    if (const status_t status = file->SetTo(&entry, B_READ_WRITE | B_CREATE_FILE | B_PRIVATE_FILE); status != B_OK)
        return status;
    return entry.GetRef(ref);
}

} // namespace

status_t WriteMailFile(const char* path, entry_ref* ref)
{
    BFile file;
    if (const status_t status = Open(path, &file, ref); status != B_OK)
        return status;
    const std::string from = '"' + std::string(kMakerName) + "\" <" + kMakerAddress + '>';
    WriteText(file, "MAIL:from", B_STRING_TYPE, from);
    WriteText(file, "MAIL:subject", B_STRING_TYPE, kSubject);
    WriteText(file, "BEOS:TYPE", B_MIME_STRING_TYPE, "text/x-email");
    const std::string body = "Subject: " + std::string(kSubject) + "\n\rFrom: " + from +
                             "\n\r\n"
                             "Hello!\n"
                             "\n"
                             "Glad that you try Qel. Just reply to this mail: what do you like, what is missing, what "
                             "went wrong?\n"
                             "Every word is read.\n"
                             "\n" +
                             kMakerName + '\n';
    if (const ssize_t written = file.Write(body.data(), body.size()); written < 0)
        return static_cast<status_t>(written);
    return file.SetSize(file.Position());
}

status_t WriteBookmarkFile(const char* path, entry_ref* ref)
{
    BFile file;
    if (const status_t status = Open(path, &file, ref); status != B_OK)
        return status;
    WriteText(file, "META:url", B_STRING_TYPE, kMakerHome);
    WriteText(file, "META:title", B_STRING_TYPE, "Qel Home Page");
    WriteText(file, "BEOS:TYPE", B_MIME_STRING_TYPE, "application/x-vnd.Be-bookmark");
    return B_OK;
}

void RemoveAboutFiles()
{
    BEntry(kMailFile).Remove();
    BEntry(kBookmarkFile).Remove();
}
