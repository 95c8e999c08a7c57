// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/application/Messenger.h"
#include "src/prefs/store/Preferences.h"

#include <memory>
#include <vector>

class StoreWriter;

/// Messages and questions to the user about stores. Main thread; needs an application object, which need not run.

/// Asks about the stores whose files exist but could not be read (Preferences::UnreadStatus): to try again, to continue
/// without them, or to quit. Asks nothing if there are none.
/// @return false to quit: then nothing must be written
bool AskAboutUnreadStores(const std::vector<Preferences*>& stores);

/// Shows an alert, without waiting for the answer, about files that could not be read when the stores were loaded, and
/// what was done with them. Shows nothing if all was well.
/// @param answered  invoked when the alert has been answered; null for none
/// @return the alert; not valid if none is shown
BMessenger TellAboutKeptFiles(const std::vector<Preferences*>& stores, std::unique_ptr<BInvoker> answered = nullptr);

/// Prints on stderr, one line for each, which files could not be read when the stores were loaded. For a run without
/// windows.
void PrintWhatCouldNotBeRead(const std::vector<Preferences*>& stores);

/// Returns the first of two statuses that is an error.
inline status_t FirstError(status_t one, status_t other)
{
    return one != B_OK ? one : other;
}

/// Returns why a store could not be saved: the reason that it has no file, if Sync() or a StoreWriter reports that.
inline status_t SaveError(const Preferences& store, status_t status)
{
    return status == B_NO_INIT ? FirstError(store.InitCheck(), status) : status;
}

/// Syncs stores at the end, in this order. Prints on stderr if that failed, or if something could not be put into one;
/// then the previous file is still there. Prints one line, which names the folder, if all failed for one reason,
/// otherwise one for each file.
/// @param program  its name, for the line
/// @return the first error
status_t SaveAtEnd(const std::vector<Preferences*>& stores, const char* program);
/// The line for one file.
void PrintSaveError(const Preferences& store, status_t status, const char* program);

/// Notifies the user when stores cannot be saved while the program runs: one alert at the first failure, and another
/// only after everything could be saved in between. Main thread.
class SaveAlarm {
public:
    /// Call it regularly, as often as something is saved. Shows the alert when it is due.
    /// @param writer  saves the stores
    void Look(const StoreWriter& writer, const std::vector<const Preferences*>& stores);

    /// The alert; not valid if there is none.
    const BMessenger& Alert() const { return fAlert; }

private:
    BMessenger fAlert;
    bool fHasTold = false;
};
