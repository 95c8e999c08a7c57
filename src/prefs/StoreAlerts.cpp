// SPDX-License-Identifier: MIT
#include "src/prefs/StoreAlerts.h"

#include "src/prefs/store/StoreWriter.h"
#include "src/support/OneLine.h"
#include "src/support/Tr.h"
#include "src/support/ui/ShowAlert.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include <utility>

namespace {

using kits::Filled;

std::string ReasonText(status_t status)
{
    return Filled(Tr("Reason: %1"), {Tr(StoreReason(status))});
}

/// Appends the store's path and its error to the alert's text.
void Append(std::string& text, const Preferences& store, status_t status)
{
    text += "\n\n" + PlaceText(store.Place().directory, store.Place().name) + "\n" + ReasonText(status);
}

/// @param where  a file or a folder; empty if there is no settings folder
void PrintSaveError(const std::string& where, status_t status, const char* program)
{
    if (where.empty()) {
        std::fprintf(stderr,
                     "%s: the settings could not be saved: XDG_CONFIG_HOME is not set, and there is no home folder\n",
                     program);
    } else {
        std::fprintf(stderr, "%s: the settings could not be saved in %s: %s\n", program, OneLine(where).c_str(),
                     StoreReason(status));
    }
}

std::vector<Preferences*> UnreadOf(const std::vector<Preferences*>& stores)
{
    std::vector<Preferences*> unread;
    for (Preferences* store : stores)
        if (store->UnreadStatus() != B_OK)
            unread.push_back(store);
    return unread;
}

} // namespace

bool AskAboutUnreadStores(const std::vector<Preferences*>& stores)
{
    for (std::vector<Preferences*> unread = UnreadOf(stores); !unread.empty(); unread = UnreadOf(stores)) {
        std::string text = Tr("The settings cannot be read now.");
        for (const Preferences* store : unread)
            Append(text, *store, store->UnreadStatus());
        text += "\n\n";
        text += Tr("With the defaults, these settings are kept under another name as soon as something is saved.");
        // The alert deletes itself.
        auto* alert = new BAlert(Tr("Qel alert"), text.c_str(), Tr("Quit"), Tr("Use defaults"), Tr("Try again"),
                                 B_WIDTH_FROM_LABEL, B_OFFSET_SPACING, B_WARNING_ALERT);
        switch (alert->Go()) {
        case 1:
            return true;
        case 2:
            for (Preferences* store : unread)
                store->Revert();
            break;
        default:
            return false;
        }
    }
    return true;
}

BMessenger TellAboutKeptFiles(const std::vector<Preferences*>& stores, std::unique_ptr<BInvoker> answered)
{
    std::string text;
    for (Preferences* store : stores)
        for (const StoreNote& note : store->TakeNotes())
            text += (text.empty() ? "" : "\n\n") + AlertTextOf(note);
    if (text.empty())
        return {};
    return ShowAlert(text, B_WARNING_ALERT, nullptr, std::move(answered));
}

void PrintWhatCouldNotBeRead(const std::vector<Preferences*>& stores)
{
    for (Preferences* store : stores)
        for (const StoreNote& note : store->TakeNotes())
            std::fprintf(stderr, "%s\n", LineOf(note).c_str());
}

void PrintSaveError(const Preferences& store, status_t status, const char* program)
{
    const entry_ref& place = store.Place();
    PrintSaveError(place.directory.empty() ? "" : place.directory + "/" + place.name, SaveError(store, status),
                   program);
}

status_t SaveAtEnd(const std::vector<Preferences*>& stores, const char* program)
{
    std::vector<status_t> statuses;
    status_t first = B_OK;
    for (Preferences* store : stores) {
        statuses.push_back(SaveError(*store, FirstError(store->Sync(), store->Error())));
        first = FirstError(first, statuses.back());
    }
    if (first == B_OK)
        return B_OK;
    if (std::count(statuses.begin(), statuses.end(), first) == std::ssize(statuses) && stores.size() > 1) {
        PrintSaveError(stores.front()->Place().directory, first, program);
        return first;
    }
    for (size_t i = 0; i < stores.size(); ++i)
        if (statuses[i] != B_OK)
            PrintSaveError(*stores[i], statuses[i], program);
    return first;
}

void SaveAlarm::Look(const StoreWriter& writer, const std::vector<const Preferences*>& stores)
{
    std::string failures;
    bool isAllSaved = true;
    for (const Preferences* store : stores) {
        const status_t status = FirstError(FirstError(store->InitCheck(), writer.ResultOf(*store)), store->Error());
        if (status != B_OK)
            Append(failures, *store, status);
        isAllSaved = isAllSaved && writer.HasWritten(*store);
    }
    if (failures.empty() && isAllSaved)
        fHasTold = false;
    if (failures.empty() || fHasTold || fAlert.IsValid())
        return;
    fHasTold = true;
    const std::string text = Tr("The settings could not be saved.") + failures + "\n\n" +
                             Tr("Saving is tried again as long as the program runs.");
    fAlert = ShowAlert(text, B_WARNING_ALERT);
}
