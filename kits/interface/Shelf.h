// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "kits/support/Point.h"

#include <string>

class BMessage;
class BView;

/// Takes views that a BDragger drags out of another process when they are dropped on a view or its children. A dragged
/// archive can be dropped only where a shelf accepts it.
///
/// The creator owns it, and must destroy it before the view, on the main thread or with the view's looper locked. Its
/// methods are called on the main thread.
class BShelf {
public:
    /// @param view  not owned; has one shelf at a time
    explicit BShelf(BView* view);
    virtual ~BShelf();
    BShelf(const BShelf&) = delete;
    BShelf& operator=(const BShelf&) = delete;

    /// Returns whether the archive would be accepted. Called repeatedly while it is dragged over the view; it comes
    /// from another program and may contain anything.
    virtual bool CanAddReplicant(const BMessage* archive) const = 0;
    /// Hook: the archive was dropped; its source keeps the view until it gets B_REPLICANT_TAKEN. The shelf sends that
    /// to the source once the view is certain to be kept here, so nothing is lost, whichever program is killed in
    /// between.
    /// @param where     in the view
    /// @param identity  of the dragged view, see BDragger. The same one can be dropped again before its source learns
    ///                  that it was taken
    /// @return true if it was taken, now or before
    virtual bool AddReplicant(BMessage* archive, BPoint where, const std::string& identity,
                              const BMessenger& source) = 0;

    BView* View() const { return fView; }

private:
    BView* fView;
};
