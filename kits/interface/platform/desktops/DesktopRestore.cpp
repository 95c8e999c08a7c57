// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopRestore.h"

#include <utility>

namespace kits {

namespace {

constexpr const char* kBackend = "Desktop";
constexpr const char* kOutlives = "OutlivesSession";
constexpr const char* kState = "Kept";

} // namespace

void DesktopRestore::Paint(rgb_color color, bool permanent)
{
    if (!permanent && fBackend.OutlivesSession())
        return;
    if (fPainted || Keep())
        fBackend.Paint(color, *fPainted);
}

void DesktopRestore::Change(rgb_color color)
{
    // If a killed program's settings were restored later, they would undo this change.
    RestoreLeft();
    if (fBackend.Change(color, fPainted ? &*fPainted : nullptr))
        ForgetPainted();
}

void DesktopRestore::Restore()
{
    if (fPainted && fBackend.Restore(*fPainted))
        ForgetPainted();
    RestoreLeft();
}

bool DesktopRestore::RestoreLeft()
{
    const std::optional<BMessage> left = fPainted ? std::nullopt : fKept.TakeLeft();
    if (!left)
        return true;
    std::string name;
    bool outlives = true;
    BMessage state;
    const bool isNamed = left->FindString(kBackend, &name) == B_OK;
    left->FindBool(kOutlives, &outlives);
    left->FindMessage(kState, &state);
    // Settings of another desktop wait for a session of that desktop. A file that names no desktop is not ours, and
    // would wait for ever.
    if (!isNamed || (name == fBackend.Name() ? fBackend.Restore(state) : !outlives)) {
        fKept.Remove();
        return true;
    }
    fKept.Leave();
    return false;
}

void DesktopRestore::GiveUp()
{
    fBackend.Restore(*fPainted);
    ForgetPainted();
}

bool DesktopRestore::Keep()
{
    // Settings that cannot be restored yet must not be overwritten.
    if (!RestoreLeft())
        return false;
    std::optional<BMessage> state = fBackend.Keep();
    if (!state)
        return false;
    BMessage kept;
    kept.AddString(kBackend, fBackend.Name());
    kept.AddBool(kOutlives, fBackend.OutlivesSession());
    kept.AddMessage(kState, &*state);
    if (fKept.Save(kept) != B_OK)
        return false;
    fPainted = std::move(state);
    return true;
}

void DesktopRestore::ForgetPainted()
{
    if (fPainted)
        fKept.Remove();
    fPainted.reset();
}

} // namespace kits
