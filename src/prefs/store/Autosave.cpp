// SPDX-License-Identifier: MIT
#include "src/prefs/store/Autosave.h"

#include "kits/kernel/Errors.h"
#include "src/support/Changes.h"

Autosave::Autosave(std::vector<const Preferences*> stores, std::function<status_t()> archive,
                   std::function<void(const StoreWriter& writer)> tell)
    : fStores(std::move(stores))
    , fArchive(std::move(archive))
    , fTell(std::move(tell))
    , fTimer([this] { Look(); })
    , fSoon([this] { Save(); })
{
}

void Autosave::Stop()
{
    fTimer.Stop();
    fSoon.Stop();
}

void Autosave::Look()
{
    fTell(fWriter);
    if (++fLooks >= kLooksToArchive || Changes::Count() != fSaved || !HasWrittenAll())
        Save();
}

void Autosave::Save()
{
    fLooks = 0;
    fSaved = Changes::Count();
    // A write that fails is tried again at the next look, and at the end, which reports the failure.
    bool isSaved = fArchive() == B_OK;
    for (const Preferences* store : fStores)
        isSaved = fWriter.Write(*store) == B_OK && isSaved;
    if (!isSaved)
        fSaved.reset();
}

void Autosave::SaveSoon()
{
    constexpr bigtime_t kSoon = 300'000;
    if (!fSoon.IsRunning())
        fSoon.Start(kSoon, false);
}
