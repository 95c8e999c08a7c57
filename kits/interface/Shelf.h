// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "kits/support/Point.h"

#include <string>

class BMessage;
class BView;

/// Takes what is dragged by a BDragger out of another process and dropped on a view, or on what lies in it. A dragged
/// archive can be dropped where a shelf wants it and nowhere else.
///
/// Belongs to who made it, who destroys it before the view, in the main thread or with the view's looper locked.
/// Everything is called in the main thread.
class BShelf {
public:
    /// @param view  not owned; has one shelf at a time
    explicit BShelf(BView* view);
    virtual ~BShelf();
    BShelf(const BShelf&) = delete;
    BShelf& operator=(const BShelf&) = delete;

    /// Whether the archive would be taken. Asked again and again while it is dragged over the view; it comes from
    /// another program and may be anything.
    virtual bool CanAddReplicant(const BMessage* archive) const = 0;
    /// The archive was dropped, and what it was dragged from stays where it is until it gets B_REPLICANT_TAKEN. The
    /// shelf sends that, to the source, once it has made sure that it keeps what it has taken: whatever is killed in
    /// between, nothing is lost then.
    /// @param where     in the view
    /// @param identity  of what the archive was dragged from, see BDragger. The same one can be dropped again before
    /// its
    ///                  source has heard that it was taken
    /// @return true if it was taken, now or before
    virtual bool AddReplicant(BMessage* archive, BPoint where, const std::string& identity,
                              const BMessenger& source) = 0;

    BView* View() const { return fView; }

private:
    BView* fView;
};
