// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/interface/Shelf.h"
#include "kits/support/Identity.h"

class ChartViewHolder;

/// Takes charts dragged from the desktop into a holder, which owns it.
///
/// It remembers the identities of the last kMostTaken charts that it has taken, and the holder stores them with the
/// charts: after a kill either both are there or neither. For each chart taken, the application gets B_REPLICANT_TAKEN
/// with "Identity" and "Messenger", the source. It also gets one such message with all identities that were loaded.
/// Only the application knows when they are stored.
class ChartShelf : public BShelf {
public:
    static constexpr size_t kMostTaken = 256;

    explicit ChartShelf(ChartViewHolder* holder);

    /// True if this is a chart's archive and the holder has room.
    bool CanAddReplicant(const BMessage* archive) const override;
    bool AddReplicant(BMessage* archive, BPoint where, const std::string& identity, const BMessenger& source) override;

    /// Replaces the "Taken" fields of the message.
    void SaveTo(BMessage* into) const;
    void LoadFrom(const BMessage& from);

private:
    ChartViewHolder* fHolder;
    kits::Identities fTaken{kMostTaken};
};

/// The identities of charts that came from the desktop, in the archive of a holder.
inline const kits::Field<std::string> kTakenField("Taken", 1, kits::Identities::kLongest, kits::Outside::kLeftOut,
                                                  kits::kMostNumber);
