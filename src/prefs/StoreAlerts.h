// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/application/Messenger.h"
#include "src/prefs/store/Preferences.h"

#include <memory>
#include <vector>

class StoreWriter;

/// What the user is told and asked about stores. Main thread; needs an application object, which need not run.

/// Asks about the stores whose files are there but could not be read (Preferences::UnreadStatus): to try again, to go
/// on without them, or to quit. Asks nothing when there are none.
/// @return false to quit: nothing is to be written then
bool AskAboutUnreadStores(const std::vector<Preferences*>& stores);

/// Tells in an alert, without waiting for the answer, what could not be read when the stores were loaded and what
/// became of it. Shows nothing when all was well.
/// @param answered  invoked when the alert has been answered; null for none
/// @return the alert; not valid when none is shown
BMessenger TellAboutKeptFiles(const std::vector<Preferences*>& stores, std::unique_ptr<BInvoker> answered = nullptr);

/// Says on stderr, one line for each, what could not be read when the stores were loaded. For a run without windows.
void PrintWhatCouldNotBeRead(const std::vector<Preferences*>& stores);

/// The first of two errors that is one.
inline status_t FirstError(status_t one, status_t other)
{
    return one != B_OK ? one : other;
}

/// Why a store could not be saved: the reason that it has no file, where that is what Sync() or a StoreWriter says.
inline status_t SaveError(const Preferences& store, status_t status)
{
    return status == B_NO_INIT ? FirstError(store.InitCheck(), status) : status;
}

/// Syncs stores at the end, in this order. Says on stderr when that failed, or when something could not be put into
/// one; the file from before is still there then. It is one line, which names the folder, if all failed for one reason,
/// else one for each file.
/// @param program  its name, for the line
/// @return the first error
status_t SaveAtEnd(const std::vector<Preferences*>& stores, const char* program);
/// The line for one file.
void PrintSaveError(const Preferences& store, status_t status, const char* program);

/// Tells the user when stores cannot be saved while the program runs: one alert at the first failure, and another only
/// after everything could be saved in between. Main thread.
class SaveAlarm {
public:
    /// To be called now and then, as often as something is saved. Shows the alert when it is time for it.
    /// @param writer  what saves them
    void Look(const StoreWriter& writer, const std::vector<const Preferences*>& stores);

    /// The alert; not valid while there is none.
    const BMessenger& Alert() const { return fAlert; }

private:
    BMessenger fAlert;
    bool fHasTold = false;
};
