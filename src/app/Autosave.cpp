#include "src/app/Autosave.h"

#include "src/app/QelApp.h"
#include "src/prefs/Preferences.h"

Autosave::Autosave(QelApp& app)
    : fApp(app)
    , fTimer([this] { Save(); })
{
    fTimer.Start(kPeriod);
}

void Autosave::Save()
{
    fApp.StoreArrangement();
    // A write that fails is tried again the next time, and at the end, which says so.
    fWriter.Write(*prefs_common);
    fWriter.Write(*prefs_user);
}
