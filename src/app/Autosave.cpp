// SPDX-License-Identifier: MIT
#include "src/app/Autosave.h"

#include "kits/application/EventLoop.h"
#include "kits/kernel/Errors.h"
#include "src/app/QelApp.h"
#include "src/prefs/store/Preferences.h"

#include <algorithm>
#include <iterator>

Autosave::Autosave(QelApp& app)
    : fApp(app)
    , fTimer([this] {
        Look();
        kits::EventLoop::NoteUnchanged();
    })
{
    fTimer.Start(kPeriod);
}

void Autosave::Look()
{
    fAlarm.Look(fWriter, {prefs_common, prefs_user});
    if (kits::EventLoop::CountChanges() != fSaved || !HasWrittenAll())
        Save();
}

void Autosave::Save()
{
    fSaved = kits::EventLoop::CountChanges();
    // A failed write is repeated the next time, and at the end, which reports it.
    const status_t statuses[] = {fApp.StoreArrangement(), fWriter.Write(*prefs_common), fWriter.Write(*prefs_user)};
    if (std::any_of(std::begin(statuses), std::end(statuses), [](status_t status) { return status != B_OK; }))
        fSaved.reset();
}
