// SPDX-License-Identifier: MIT
#include "src/prefs/store/StoreNote.h"

#include "src/support/Tr.h"

namespace {

using kits::Filled;

std::string PathOf(const StoreNote& note)
{
    return note.folder + "/" + note.file;
}

std::string KeptClause(const StoreNote& note)
{
    if (!note.kept.empty())
        return "; " + std::string(note.isBackup ? "it is" : "they are") + " kept as " + note.kept;
    return note.notKept != B_OK ? std::string("; renaming the file failed (") + StoreReason(note.notKept) + ")" : "";
}

} // namespace

const char* StoreReason(status_t status)
{
    switch (status) {
    case B_BAD_VALUE:
        return TrLater("Damaged, or no settings");
    case B_BUSY:
        return TrLater("Locked by another program");
    case B_FILE_NOT_FOUND:
        return TrLater("A link that leads nowhere");
    default:
        return kits::StatusText(status);
    }
}

std::string LineOf(const StoreNote& note)
{
    const std::string reason = std::string(" (") + StoreReason(note.reason) + ")";
    if (note.isBackup)
        return "qel: the backup " + PathOf(note) + " could not be read" + reason + KeptClause(note);
    return "qel: the settings in " + PathOf(note) + " could not be read" + reason + KeptClause(note) +
           (note.wasReplaced ? " beside the new ones" : "") +
           (note.usedBackup ? "; those saved before them are used" : "");
}

std::string PlaceText(const std::string& folder, const std::string& file)
{
    const std::string where =
        folder.empty() ? Tr("none: XDG_CONFIG_HOME is not set, and there is no home folder") : folder;
    return Filled(Tr("Folder: %1\nFile: %2"), {where, file});
}

std::string AlertTextOf(const StoreNote& note)
{
    std::string text =
        note.isBackup ? Tr("The backup of the settings could not be read.") : Tr("The settings could not be read.");
    text += "\n\n" + PlaceText(note.folder, note.file) + "\n" +
            Filled(Tr("Reason: %1"), {Tr(StoreReason(note.reason))}) + "\n\n";
    if (!note.kept.empty())
        text += Filled(Tr("What was found there is kept as %1."), {note.kept});
    else if (note.notKept != B_OK)
        text += Filled(Tr("It could not be kept under another name: %1."), {Tr(StoreReason(note.notKept))});
    if (!note.isBackup) {
        text += " ";
        text += note.usedBackup ? Tr("The settings saved before it are used instead.")
                                : Tr("The defaults are used instead.");
    }
    return text;
}
